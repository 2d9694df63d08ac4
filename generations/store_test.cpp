// The generation store: what goes in comes back byte for byte, a second recording of the same
// files costs no new file content, old generations are pruned, and one run at a time holds it.

#include "generations/store.h"

#include <git2.h>
#include <gtest/gtest.h>

#include "generations/snapshot.h"
#include "testing/temp_dir.h"

namespace tsaw::generations {
namespace {
namespace fs = std::filesystem;

class StoreTest : public ::testing::Test {
 protected:
  fs::path State() const { return dir_.path() / "state"; }
  fs::path Set() const { return dir_.path() / "set"; }
  std::unique_ptr<TGenerationStore> OpenStore(bool create = true) {
    std::string error;
    auto store = TGenerationStore::Open(State(), Set(), create, error);
    EXPECT_TRUE(store || !create) << error;
    return store;
  }
  TFiles Record(TGenerationStore& store, const std::string& kind = "creation") {
    TObjectPack pack = store.NewPack();
    const TFiles files = SnapshotFolder(Set(), pack);
    std::string error;
    EXPECT_TRUE(store.AddGeneration(pack, files, {kind, "Apps/Tiny", "f1", "[Job]\r\n"}, error)) << error;
    EXPECT_TRUE(store.Prune(error)) << error;
    return files;
  }
  size_t PackCount() const {
    size_t packs = 0;
    for (const auto& entry : fs::directory_iterator(TGenerationStore::FolderOf(State(), Set()) / "objects/pack")) {
      packs += entry.path().extension() == ".pack";
    }
    return packs;
  }
  size_t ObjectCount() const {
    git_repository* repo = nullptr;
    git_odb* odb = nullptr;
    size_t count = 0;
    EXPECT_EQ(git_repository_open_bare(&repo, TGenerationStore::FolderOf(State(), Set()).c_str()), 0);
    EXPECT_EQ(git_repository_odb(&odb, repo), 0);
    git_odb_foreach(
        odb, [](const git_oid*, void* counted) { return ++*static_cast<size_t*>(counted), 0; }, &count);
    git_odb_free(odb);
    git_repository_free(repo);
    return count;
  }
  // libgit2's own indexer reads every pack, checking its checksum, and makes the same index.
  void ExpectPacksAsLibgit2IndexesThem() const {
    const fs::path packs = TGenerationStore::FolderOf(State(), Set()) / "objects/pack";
    const fs::path indexed = dir_.path() / "indexed";
    fs::create_directories(indexed);
    for (const auto& entry : fs::directory_iterator(packs)) {
      if (entry.path().extension() != ".pack") continue;
      const std::string bytes = dir_.Read(fs::relative(entry.path(), dir_.path()).string());
      git_indexer* indexer = nullptr;
      git_indexer_progress progress{};
      ASSERT_EQ(git_indexer_new(&indexer, indexed.c_str(), 0, nullptr, nullptr), 0);
      EXPECT_EQ(git_indexer_append(indexer, bytes.data(), bytes.size(), &progress), 0);
      EXPECT_EQ(git_indexer_commit(indexer, &progress), 0) << git_error_last()->message;
      const std::string name = std::string("pack-") + git_indexer_name(indexer);
      git_indexer_free(indexer);
      EXPECT_EQ(entry.path().stem().string(), name);
      EXPECT_EQ(dir_.Read("indexed/" + name + ".idx"), dir_.Read(fs::relative(packs / (name + ".idx"), dir_.path()).string()));
    }
  }
  tsaw::testing::TempDir dir_;
};

TEST_F(StoreTest, GivesBackEveryRegularFileByteForByte) {
  const std::string crlf_1252 = "unit A;\r\n// caf\xe9\r\nend.\r\n";
  const std::string binary("\x00\x01\xff\r\n\x00", 6);
  dir_.Write("set/Delphi 7/Win32/Host/A.pas", crlf_1252);
  dir_.Write("set/data.bin", binary);
  dir_.Write("set/empty.txt", "");
  fs::create_symlink(Set() / "data.bin", Set() / "link.bin");
  auto store = OpenStore();
  const TFiles recorded = Record(*store);

  const std::vector<TGeneration> generations = store->Generations();
  ASSERT_EQ(generations.size(), 1u);
  EXPECT_EQ(generations[0].Number, 1);
  EXPECT_EQ(generations[0].Meta.Kind, "creation");
  EXPECT_EQ(generations[0].Meta.Template, "Apps/Tiny");
  const TFiles files = store->Files(generations[0]);
  EXPECT_EQ(files, recorded);
  ASSERT_EQ(files.size(), 3u);  // the link is not a regular file
  EXPECT_EQ(store->Read(files.at("Delphi 7/Win32/Host/A.pas")), crlf_1252);
  EXPECT_EQ(store->Read(files.at("data.bin")), binary);
  EXPECT_EQ(store->Read(files.at("empty.txt")), "");
}

// git's own tree writer puts entries in git's order (a folder's name compared as if it ended
// in '/'); a tree of ours written in any other order would get another id from it, and git
// would take it for a damaged one.
TEST_F(StoreTest, TreesAreWrittenInGitsOrder) {
  for (const char* name : {"a", "a.b", "a-c", "a0", "ab", "b/a.txt", "b.txt", "b-/x", "b0/y", "c/d/e", "c.d", "c/d.e"}) {
    dir_.Write(std::string("set/") + name, name);
  }
  auto store = OpenStore();
  Record(*store);
  git_repository* repo = nullptr;
  ASSERT_EQ(git_repository_open_bare(&repo, TGenerationStore::FolderOf(State(), Set()).c_str()), 0);
  git_oid commit_id;
  git_oid_fromraw(&commit_id, store->Generations().at(0).Commit.data());
  git_commit* commit = nullptr;
  git_tree* top = nullptr;
  ASSERT_EQ(git_commit_lookup(&commit, repo, &commit_id), 0);
  ASSERT_EQ(git_commit_tree(&top, commit), 0);
  std::vector<git_oid> trees = {*git_tree_id(top)};
  git_tree_walk(top, GIT_TREEWALK_PRE, [](const char*, const git_tree_entry* entry, void* found) {
    if (git_tree_entry_type(entry) == GIT_OBJECT_TREE) static_cast<std::vector<git_oid>*>(found)->push_back(*git_tree_entry_id(entry));
    return 0;
  }, &trees);
  EXPECT_EQ(trees.size(), 7u);  // the top, "files" and its folders b, b-, b0, c, c/d
  for (const git_oid& id : trees) {
    git_tree* tree = nullptr;
    git_treebuilder* builder = nullptr;
    git_oid rewritten;
    ASSERT_EQ(git_tree_lookup(&tree, repo, &id), 0);
    ASSERT_EQ(git_treebuilder_new(&builder, repo, tree), 0);
    ASSERT_EQ(git_treebuilder_write(&rewritten, builder), 0);
    EXPECT_TRUE(git_oid_equal(&rewritten, &id)) << git_oid_tostr_s(&id);
    git_treebuilder_free(builder);
    git_tree_free(tree);
  }
  git_tree_free(top);
  git_commit_free(commit);
  git_repository_free(repo);
}

TEST_F(StoreTest, ASecondRecordingOfTheSameFilesAddsOnlyItsDescription) {
  for (int i = 0; i < 50; ++i) dir_.Write("set/U" + std::to_string(i) + ".pas", std::string(4000, 'a' + i % 26));
  auto store = OpenStore();
  Record(*store);
  const auto folder = TGenerationStore::FolderOf(State(), Set()) / "objects/pack";
  auto bytes = [&folder] {
    uintmax_t total = 0;
    for (const auto& entry : fs::directory_iterator(folder)) total += entry.file_size();
    return total;
  };
  const uintmax_t first = bytes();
  Record(*store);
  EXPECT_LT(bytes() - first, 2000u);
  EXPECT_EQ(store->Generations().size(), 2u);
}

TEST_F(StoreTest, ABatchLargerThanWhatIsHeldInMemoryComesBackWhole) {
  for (int i = 0; i < 5; ++i) dir_.Write("set/Big" + std::to_string(i) + ".bin", std::string(700000 + i, 'A' + i));
  for (int i = 0; i < 300; ++i) dir_.Write("set/Small" + std::to_string(i) + ".txt", "small " + std::to_string(i));
  auto store = OpenStore();
  const TFiles recorded = Record(*store);
  const TFiles files = store->Files(store->Generations().back());
  ASSERT_EQ(files, recorded);
  for (const auto& [path, id] : files) EXPECT_EQ(store->Read(id), dir_.Read("set/" + path)) << path;
  EXPECT_EQ(PackCount(), 1u);
}

TEST_F(StoreTest, ABatchOfMoreObjectsThanAPackHoldsGoesOutAsSeveralThatLibgit2Accepts) {
  for (uint32_t i = 0; i < kPackEntries + 100; ++i) dir_.Write("set/U" + std::to_string(i) + ".pas", "unit " + std::to_string(i));
  auto store = OpenStore();
  const TFiles recorded = Record(*store);
  EXPECT_EQ(PackCount(), 2u);
  ExpectPacksAsLibgit2IndexesThem();
  store.reset();
  auto again = OpenStore();
  const TFiles files = again->Files(again->Generations().back());
  ASSERT_EQ(files, recorded);
  for (const auto& [path, id] : files) ASSERT_EQ(again->Read(id), dir_.Read("set/" + path)) << path;
}

TEST_F(StoreTest, ALargeLastPackIsPaddedToAFullOneAndPruningDropsThePadding) {
  for (int i = 0; i < 3; ++i) dir_.Write("set/Big" + std::to_string(i) + ".bin", std::string(600000 + i, 'A' + i));
  auto store = OpenStore();
  const TFiles recorded = Record(*store);
  EXPECT_EQ(ObjectCount(), kPackEntries);
  ExpectPacksAsLibgit2IndexesThem();
  const TFiles files = store->Files(store->Generations().back());
  ASSERT_EQ(files, recorded);
  for (const auto& [path, id] : files) EXPECT_EQ(store->Read(id), dir_.Read("set/" + path)) << path;

  for (int i = 0; i < kKeptGenerations; ++i) {
    dir_.Write("set/Small.txt", std::to_string(i));
    Record(*store);
  }
  EXPECT_LT(ObjectCount(), 50u) << "the repack that pruned the store kept the padding";
}

TEST_F(StoreTest, ABatchThatIsNotWrittenLeavesNoFile) {
  auto store = OpenStore();
  const fs::path folder = TGenerationStore::FolderOf(State(), Set()) / "objects/pack";
  {
    TObjectPack pack = store->NewPack();
    for (uint32_t i = 0; i < kPackEntries; ++i) pack.Add(GIT_OBJECT_BLOB, "object " + std::to_string(i));
    pack.Add(GIT_OBJECT_BLOB, std::string(3 << 20, 'y'));
    ASSERT_EQ(PackCount(), 1u) << "a full pack was completed";
    ASSERT_GT(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 2) << "and the rest went to a temporary file";
  }
  EXPECT_TRUE(fs::is_empty(folder));
}

TEST_F(StoreTest, PrunesToHalfWhenOneMoreThanTheKeptGenerationsIsRecorded) {
  auto store = OpenStore();
  for (int i = 1; i <= kKeptGenerations + 1; ++i) {
    dir_.Write("set/A.pas", "version " + std::to_string(i));
    Record(*store);
  }
  std::vector<int> numbers;
  for (const TGeneration& generation : store->Generations()) numbers.push_back(generation.Number);
  EXPECT_EQ(numbers, (std::vector<int>{6, 7, 8, 9}));
  EXPECT_EQ(PackCount(), 1u);
  EXPECT_EQ(store->Read(store->Files(store->Generations().front()).at("A.pas")), "version 6");
}

TEST_F(StoreTest, PruningKeepsTheGenerationTheUndoGoesBackTo) {
  auto store = OpenStore();
  dir_.Write("set/A.pas", "first");
  const TFiles first = Record(*store);
  TObjectPack pack = store->NewPack();
  std::string error;
  ASSERT_TRUE(store->SetUndo(pack, {first, {"B.pas"}, 1, true}, error)) << error;
  for (int i = 2; i <= kKeptGenerations + 1; ++i) {
    dir_.Write("set/A.pas", "version " + std::to_string(i));
    Record(*store);
  }
  EXPECT_EQ(store->Generations().front().Number, 1);
  const std::optional<TUndoRecord> undo = store->Undo();
  ASSERT_TRUE(undo);
  EXPECT_EQ(undo->Added, std::vector<std::string>{"B.pas"});
  EXPECT_EQ(store->Read(undo->Saved.at("A.pas")), "first");
}

TEST_F(StoreTest, UndoRecordRoundTripsAndDrops) {
  dir_.Write("set/A.pas", "a");
  auto store = OpenStore();
  EXPECT_FALSE(store->Undo());
  TObjectPack pack = store->NewPack();
  const TFiles saved = SnapshotFolder(Set(), pack);
  std::string error;
  ASSERT_TRUE(store->SetUndo(pack, {saved, {"New.pas", "Deep/New.txt.tsaw-new"}, 3, false}, error)) << error;
  std::optional<TUndoRecord> undo = store->Undo();
  ASSERT_TRUE(undo);
  EXPECT_EQ(undo->Saved, saved);
  EXPECT_EQ(undo->Added, (std::vector<std::string>{"New.pas", "Deep/New.txt.tsaw-new"}));
  EXPECT_EQ(undo->Base, 3);
  EXPECT_FALSE(undo->Finished);
  ASSERT_TRUE(store->DropUndo(error)) << error;
  EXPECT_FALSE(store->Undo());
}

TEST_F(StoreTest, OneRunAtATimeAndNoStoreWithoutARecording) {
  std::string error;
  EXPECT_FALSE(TGenerationStore::Open(State(), Set(), false, error));
  EXPECT_EQ(error, "no generation is recorded for '" + Set().string() + "'");
  auto store = OpenStore();
  EXPECT_FALSE(TGenerationStore::Open(State(), Set(), true, error));
  EXPECT_EQ(error, "another tsaw run is using the generation store of '" + Set().string() + "'");
  store.reset();
  EXPECT_TRUE(OpenStore());
}

}  // namespace
}  // namespace tsaw::generations
