#pragma once
// Writes a batch of new objects into a store repository as one pack: every object is hashed as
// git hashes it, objects the store (or the batch) already holds are left out, and the rest are
// compressed into one pack that libgit2's indexer checks, indexes and moves into place. A
// generation thus costs two files, however many files it holds.

#include <git2.h>

#include <array>
#include <string>
#include <string_view>
#include <unordered_set>

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
  // Writes the batch as a pack into the store (nothing when the batch is empty). On failure
  // returns false with `error` saying why; the store is left as it was.
  bool Write(std::string& error);

 private:
  git_odb* odb_;
  TMode mode_;
  std::unordered_set<TObjectId, TObjectIdHash> added_;
  std::string body_;  // the compressed objects, in pack order
  uint32_t count_ = 0;
};

}  // namespace tsaw::generations
