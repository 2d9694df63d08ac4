#include "generations/object_pack.h"

#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>
#include <zlib.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace tsaw::generations {
namespace {

// Entries wait in memory until this many bytes are pending, then go to the temporary file: few
// enough for a write to take no longer than adding a file.
constexpr size_t kSpillBytes = size_t{128} << 10;
// A batch goes out as packs of kPackEntries entries: a pack's head, which holds the count, is then
// known from its first entry, so its checksum is summed as its entries are written instead of read
// back once it is whole. A pack with fewer (a batch's last, or one cut short at the size below) is
// padded or read back; see PadToFullCount. Each is completed while the batch goes on, so that the
// end of a recording waits for the last one only.
constexpr uint64_t kMostPackBodyBytes = uint64_t{64} << 20;
// What a padding entry costs the pack and its index, about (see PadToFullCount).
constexpr uint64_t kPaddingEntryBytes = 128;
// "PACK", the version and the number of entries.
constexpr uint64_t kHeadBytes = 12;

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

std::string BigEndian32(uint32_t value) {
  return {static_cast<char>(value >> 24), static_cast<char>(value >> 16), static_cast<char>(value >> 8),
          static_cast<char>(value)};
}

void AppendCompressed(std::string& out, std::string_view bytes) {
  uLongf length = compressBound(static_cast<uLong>(bytes.size()));
  const size_t at = out.size();
  out.resize(at + length);
  if (compress2(reinterpret_cast<Bytef*>(out.data() + at), &length, reinterpret_cast<const Bytef*>(bytes.data()),
                static_cast<uLong>(bytes.size()), Z_BEST_SPEED) != Z_OK) {
    throw std::runtime_error("compressing an object failed");
  }
  out.resize(at + length);
}

// A zlib stream holding `bytes` as they are, in stored blocks as zlib's level 0 keeps them, made
// here because setting up (and clearing) a compressor for every object cost more than the copy.
void AppendStored(std::string& out, std::string_view bytes) {
  constexpr size_t kMostBlockBytes = 65535;
  out += "\x78\x01";
  size_t at = 0;
  do {
    const size_t size = std::min(bytes.size() - at, kMostBlockBytes);
    const bool last = at + size == bytes.size();
    const char header[5] = {static_cast<char>(last ? 1 : 0), static_cast<char>(size & 0xff),
                            static_cast<char>(size >> 8), static_cast<char>(~size & 0xff),
                            static_cast<char>((~size >> 8) & 0xff)};
    out.append(header, sizeof header);
    out.append(bytes.substr(at, size));
    at += size;
  } while (at < bytes.size());
  out += BigEndian32(isal_adler32(1, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()));
}

std::string PackHead(uint32_t entries) { return "PACK" + BigEndian32(2) + BigEndian32(entries); }

std::string BigEndian64(uint64_t value) {
  return BigEndian32(static_cast<uint32_t>(value >> 32)) + BigEndian32(static_cast<uint32_t>(value));
}

std::string LastGitError() {
  const git_error* error = git_error_last();
  return error && error->message ? error->message : "unknown libgit2 error";
}

// The name of a pack file and its index, without the extension: the pack's checksum names it.
std::string PackName(const TObjectId& trailer) { return "pack-" + ToHex(trailer); }

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

bool WriteAt(int fd, std::string_view bytes, uint64_t offset) {
  while (!bytes.empty()) {
    const ssize_t n = ::pwrite(fd, bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return false;
    bytes.remove_prefix(static_cast<size_t>(n));
    offset += static_cast<uint64_t>(n);
  }
  return true;
}

// The SHA-1 of the first `size` bytes of `fd`; false when they cannot be read.
bool HashFile(int fd, uint64_t size, TObjectId& id) {
  TSha1 sum;
  std::string chunk(kSpillBytes, '\0');
  for (uint64_t at = 0; at < size;) {
    const ssize_t n = ::pread(fd, chunk.data(), std::min<uint64_t>(chunk.size(), size - at), static_cast<off_t>(at));
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return false;
    sum.Update(std::string_view(chunk.data(), static_cast<size_t>(n)));
    at += static_cast<uint64_t>(n);
  }
  id = sum.Final();
  return true;
}

}  // namespace

size_t TObjectIdHash::operator()(const TObjectId& id) const {
  size_t value;
  std::memcpy(&value, id.data(), sizeof value);
  return value;
}

TObjectId HashObject(std::string_view type, std::string_view content) {
  TSha1 sha;
  return HashObject(sha, type, content);
}

TObjectId HashObject(TSha1& sha, std::string_view type, std::string_view content) {
  sha.Restart();
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

TObjectPack::TObjectPack(git_odb* odb, std::filesystem::path pack_folder, TMode mode)
    : odb_(odb), folder_(std::move(pack_folder)), mode_(mode) {}

TObjectPack::~TObjectPack() { Reset(); }

void TObjectPack::Reset() {
  if (fd_ >= 0) {
    ::close(fd_);
    ::unlink(temporary_.c_str());
  }
  // Packs of a batch that is not written hold objects nothing refers to.
  for (const std::string& name : sealed_) {
    ::unlink((folder_ / (name + ".idx")).c_str());
    ::unlink((folder_ / (name + ".pack")).c_str());
  }
  sealed_.clear();
  fd_ = -1;
  failed_ = false;
  temporary_.clear();
  pending_.clear();
  body_size_ = 0;
  added_.clear();
  entries_.clear();
}

TObjectId TObjectPack::Add(git_object_t type, std::string_view content) {
  const TObjectId id = HashObject(object_sum_, git_object_type2string(type), content);
  if (!IsNew(id)) return id;
  Append(id, type, content);
  if (entries_.size() == kPackEntries || body_size_ >= kMostPackBodyBytes) {
    Seal();
  } else if (pending_.size() >= kSpillBytes) {
    Spill();
  }
  return id;
}

// Whether the object is neither in the store nor in this batch yet; from now on it is.
bool TObjectPack::IsNew(const TObjectId& id) {
  if (added_.count(id) != 0) return false;
  const git_oid oid = ToGitOid(id);
  // The store is locked and its packs are known, so a miss need not make libgit2 look again.
  if (mode_ == kSkipStored && git_odb_exists_ext(odb_, &oid, GIT_ODB_LOOKUP_NO_REFRESH)) return false;
  added_.insert(id);
  return true;
}

void TObjectPack::Append(const TObjectId& id, git_object_t type, std::string_view content) {
  if (entries_.empty()) {
    full_pack_sum_.Restart();
    full_pack_sum_.Update(PackHead(kPackEntries));
  }
  const size_t at = pending_.size();
  AppendEntryHeader(pending_, type, content.size());
  // A recording stores the contents as they are, which costs a copy; the repack that prunes the
  // store compresses them.
  if (mode_ == kSkipStored) {
    AppendStored(pending_, content);
  } else {
    AppendCompressed(pending_, content);
  }
  const size_t size = pending_.size() - at;
  const std::string_view entry(pending_.data() + at, size);
  const uint32_t crc = crc32_gzip_refl(0, reinterpret_cast<const unsigned char*>(entry.data()), size);
  // Summed while the entry is still in the cache, and in pieces as small as the entries: the
  // recording is done a file at a time in another's spare moments.
  full_pack_sum_.Update(entry);
  entries_.push_back({id, kHeadBytes + body_size_, crc});
  body_size_ += size;
}

// A recording's pack that falls short of the full count is filled up to it with small blobs
// nothing refers to, so that its checksum, summed as it was written, holds: reading back megabytes
// at the end of a run cost more than a thousand padding entries. The padding may add a tenth to
// the pack; a pack too small for that is read back, which costs little. The repack that prunes
// the store drops the padding.
void TObjectPack::PadToFullCount() {
  const uint64_t padding_bytes = (kPackEntries - entries_.size()) * kPaddingEntryBytes;
  if (mode_ != kSkipStored || padding_bytes * 10 > body_size_) return;
  // Named after the pack's first object, which no earlier pack holds, the blobs are new.
  const std::string name = "padding of the pack that begins with " + ToHex(entries_.front().Id) + ": ";
  while (entries_.size() < kPackEntries) {
    const std::string padding = name + std::to_string(entries_.size());
    const TObjectId id = HashObject("blob", padding);
    if (IsNew(id)) Append(id, GIT_OBJECT_BLOB, padding);
  }
}

// Appends the pending entries to the temporary file, making it first; after a failure they are
// dropped, the batch being lost already.
void TObjectPack::Spill() {
  if (fd_ < 0 && !failed_) {
    temporary_ = (folder_ / "tmp_pack_XXXXXX").string();
    fd_ = ::mkostemp(temporary_.data(), O_CLOEXEC);
    failed_ = fd_ < 0;
  }
  if (!failed_) failed_ = !WriteAt(fd_, pending_, kHeadBytes + body_size_ - pending_.size());
  pending_.clear();
}

// Completes the temporary file and renames it to its final name: the head goes to its start and
// the checksum of all of it to its end, summed while it was written when it is a full pack, else
// read back, the head's count being known only now.
bool TObjectPack::FinishPackFile(TObjectId& trailer) {
  const uint64_t size = kHeadBytes + body_size_;
  const bool full = entries_.size() == kPackEntries;
  if (!WriteAt(fd_, PackHead(static_cast<uint32_t>(entries_.size())), 0)) return false;
  if (full) {
    trailer = full_pack_sum_.Final();
  } else if (!HashFile(fd_, size, trailer)) {
    return false;
  }
  const std::string_view trailer_bytes(reinterpret_cast<const char*>(trailer.data()), trailer.size());
  if (!WriteAt(fd_, trailer_bytes, size) || ::fchmod(fd_, 0444) != 0) return false;
  const bool closed = ::close(fd_) == 0;
  fd_ = -1;
  const std::filesystem::path file = folder_ / (PackName(trailer) + ".pack");
  if (closed && ::rename(temporary_.c_str(), file.c_str()) == 0) return true;
  ::unlink(temporary_.c_str());
  return false;
}

// Completes the pack of the entries added since the last one, with its index; a failure is kept
// for Write to report. The batch's next entries begin a new pack.
void TObjectPack::Seal() {
  if (entries_.empty()) return;
  PadToFullCount();
  Spill();
  TObjectId trailer{};
  if (!failed_) failed_ = !FinishPackFile(trailer);
  if (!failed_) failed_ = !WriteIndex(trailer);
  if (!failed_) sealed_.push_back(PackName(trailer));
  entries_.clear();
  body_size_ = 0;
}

// Writes the index of the pack whose checksum is `trailer`; the pack counts from then on.
bool TObjectPack::WriteIndex(const TObjectId& trailer) {
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
  index.append(reinterpret_cast<const char*>(trailer.data()), trailer.size());
  TSha1 index_sum;
  index_sum.Update(index);
  const TObjectId index_trailer = index_sum.Final();
  return WriteFile(folder_, PackName(trailer) + ".idx",
                   {index, std::string_view(reinterpret_cast<const char*>(index_trailer.data()), 20)});
}

bool TObjectPack::Write(std::string& error) {
  Seal();
  if (failed_) {
    error = "the generation store could not write a pack in " + folder_.string();
    Reset();
    return false;
  }
  const bool wrote = !sealed_.empty();
  if (wrote && git_odb_refresh(odb_) != 0) {
    error = "the generation store could not read its new pack: " + LastGitError();
    Reset();
    return false;
  }
  sealed_.clear();  // they are the store's now
  Reset();
  return true;
}

}  // namespace tsaw::generations
