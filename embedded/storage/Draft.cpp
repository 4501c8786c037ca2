#include "embedded/storage/Draft.h"

#include <cerrno>
#include <charconv>
#include <climits>
#include <csignal>
#include <cstdio>
#include <dirent.h>
#include <memory>
#include <optional>
#include <string>
#include <sys/file.h>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "embedded/Error.h"
#include "embedded/storage/FileFailure.h"
#include "embedded/storage/FileLock.h"

namespace embedded {

namespace fs = std::filesystem;

namespace {

constexpr int kMostAttempts = 100;
constexpr std::string_view kEnding = ".new";
constexpr std::string_view kDatabaseBegin = "SQLite format 3";

// The process that a draft's name tells; nothing for a file that is no draft.
std::optional<pid_t> ProcessOf(std::string_view name) {
  if (!name.ends_with(kEnding)) return std::nullopt;
  name.remove_suffix(kEnding.size());
  const std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos || dot == 0) return std::nullopt;
  pid_t process = 0;
  const char* const end = name.data() + name.size();
  const auto [stop, error] = std::from_chars(name.data() + dot + 1, end, process);
  if (error != std::errc() || stop != end || process <= 0) return std::nullopt;
  return process;
}

bool IsAlive(pid_t process) { return ::kill(process, 0) == 0 || errno != ESRCH; }

// Locked as drafts are, or as a database that is being filled.
bool IsInUse(const Descriptor& file) {
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  const bool isLocked = ::fcntl(file.Number(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
  return isLocked ||
         (FileCalls::Current().Lock(file.Number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK);
}

bool IsDatabase(const Descriptor& file) {
  char begin[kDatabaseBegin.size()];
  const ssize_t read = ::pread(file.Number(), begin, sizeof begin, 0);
  return std::string_view(begin, read < 0 ? 0 : static_cast<std::size_t>(read)) == kDatabaseBegin;
}

// A name that is not hidden may be one that a user chose, unless there is a database behind it.
bool IsLeftOver(const fs::path& path) {
  const Descriptor file(path, O_RDWR | O_NONBLOCK | O_NOFOLLOW);
  struct stat status {};
  if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return false;
  }
  const bool isHidden = path.filename().string().starts_with('.');
  return (isHidden || IsDatabase(file)) && !IsInUse(file);
}

// With what SQLite may have put beside it; without memory, which may be why the draft ends.
void RemoveDraft(const fs::path& path) {
  FileCalls::Current().Remove(path.c_str());
  char journal[PATH_MAX];
  const int length = std::snprintf(journal, sizeof journal, "%s-journal", path.c_str());
  if (length < PATH_MAX) ::unlink(journal);
}

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

// Drafts whose processes were killed. Those of processes on other machines are locked.
void Sweep(const fs::path& folder) {
  std::vector<fs::path> leftOver;
  // The iterator of the standard library ends the process where memory ends.
  const std::unique_ptr<DIR, CloseFolder> entries(::opendir(folder.empty() ? "." : folder.c_str()));
  while (const dirent* const entry = entries ? ::readdir(entries.get()) : nullptr) {
    const auto process = ProcessOf(entry->d_name);
    if (!process || IsAlive(*process) || !IsLeftOver(folder / entry->d_name)) continue;
    leftOver.push_back(folder / entry->d_name);
  }
  for (const fs::path& path : leftOver) RemoveDraft(path);
}

fs::path NameOfDraft(const fs::path& file, int attempt) {
  std::string name = "." + file.filename().string();
  if (attempt > 0) name += "." + std::to_string(attempt);
  return file.parent_path() / (name + "." + std::to_string(::getpid()) + std::string(kEnding));
}

}  // namespace

Draft::Draft(const fs::path& iFile, std::optional<mode_t> iMode) : file_(iFile) {
  Sweep(file_.parent_path());
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    path_ = NameOfDraft(file_, attempt);
    if (Begin(iMode)) return;
    if (errno != EEXIST) break;
    // A former process of this number may have left it.
    if (IsLeftOver(path_)) RemoveDraft(path_);
    if (Begin(iMode)) return;
  }
  FailToSave(file_);
}

bool Draft::Begin(std::optional<mode_t> mode) {
  if (!mode) {
    struct stat status {};
    const bool isFree = ::lstat(path_.c_str(), &status) != 0 && errno == ENOENT;
    if (!isFree) errno = EEXIST;
    return isFree;
  }
  // Also for reading: the lock on what is replaced may go over to it.
  descriptor_ = Descriptor(path_, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, *mode);
  isLocked_ = descriptor_.IsOpen() && FileLock::Prepare(descriptor_);
  return descriptor_.IsOpen();
}

Draft::~Draft() {
  if (!isPlaced_) RemoveDraft(path_);
}

void Draft::Write(std::string_view iBytes) {
  FileCalls& calls = FileCalls::Current();
  while (!iBytes.empty()) {
    const ssize_t written =
        Retried([&] { return calls.Write(descriptor_.Number(), iBytes.data(), iBytes.size()); });
    if (written == 0) errno = EIO;
    if (written <= 0) FailToSave(file_);
    iBytes.remove_prefix(static_cast<std::size_t>(written));
  }
  if (Retried([&] { return calls.Flush(descriptor_.Number()); }) != 0) FailToSave(file_);
}

// Not every file system can move so, and some have no second names for files either.
bool Draft::MoveIfFree() const {
  FileCalls& calls = FileCalls::Current();
  if (calls.RenameIfFree(path_.c_str(), file_.c_str()) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  if (calls.Link(path_.c_str(), file_.c_str()) == 0) {
    calls.Remove(path_.c_str());
    return true;
  }
  struct stat status {};
  if (errno == EEXIST || calls.Status(file_.c_str(), &status) == 0) {
    errno = EEXIST;
    return false;
  }
  return calls.Rename(path_.c_str(), file_.c_str()) == 0;
}

void Draft::Place(bool iOnlyIfFree) {
  const bool isPlaced =
      iOnlyIfFree ? MoveIfFree() : FileCalls::Current().Rename(path_.c_str(), file_.c_str()) == 0;
  if (!isPlaced && errno == EEXIST) {
    throw InputError(file_.string() +
                     ": the file appeared meanwhile and is left as it is; choose another name or "
                     "replace it by intent");
  }
  if (!isPlaced) FailToSave(file_);
  isPlaced_ = true;
}

bool FlushFolderOf(const fs::path& iFile) {
  const fs::path folder = iFile.parent_path().empty() ? "." : iFile.parent_path();
  const Descriptor descriptor(folder, O_RDONLY | O_DIRECTORY);
  return descriptor.IsOpen() &&
         Retried([&] { return FileCalls::Current().Flush(descriptor.Number()); }) == 0;
}

}  // namespace embedded
