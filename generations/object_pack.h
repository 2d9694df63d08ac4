#pragma once
// Writes a batch of new objects into a store repository as one pack: every object is hashed as
// git hashes it, objects the store (or the batch) already holds are left out, and the rest go
// into one pack file with its index (git's formats, version 2), which libgit2 then reads. A
// generation thus costs two files, however many files it holds. The index is written here, from
// the ids and offsets already known, because having libgit2's indexer read the whole pack back
// to hash every object again doubled the cost of recording a creation.

#include <git2.h>

#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace tsaw::generations {

// A git object id: 20 bytes of SHA-1.
using TObjectId = std::array<unsigned char, 20>;

struct TObjectIdHash {
  size_t operator()(const TObjectId& id) const;
};

// The id git gives `content` as an object of `type` ("blob", "tree", "commit").
TObjectId HashObject(std::string_view type, std::string_view content);
std::string ToHex(const TObjectId& id);
git_oid ToGitOid(const TObjectId& id);
TObjectId FromGitOid(const git_oid& id);

class TObjectPack {
 public:
  // Whether Add leaves out the objects the store already has and stores the new ones as they are
  // (recording a run costs little that way), or keeps every object and compresses it (a repack).
  enum TMode { kSkipStored, kKeepStored };
  // `odb` is the store's object database; it must outlive the pack.
  explicit TObjectPack(git_odb* odb, TMode mode = kSkipStored);

  // Adds an object unless the store or this batch already has it; returns its id.
  TObjectId Add(git_object_t type, std::string_view content);
  // Writes the batch as a pack into `pack_folder` (the store's "objects/pack"), nothing when the
  // batch is empty: the pack, then its index, each through a temporary file. On failure returns
  // false with `error` saying why; the store is left as it was.
  bool Write(const std::filesystem::path& pack_folder, std::string& error);

 private:
  git_odb* odb_;
  TMode mode_;
  std::unordered_set<TObjectId, TObjectIdHash> added_;
  struct Entry {
    TObjectId Id;
    uint64_t Offset;  // in the pack file
    uint32_t Crc;     // of the entry's bytes in the pack
  };
  std::string body_;  // the compressed objects, in pack order
  std::vector<Entry> entries_;
};

}  // namespace tsaw::generations
