#include "generations/object_pack.h"

#include <openssl/evp.h>
#include <zlib.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace tsaw::generations {
namespace {

// One SHA-1 over several pieces.
class Sha1 {
 public:
  Sha1() : context_(EVP_MD_CTX_new(), &EVP_MD_CTX_free) {
    if (!context_ || EVP_DigestInit_ex(context_.get(), EVP_sha1(), nullptr) != 1) {
      throw std::runtime_error("SHA-1 is not available");
    }
  }
  void Update(std::string_view bytes) { EVP_DigestUpdate(context_.get(), bytes.data(), bytes.size()); }
  TObjectId Final() {
    TObjectId id{};
    EVP_DigestFinal_ex(context_.get(), id.data(), nullptr);
    return id;
  }

 private:
  std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context_;
};

std::string ObjectHeader(std::string_view type, size_t size) {
  std::string header(type);
  header += ' ';
  header += std::to_string(size);
  header += '\0';
  return header;
}

// The pack entry header: type and size, seven bits at a time after the first four.
void AppendEntryHeader(std::string& out, git_object_t type, size_t size) {
  unsigned char byte = static_cast<unsigned char>((static_cast<unsigned>(type) << 4) | (size & 0x0f));
  size >>= 4;
  while (size != 0) {
    out += static_cast<char>(byte | 0x80);
    byte = static_cast<unsigned char>(size & 0x7f);
    size >>= 7;
  }
  out += static_cast<char>(byte);
}

void AppendCompressed(std::string& out, std::string_view bytes, int level) {
  uLongf length = compressBound(static_cast<uLong>(bytes.size()));
  const size_t at = out.size();
  out.resize(at + length);
  if (compress2(reinterpret_cast<Bytef*>(out.data() + at), &length, reinterpret_cast<const Bytef*>(bytes.data()),
                static_cast<uLong>(bytes.size()), level) != Z_OK) {
    throw std::runtime_error("compressing an object failed");
  }
  out.resize(at + length);
}

std::string BigEndian32(uint32_t value) {
  return {static_cast<char>(value >> 24), static_cast<char>(value >> 16), static_cast<char>(value >> 8),
          static_cast<char>(value)};
}

std::string BigEndian64(uint64_t value) {
  return BigEndian32(static_cast<uint32_t>(value >> 32)) + BigEndian32(static_cast<uint32_t>(value));
}

std::string LastGitError() {
  const git_error* error = git_error_last();
  return error && error->message ? error->message : "unknown libgit2 error";
}

// Writes the pieces to a temporary file in `folder`, then renames it to `name`.
bool WriteFile(const std::filesystem::path& folder, const std::string& name,
               std::initializer_list<std::string_view> pieces) {
  const std::filesystem::path temporary = folder / ("tmp_" + name), file = folder / name;
  const int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0444);
  bool written = fd >= 0;
  for (std::string_view piece : pieces) {
    for (size_t at = 0; written && at < piece.size();) {
      const ssize_t n = ::write(fd, piece.data() + at, piece.size() - at);
      written = n > 0;
      at += written ? static_cast<size_t>(n) : 0;
    }
  }
  if (fd >= 0 && ::close(fd) != 0) written = false;
  if (written) written = ::rename(temporary.c_str(), file.c_str()) == 0;
  if (!written) ::unlink(temporary.c_str());
  return written;
}

}  // namespace

size_t TObjectIdHash::operator()(const TObjectId& id) const {
  size_t value;
  std::memcpy(&value, id.data(), sizeof value);
  return value;
}

TObjectId HashObject(std::string_view type, std::string_view content) {
  Sha1 sha;
  sha.Update(ObjectHeader(type, content.size()));
  sha.Update(content);
  return sha.Final();
}

std::string ToHex(const TObjectId& id) {
  static const char* digits = "0123456789abcdef";
  std::string hex;
  for (unsigned char byte : id) {
    hex += digits[byte >> 4];
    hex += digits[byte & 0x0f];
  }
  return hex;
}

