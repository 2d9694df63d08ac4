#pragma once
// The per-user generation store of one Project Set folder: a bare git repository below
// "$XDG_STATE_HOME/tsaw/generations/" holding the pristine output of each creation or update
// (with the answers and the template it came from) and the "before update" state that undoes
// the last update. Generations are refs "refs/generations/NNNNNN"; the newest is the base of
// the next update. The store is locked while it is open, so two runs never write it at once.

#include <git2.h>

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "generations/object_pack.h"

namespace tsaw::generations {

// Files of a generation: path relative to the Project Set folder ('/' between names) and the
// id of the content.
using TFiles = std::map<std::string, TObjectId>;

struct TGenerationMeta {
  std::string Kind;         // "creation" or "update"
  std::string Template;     // the template's folder
  std::string Fingerprint;  // of the template's files
  std::string Job;          // the answers, as the Job file the run would save (may be empty)
};

struct TGeneration {
  int Number = 0;
  TGenerationMeta Meta;
  TObjectId Commit{};
};

// What undoes the last update: the earlier content of every file it changed or removed, the
// files it added, and the generation that was the base before it.
struct TUndoRecord {
  TFiles Saved;
  std::vector<std::string> Added;
  int Base = 0;
  bool Finished = false;  // false while the update is under way (or was interrupted)
};

// A store keeps this many generations; recording one more drops the oldest half and repacks.
inline constexpr int kKeptGenerations = 8;

class TGenerationStore {
 public:
  ~TGenerationStore();
  TGenerationStore(const TGenerationStore&) = delete;
  TGenerationStore& operator=(const TGenerationStore&) = delete;

  // The store folder of `project_set` below `state_folder` (the tsaw folder of the state home);
  // links in the folder's path are resolved, so each folder has one store however it is named.
  static std::filesystem::path FolderOf(const std::filesystem::path& state_folder,
                                        const std::filesystem::path& project_set);
  // Opens the store of `project_set`, creating it when `create` is set. Returns null with
  // `error` set when there is none (and `create` is not set), when another run holds it, or when
  // it cannot be read or made.
  static std::unique_ptr<TGenerationStore> Open(const std::filesystem::path& state_folder,
                                                const std::filesystem::path& project_set, bool create,
                                                std::string& error);

  // An empty batch of objects for this store.
  TObjectPack NewPack() const;

  // The pristine generations, oldest first.
  std::vector<TGeneration> Generations() const;
  // The files of a generation. Throws std::runtime_error when the store is damaged.
  TFiles Files(const TGeneration& generation) const;
  // The content of a file. Throws std::runtime_error when the store lacks it.
  std::string Read(const TObjectId& id) const;

  // Adds a generation of `files` (whose contents `pack` holds or the store has) after the
  // newest and writes the pack. False with `error` set on failure.
  bool AddGeneration(TObjectPack& pack, const TFiles& files, const TGenerationMeta& meta, std::string& error);
  // When more than kKeptGenerations are recorded, drops the oldest half (not the one the undo
  // record goes back to) and repacks what is left. The repack opens the store's objects again,
  // so no pack made before it may be used after it: prune last.
  bool Prune(std::string& error);
  // Drops every generation newer than `number`.
  bool DropGenerationsAfter(int number, std::string& error);

  // The undo record of the last update, if one is kept. Throws std::runtime_error when damaged.
  std::optional<TUndoRecord> Undo() const;
  // Writes `record` (its saved contents in `pack` or the store) as the undo record.
  bool SetUndo(TObjectPack& pack, const TUndoRecord& record, std::string& error);
  bool DropUndo(std::string& error);

  // True when a creation made the Project Set folder anew after the newest generation was
  // recorded (it was not recorded or did not finish): the generations describe a folder that
  // went to the trash, and none is the base of an update.
  bool MadeAnew() const;
  // True when the newest generation is the base of the folder's next update: one is recorded
  // and the folder was not made anew since.
  bool HasBase() const;

  // Removes the store, still locked, when this opening made it and nothing was recorded in it
  // since (the run that made it did not finish), so that no empty store is left behind. The
  // store must not be used afterwards.
  void RemoveIfLeftEmpty();

 private:
  TGenerationStore() = default;
  bool SetRef(const std::string& name, const TObjectId& commit, std::string& error);
  bool Repack(std::string& error);
  bool Reopen(std::string& error);
  bool OpenObjects();
  bool WritePack(TObjectPack& pack, std::string& error);

  std::filesystem::path folder_;
  int lock_fd_ = -1;
  bool made_ = false;  // this opening made the store
  git_repository* repo_ = nullptr;
  git_odb* odb_ = nullptr;
  git_odb* packs_ = nullptr;  // the same objects, read from the packs alone
};

// Marks the store of `project_set`, if there is one, as describing a folder that a creation is
// about to make anew; recording a generation clears the mark. Returns why not when another run
// holds the store (an update may be writing into the folder), else the empty text.
std::string MarkMadeAnew(const std::filesystem::path& state_folder, const std::filesystem::path& project_set);

// The tree objects of `files`, added to `pack`; returns the id of the top tree.
TObjectId AddTree(TObjectPack& pack, const TFiles& files);

}  // namespace tsaw::generations
