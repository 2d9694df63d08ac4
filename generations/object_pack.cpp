#include "generations/object_pack.h"

#include <openssl/evp.h>
#include <zlib.h>

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

std::string LastGitError() {
  const git_error* error = git_error_last();
  return error && error->message ? error->message : "unknown libgit2 error";
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
  AppendEntryHeader(body_, type, content.size());
  // A recording stores the contents as they are, which costs a copy; the repack that prunes the
  // store compresses them.
  AppendCompressed(body_, content, mode_ == kSkipStored ? Z_NO_COMPRESSION : Z_BEST_SPEED);
  ++count_;
  return id;
}

bool TObjectPack::Write(std::string& error) {
  if (count_ == 0) return true;
  std::string head = "PACK" + BigEndian32(2) + BigEndian32(count_);
  Sha1 sha;
  sha.Update(head);
  sha.Update(body_);
  const TObjectId trailer = sha.Final();
  git_odb_writepack* writer = nullptr;
  git_indexer_progress progress{};
  bool written = git_odb_write_pack(&writer, odb_, nullptr, nullptr) == 0 &&
                 writer->append(writer, head.data(), head.size(), &progress) == 0 &&
                 writer->append(writer, body_.data(), body_.size(), &progress) == 0 &&
                 writer->append(writer, trailer.data(), trailer.size(), &progress) == 0 &&
                 writer->commit(writer, &progress) == 0;
  if (!written) error = "the generation store could not write a pack: " + LastGitError();
  if (writer) writer->free(writer);
  if (written && git_odb_refresh(odb_) != 0) {
    error = "the generation store could not read its new pack: " + LastGitError();
    written = false;
  }
  body_.clear();
  added_.clear();
  count_ = 0;
  return written;
}

}  // namespace tsaw::generations
