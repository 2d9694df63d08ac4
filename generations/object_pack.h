#pragma once
// Writes a batch of new objects into a store repository as packs: every object is hashed as git
// hashes it, objects the store (or the batch) already holds are left out, and the rest go into
// pack files of a thousand or so entries with their indexes (git's formats, version 2), which
// libgit2 then reads. A generation thus costs a few files, however many files it holds. The
// objects go to the pack's temporary file as they are added, so memory stays flat however many
// there are, and each full pack is completed while the batch goes on, so that writing the batch
// waits for its last pack only. The index is written here, from the ids and offsets already
// known, because having libgit2's indexer read the whole pack back to hash every object again
// doubled the cost of recording a creation.

#include <git2.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "generations/sha1.h"

namespace tsaw::generations {

// The entries of a full pack.
inline constexpr uint32_t kPackEntries = 1024;

struct TObjectIdHash {
  size_t operator()(const TObjectId& id) const;
};

// The id git gives `content` as an object of `type` ("blob", "tree", "commit").
TObjectId HashObject(std::string_view type, std::string_view content);
// The same with `sha`, restarted first: a hasher kept for many objects costs less.
TObjectId HashObject(TSha1& sha, std::string_view type, std::string_view content);
std::string ToHex(const TObjectId& id);
git_oid ToGitOid(const TObjectId& id);
TObjectId FromGitOid(const git_oid& id);

class TObjectPack {
 public:
  // Whether Add leaves out the objects the store already has and stores the new ones as they are
  // (recording a run costs little that way), or keeps every object and compresses it (a repack).
  enum TMode { kSkipStored, kKeepStored };
  // `odb` holds the store's objects (it must outlive the pack) and `pack_folder` is its
  // "objects/pack", where the batch's temporary file is made.
  TObjectPack(git_odb* odb, std::filesystem::path pack_folder, TMode mode = kSkipStored);
  // Removes the temporary file and the packs of a batch that was not written.
  ~TObjectPack();
  TObjectPack(const TObjectPack&) = delete;
  TObjectPack& operator=(const TObjectPack&) = delete;

  // Adds an object unless the store or this batch already has it; returns its id. A failure to
  // write the temporary file is kept for Write to report.
  TObjectId Add(git_object_t type, std::string_view content);
  // Writes the rest of the batch as a pack, nothing when it is empty: the pack's temporary file is
  // completed and renamed, then the index is written through a temporary file. On failure returns
  // false with `error` saying why; the batch's packs are removed and the store is left as it was.
  // The pack is empty again afterwards.
  bool Write(std::string& error);

 private:
  bool IsNew(const TObjectId& id);
  void Append(const TObjectId& id, git_object_t type, std::string_view content);
  void PadToFullCount();
  void Spill();
  void Seal();
  bool FinishPackFile(TObjectId& trailer);
  bool WriteIndex(const TObjectId& trailer);
  void Reset();

  git_odb* odb_;
  std::filesystem::path folder_;
  TMode mode_;
  std::unordered_set<TObjectId, TObjectIdHash> added_;
  struct Entry {
    TObjectId Id;
    uint64_t Offset;  // in the pack file
    uint32_t Crc;     // of the entry's bytes in the pack
  };
  std::vector<Entry> entries_;  // of the pack being made
  std::vector<std::string> sealed_;  // names of the batch's completed packs
  std::string pending_;      // entries not yet in the temporary file
  uint64_t body_size_ = 0;   // bytes of the pack's entries, in the file and pending
  int fd_ = -1;              // the temporary file, open once the first entry is spilled
  std::string temporary_;    // its name
  bool failed_ = false;      // the temporary file could not be made or written
  TSha1 full_pack_sum_;      // of what is in the file, with the head a full pack will have
  TSha1 object_sum_;         // names each object added
};

}  // namespace tsaw::generations