git_oid ToGitOid(const TObjectId& id) {
  git_oid oid;
  git_oid_fromraw(&oid, id.data());
  return oid;
}

TObjectId FromGitOid(const git_oid& oid) {
  TObjectId id;
  std::memcpy(id.data(), oid.id, id.size());
  return id;
}

TObjectPack::TObjectPack(git_odb* odb, TMode mode) : odb_(odb), mode_(mode) {}

TObjectId TObjectPack::Add(git_object_t type, std::string_view content) {
  const TObjectId id = HashObject(git_object_type2string(type), content);
  if (added_.count(id) != 0) return id;
  const git_oid oid = ToGitOid(id);
  if (mode_ == kSkipStored && git_odb_exists(odb_, &oid)) return id;
  added_.insert(id);
  const size_t at = body_.size();
  AppendEntryHeader(body_, type, content.size());
  // A recording stores the contents as they are, which costs a copy; the repack that prunes the
  // store compresses them.
  AppendCompressed(body_, content, mode_ == kSkipStored ? Z_NO_COMPRESSION : Z_BEST_SPEED);
  const uint32_t crc = static_cast<uint32_t>(
      crc32(0, reinterpret_cast<const Bytef*>(body_.data() + at), static_cast<uInt>(body_.size() - at)));
  entries_.push_back({id, 12 + at, crc});
  return id;
}

bool TObjectPack::Write(const std::filesystem::path& pack_folder, std::string& error) {
  if (entries_.empty()) return true;
  const std::string head = "PACK" + BigEndian32(2) + BigEndian32(static_cast<uint32_t>(entries_.size()));
  Sha1 pack_sum;
  pack_sum.Update(head);
  pack_sum.Update(body_);
  const TObjectId trailer = pack_sum.Final();
  const std::string_view trailer_bytes(reinterpret_cast<const char*>(trailer.data()), trailer.size());

  std::sort(entries_.begin(), entries_.end(), [](const Entry& a, const Entry& b) { return a.Id < b.Id; });
  std::string index = "\377tOc" + BigEndian32(2);
  for (int first = 0, n = 0; first < 256; ++first) {
    while (n < static_cast<int>(entries_.size()) && entries_[n].Id[0] == first) ++n;
    index += BigEndian32(static_cast<uint32_t>(n));
  }
  for (const Entry& entry : entries_) index.append(reinterpret_cast<const char*>(entry.Id.data()), entry.Id.size());
  for (const Entry& entry : entries_) index += BigEndian32(entry.Crc);
  std::string large;  // offsets past 2 GB, eight bytes each
  for (const Entry& entry : entries_) {
    if (entry.Offset < 0x80000000u) {
      index += BigEndian32(static_cast<uint32_t>(entry.Offset));
    } else {
      index += BigEndian32(0x80000000u | static_cast<uint32_t>(large.size() / 8));
      large += BigEndian64(entry.Offset);
    }
  }
  index += large;
  index += trailer_bytes;
  Sha1 index_sum;
  index_sum.Update(index);
  const TObjectId index_trailer = index_sum.Final();

  const std::string name = "pack-" + ToHex(trailer);
  // The index last: a pack counts once its index is there.
  bool written = WriteFile(pack_folder, name + ".pack", {head, body_, trailer_bytes}) &&
                 WriteFile(pack_folder, name + ".idx",
                           {index, std::string_view(reinterpret_cast<const char*>(index_trailer.data()), 20)});
  if (!written) error = "the generation store could not write the pack " + (pack_folder / name).string();
  if (written && git_odb_refresh(odb_) != 0) {
    error = "the generation store could not read its new pack: " + LastGitError();
    written = false;
  }
  body_.clear();
  added_.clear();
  entries_.clear();
  return written;
}

}  // namespace tsaw::generations
