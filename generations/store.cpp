#include "generations/store.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <set>
#include <sstream>
#include <stdexcept>

#include "model/text_file.h"

namespace tsaw::generations {
namespace fs = std::filesystem;
namespace {

constexpr const char* kGenerationRefs = "refs/generations/";
constexpr const char* kUndoRef = "refs/undo";
// Files in the store folder: see MarkMadeAnew, and the lock one run at a time holds.
constexpr const char* kMadeAnewFile = "made-anew";
constexpr const char* kLockFile = "tsaw.lock";

std::string StoreInUse(const fs::path& project_set) {
  return "another tsaw run is using the generation store of '" + project_set.string() + "'";
}

// The lock of the store in `folder`, taken without waiting: its descriptor; -1 when the lock file
// cannot be opened, or when another run holds the lock, which `in_use` then says.
int TakeLock(const fs::path& folder, bool& in_use) {
  const int fd = ::open((folder / kLockFile).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  in_use = fd >= 0 && flock(fd, LOCK_EX | LOCK_NB) != 0;
  if (!in_use) return fd;
  ::close(fd);
  return -1;
}

std::string GitError(const std::string& what) {
  const git_error* error = git_error_last();
  return "the generation store could not " + what + ": " + (error && error->message ? error->message : "unknown error");
}

struct TreeEntry {
  std::string Name;
  bool Folder = false;
  TObjectId Id{};
};

// git orders a tree's entries by name, a folder's name compared as if it ended in '/'.
bool InTreeOrder(const TreeEntry& a, const TreeEntry& b) {
  const size_t common = std::min(a.Name.size(), b.Name.size());
  if (const int order = a.Name.compare(0, common, b.Name, 0, common); order != 0) return order < 0;
  // One name begins the other: compare the next bytes, the end of a name being '/' or nothing.
  auto next = [common](const TreeEntry& entry) -> unsigned char {
    return entry.Name.size() > common ? static_cast<unsigned char>(entry.Name[common]) : (entry.Folder ? '/' : 0);
  };
  return next(a) < next(b);
}

void AppendTreeEntry(std::string& content, bool folder, std::string_view name, const TObjectId& id) {
  content += folder ? "40000 " : "100644 ";
  content += name;
  content += '\0';
  content.append(reinterpret_cast<const char*>(id.data()), id.size());
}

TObjectId AddTreeObject(TObjectPack& pack, std::vector<TreeEntry> entries) {
  std::sort(entries.begin(), entries.end(), InTreeOrder);
  std::string content;
  for (const TreeEntry& entry : entries) AppendTreeEntry(content, entry.Folder, entry.Name, entry.Id);
  return pack.Add(GIT_OBJECT_TREE, content);
}

std::string CommitText(const TObjectId& tree, const std::string& message) {
  const std::string when = std::to_string(static_cast<long long>(std::time(nullptr))) + " +0000";
  return "tree " + ToHex(tree) + "\nauthor tsaw <tsaw@localhost> " + when + "\ncommitter tsaw <tsaw@localhost> " +
         when + "\n\n" + message;
}

// "Key: value" lines of a commit message, after its first line.
std::map<std::string, std::string> MessageFields(const std::string& message, std::string& first_line) {
  std::map<std::string, std::string> fields;
  std::istringstream lines(message);
  std::getline(lines, first_line);
  for (std::string line; std::getline(lines, line);) {
    const size_t colon = line.find(": ");
    if (colon != std::string::npos) fields[line.substr(0, colon)] = line.substr(colon + 2);
  }
  return fields;
}

template <typename T, void (*Free)(T*)>
struct GitPtr {
  T* p = nullptr;
  ~GitPtr() { Free(p); }
};

// The commit that `ref` names, or nullopt when there is no such ref.
std::optional<TObjectId> RefTarget(git_repository* repo, const std::string& ref) {
  git_oid oid;
  if (git_reference_name_to_id(&oid, repo, ref.c_str()) != 0) return std::nullopt;
  return FromGitOid(oid);
}

struct CommitParts {
  std::string Message;
  std::map<std::string, TObjectId> Entries;  // the top tree's entries
};

CommitParts ReadCommit(git_repository* repo, const TObjectId& id) {
  const git_oid oid = ToGitOid(id);
  GitPtr<git_commit, git_commit_free> commit;
  GitPtr<git_tree, git_tree_free> tree;
  if (git_commit_lookup(&commit.p, repo, &oid) != 0 || git_commit_tree(&tree.p, commit.p) != 0) {
    throw std::runtime_error(GitError("read generation " + ToHex(id)));
  }
  CommitParts parts{git_commit_message(commit.p), {}};
  for (size_t i = 0; i < git_tree_entrycount(tree.p); ++i) {
    const git_tree_entry* entry = git_tree_entry_byindex(tree.p, i);
    parts.Entries[git_tree_entry_name(entry)] = FromGitOid(*git_tree_entry_id(entry));
  }
  return parts;
}

int CollectFile(const char* root, const git_tree_entry* entry, void* payload) {
  if (git_tree_entry_type(entry) == GIT_OBJECT_BLOB) {
    (*static_cast<TFiles*>(payload))[std::string(root) + git_tree_entry_name(entry)] =
        FromGitOid(*git_tree_entry_id(entry));
  }
  return 0;
}

int CollectObject(const char*, const git_tree_entry* entry, void* payload) {
  static_cast<std::set<TObjectId>*>(payload)->insert(FromGitOid(*git_tree_entry_id(entry)));
  return 0;
}

TFiles FilesOfTree(git_repository* repo, const TObjectId& id) {
  const git_oid oid = ToGitOid(id);
  GitPtr<git_tree, git_tree_free> tree;
  TFiles files;
  if (git_tree_lookup(&tree.p, repo, &oid) != 0 || git_tree_walk(tree.p, GIT_TREEWALK_PRE, CollectFile, &files) != 0) {
    throw std::runtime_error(GitError("read the tree " + ToHex(id)));
  }
  return files;
}

fs::path PackFolder(const fs::path& store) { return store / "objects" / "pack"; }

std::vector<fs::path> PackFiles(const fs::path& store) {
  std::vector<fs::path> files;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(PackFolder(store), error)) files.push_back(entry.path());
  return files;
}

}  // namespace

// One pass over the files: a folder's tree is made once the files below it are over. The files
// come sorted by path, which is git's order for every tree: a folder's name is followed by '/' in
// the paths below it, as git compares it.
TObjectId AddTree(TObjectPack& pack, const TFiles& files) {
  struct TOpenFolder {
    size_t End = 0;  // the length of its path, with the '/', in the paths below it
    std::string Content;
  };
  std::vector<TOpenFolder> open(1);  // the top folder first
  std::string_view last_path;
  const auto close_innermost = [&pack, &open, &last_path] {
    const TOpenFolder folder = std::move(open.back());
    open.pop_back();
    const size_t begin = open.back().End;
    const std::string_view name = last_path.substr(begin, folder.End - 1 - begin);
    AppendTreeEntry(open.back().Content, true, name, pack.Add(GIT_OBJECT_TREE, folder.Content));
  };
  for (const auto& [path, id] : files) {
    while (open.size() > 1 && path.compare(0, open.back().End, last_path, 0, open.back().End) != 0) close_innermost();
    last_path = path;
    for (size_t slash; (slash = path.find('/', open.back().End)) != std::string::npos;) open.push_back({slash + 1, {}});
    AppendTreeEntry(open.back().Content, false, std::string_view(path).substr(open.back().End), id);
  }
  while (open.size() > 1) close_innermost();
  return pack.Add(GIT_OBJECT_TREE, open.back().Content);
}

fs::path TGenerationStore::FolderOf(const fs::path& state_folder, const fs::path& project_set) {
  std::error_code io;
  fs::path key = fs::weakly_canonical(fs::absolute(project_set), io);
  if (io || key.empty()) key = fs::absolute(project_set).lexically_normal();
  return state_folder / "generations" / ToHex(HashObject("blob", key.string())).substr(0, 24);
}

std::unique_ptr<TGenerationStore> TGenerationStore::Open(const fs::path& state_folder, const fs::path& project_set,
                                                         bool create, std::string& error) {
  git_libgit2_init();
  std::unique_ptr<TGenerationStore> store(new TGenerationStore);
  store->folder_ = FolderOf(state_folder, project_set);
  std::error_code io;
  if (!fs::is_directory(store->folder_ / "objects", io)) {
    if (!create) {
      error = "no generation is recorded for '" + project_set.string() + "'";
      return nullptr;
    }
    fs::create_directories(store->folder_, io);
    store->made_ = true;
  }
  bool in_use = false;
  store->lock_fd_ = TakeLock(store->folder_, in_use);
  if (in_use) {
    error = StoreInUse(project_set);
    return nullptr;
  }
  if (store->lock_fd_ < 0) {
    error = "the generation store '" + store->folder_.string() + "' cannot be opened";
    return nullptr;
  }
  if (git_repository_open_bare(&store->repo_, store->folder_.c_str()) != 0) {
    if (!create || git_repository_init(&store->repo_, store->folder_.c_str(), 1) != 0) {
      error = GitError("open '" + store->folder_.string() + "'");
      return nullptr;
    }
    WriteFileBytes(store->folder_ / "description", project_set.string() + "\n");
  }
  if (!store->OpenObjects()) {
    error = GitError("open its objects");
    return nullptr;
  }
  return store;
}

// The store keeps no loose objects, so a new object is looked for in its packs alone: libgit2
// would otherwise look for a loose file of every object it does not find in them.
bool TGenerationStore::OpenObjects() {
  git_odb_backend* packs = nullptr;
  const std::string objects = (folder_ / "objects").string();
  return git_repository_odb(&odb_, repo_) == 0 && git_odb_new(&packs_) == 0 &&
         git_odb_backend_pack(&packs, objects.c_str()) == 0 && git_odb_add_backend(packs_, packs, 1) == 0;
}

TObjectPack TGenerationStore::NewPack() const { return TObjectPack(packs_, PackFolder(folder_)); }

TGenerationStore::~TGenerationStore() {
  git_odb_free(packs_);
  git_odb_free(odb_);
  git_repository_free(repo_);
  if (lock_fd_ >= 0) ::close(lock_fd_);  // releases the lock
  git_libgit2_shutdown();
}

bool TGenerationStore::Reopen(std::string& error) {
  git_odb_free(packs_);
  git_odb_free(odb_);
  git_repository_free(repo_);
  packs_ = odb_ = nullptr;
  repo_ = nullptr;
  if (git_repository_open_bare(&repo_, folder_.c_str()) != 0 || !OpenObjects()) {
    error = GitError("open '" + folder_.string() + "' again");
    return false;
  }
  return true;
}

std::vector<TGeneration> TGenerationStore::Generations() const {
  std::vector<TGeneration> generations;
  git_reference_iterator* iterator = nullptr;
  if (git_reference_iterator_glob_new(&iterator, repo_, (std::string(kGenerationRefs) + "*").c_str()) != 0) {
    throw std::runtime_error(GitError("list its generations"));
  }
  const char* name = nullptr;
  std::vector<std::pair<int, std::string>> refs;
  while (git_reference_next_name(&name, iterator) == 0) {
    refs.emplace_back(std::atoi(name + std::string(kGenerationRefs).size()), name);
  }
  git_reference_iterator_free(iterator);
  std::sort(refs.begin(), refs.end());
  for (const auto& [number, ref] : refs) {
    const std::optional<TObjectId> commit = RefTarget(repo_, ref);
    if (!commit) continue;
    std::string kind;
    auto fields = MessageFields(ReadCommit(repo_, *commit).Message, kind);
    generations.push_back({number, {kind, fields["Template"], fields["Fingerprint"], {}}, *commit});
  }
  return generations;
}

TFiles TGenerationStore::Files(const TGeneration& generation) const {
  const CommitParts parts = ReadCommit(repo_, generation.Commit);
  const auto files = parts.Entries.find("files");
  return files == parts.Entries.end() ? TFiles() : FilesOfTree(repo_, files->second);
}

std::string TGenerationStore::Read(const TObjectId& id) const {
  const git_oid oid = ToGitOid(id);
  GitPtr<git_odb_object, git_odb_object_free> object;
  if (git_odb_read(&object.p, odb_, &oid) != 0) throw std::runtime_error(GitError("read " + ToHex(id)));
  return std::string(static_cast<const char*>(git_odb_object_data(object.p)), git_odb_object_size(object.p));
}

bool TGenerationStore::SetRef(const std::string& name, const TObjectId& commit, std::string& error) {
  const git_oid oid = ToGitOid(commit);
  git_reference* ref = nullptr;
  const bool set = git_reference_create(&ref, repo_, name.c_str(), &oid, 1, nullptr) == 0;
  git_reference_free(ref);
  if (!set) error = GitError("record " + name);
  return set;
}

bool TGenerationStore::AddGeneration(TObjectPack& pack, const TFiles& files, const TGenerationMeta& meta,
                                     std::string& error) {
  const std::vector<TGeneration> generations = Generations();
  const int number = generations.empty() ? 1 : generations.back().Number + 1;
  std::vector<TreeEntry> top = {{"files", true, AddTree(pack, files)}};
  if (!meta.Job.empty()) top.push_back({"job", false, pack.Add(GIT_OBJECT_BLOB, meta.Job)});
  const std::string message = meta.Kind + "\n\nTemplate: " + meta.Template + "\nFingerprint: " + meta.Fingerprint + "\n";
  const TObjectId commit = pack.Add(GIT_OBJECT_COMMIT, CommitText(AddTreeObject(pack, top), message));
  char ref[64];
  std::snprintf(ref, sizeof ref, "%s%06d", kGenerationRefs, number);
  if (!WritePack(pack, error) || !SetRef(ref, commit, error)) return false;
  std::error_code io;
  fs::remove(folder_ / kMadeAnewFile, io);
  return true;
}

bool TGenerationStore::MadeAnew() const {
  std::error_code io;
  return fs::exists(folder_ / kMadeAnewFile, io);
}

bool TGenerationStore::HasBase() const { return !Generations().empty() && !MadeAnew(); }

// A plain file rather than a ref, so that a creation marks the store without opening it: the
// mark must be there before the old folder goes to the trash. It is made under the store's lock,
// which is let go at once: an update that takes the lock afterwards finds the mark and refuses.
std::string MarkMadeAnew(const fs::path& state_folder, const fs::path& project_set) {
  const fs::path folder = TGenerationStore::FolderOf(state_folder, project_set);
  std::error_code io;
  if (!fs::is_directory(folder / "objects", io)) return {};
  bool in_use = false;
  const int lock = TakeLock(folder, in_use);
  if (in_use) return StoreInUse(project_set);
  const int fd = ::open((folder / kMadeAnewFile).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
  if (fd >= 0) ::close(fd);
  if (lock >= 0) ::close(lock);
  return {};
}

// Writes `pack`, whose objects the repository's own reads then see as well.
bool TGenerationStore::WritePack(TObjectPack& pack, std::string& error) {
  if (!pack.Write(error)) return false;
  if (git_odb_refresh(odb_) == 0) return true;
  error = GitError("read its new pack");
  return false;
}

bool TGenerationStore::DropGenerationsAfter(int number, std::string& error) {
  for (const TGeneration& generation : Generations()) {
    if (generation.Number <= number) continue;
    char ref[64];
    std::snprintf(ref, sizeof ref, "%s%06d", kGenerationRefs, generation.Number);
    if (git_reference_remove(repo_, ref) != 0) {
      error = GitError("drop generation " + std::to_string(generation.Number));
      return false;
    }
  }
  return true;
}

std::optional<TUndoRecord> TGenerationStore::Undo() const {
  const std::optional<TObjectId> commit = RefTarget(repo_, kUndoRef);
  if (!commit) return std::nullopt;
  const CommitParts parts = ReadCommit(repo_, *commit);
  std::string kind;
  auto fields = MessageFields(parts.Message, kind);
  TUndoRecord record;
  record.Base = std::atoi(fields["Base"].c_str());
  record.Finished = fields["State"] == "finished";
  if (const auto files = parts.Entries.find("files"); files != parts.Entries.end()) {
    record.Saved = FilesOfTree(repo_, files->second);
  }
  if (const auto added = parts.Entries.find("added"); added != parts.Entries.end()) {
    std::istringstream lines(Read(added->second));
    for (std::string line; std::getline(lines, line);) record.Added.push_back(line);
  }
  return record;
}

bool TGenerationStore::SetUndo(TObjectPack& pack, const TUndoRecord& record, std::string& error) {
  std::string added;
  for (const std::string& path : record.Added) added += path + "\n";
  const std::vector<TreeEntry> top = {{"files", true, AddTree(pack, record.Saved)},
                                      {"added", false, pack.Add(GIT_OBJECT_BLOB, added)}};
  const std::string message = "before update\n\nBase: " + std::to_string(record.Base) +
                              "\nState: " + (record.Finished ? "finished" : "unfinished") + "\n";
  const TObjectId commit = pack.Add(GIT_OBJECT_COMMIT, CommitText(AddTreeObject(pack, top), message));
  return WritePack(pack, error) && SetRef(kUndoRef, commit, error);
}

bool TGenerationStore::DropUndo(std::string& error) {
  if (git_reference_remove(repo_, kUndoRef) != 0 && RefTarget(repo_, kUndoRef)) {
    error = GitError("drop the undo record");
    return false;
  }
  return true;
}

void TGenerationStore::RemoveIfLeftEmpty() {
  if (!made_ || !Generations().empty() || RefTarget(repo_, kUndoRef)) return;
  std::error_code io;
  fs::remove_all(folder_, io);
}

bool TGenerationStore::Prune(std::string& error) {
  const std::vector<TGeneration> generations = Generations();
  if (static_cast<int>(generations.size()) <= kKeptGenerations) return true;
  const std::optional<TUndoRecord> undo = Undo();
  const size_t drop = generations.size() - kKeptGenerations / 2;
  for (size_t i = 0; i < drop; ++i) {
    if (undo && generations[i].Number == undo->Base) continue;  // the undo goes back to it
    char ref[64];
    std::snprintf(ref, sizeof ref, "%s%06d", kGenerationRefs, generations[i].Number);
    if (git_reference_remove(repo_, ref) != 0) {
      error = GitError("prune generation " + std::to_string(generations[i].Number));
      return false;
    }
  }
  return Repack(error);
}

// Writes every object the refs still reach into one new pack and removes the older packs.
bool TGenerationStore::Repack(std::string& error) {
  std::vector<TObjectId> commits;
  for (const TGeneration& generation : Generations()) commits.push_back(generation.Commit);
  if (const std::optional<TObjectId> undo = RefTarget(repo_, kUndoRef)) commits.push_back(*undo);
  std::set<TObjectId> objects(commits.begin(), commits.end());
  for (const TObjectId& id : commits) {
    const git_oid oid = ToGitOid(id);
    GitPtr<git_commit, git_commit_free> commit;
    GitPtr<git_tree, git_tree_free> tree;
    if (git_commit_lookup(&commit.p, repo_, &oid) != 0 || git_commit_tree(&tree.p, commit.p) != 0 ||
        git_tree_walk(tree.p, GIT_TREEWALK_PRE, CollectObject, &objects) != 0) {
      error = GitError("walk generation " + ToHex(id));
      return false;
    }
    objects.insert(FromGitOid(*git_tree_id(tree.p)));
  }
  const std::vector<fs::path> old_packs = PackFiles(folder_);
  if (old_packs.size() <= 2) return true;  // one pack and its index: nothing to gain
  TObjectPack pack(odb_, PackFolder(folder_), TObjectPack::kKeepStored);
  for (const TObjectId& id : objects) {
    const git_oid oid = ToGitOid(id);
    GitPtr<git_odb_object, git_odb_object_free> object;
    if (git_odb_read(&object.p, odb_, &oid) != 0) {
      error = GitError("read " + ToHex(id));
      return false;
    }
    pack.Add(git_odb_object_type(object.p),
             std::string_view(static_cast<const char*>(git_odb_object_data(object.p)), git_odb_object_size(object.p)));
  }
  if (!pack.Write(error)) return false;
  std::error_code io;
  for (const fs::path& file : old_packs) fs::remove(file, io);
  return Reopen(error);
}

}  // namespace tsaw::generations
