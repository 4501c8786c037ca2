#include "embedded/storage/FileReplacement.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <random>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "embedded/Error.h"
#include "embedded/storage/Descriptor.h"

namespace embedded {

namespace fs = std::filesystem;

namespace {

constexpr int kMostLinks = 40;
constexpr int kMostAttempts = 100;
constexpr mode_t kPermissions = 07777;

[[noreturn]] void Fail(const fs::path& file, const char* what, const std::string& remedy) {
  const std::string reason = std::error_code(errno, std::generic_category()).message();
  throw InputError(file.string() + ": the file " + what + " (" + reason + "); " + remedy);
}

[[noreturn]] void FailToSave(const fs::path& file) {
  Fail(file, "cannot be saved", "it must lie in a folder that can be written, on a disk with room");
}

[[noreturn]] void FailAsItAppeared(const fs::path& file) {
  throw InputError(file.string() +
                   ": the file appeared meanwhile and is left as it is; choose another name or "
                   "replace it by intent");
}

// False with errno set when a byte cannot be written.
bool WriteAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) return false;
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

bool Flush(int descriptor) {
  int result = 0;
  do {
    result = ::fsync(descriptor);
  } while (result != 0 && errno == EINTR);
  return result == 0;
}

// A new file beside another, which it replaces or leaves behind nothing.
class Draft {
 public:
  Draft(const fs::path& file, mode_t mode) : file_(file) {
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
      path_ = NewName();
      // Also for reading: a lock may carry over to it.
      descriptor_ = Descriptor(path_, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, mode);
      if (descriptor_.IsOpen()) return;
      if (errno != EEXIST) break;
    }
    FailToSave(file_);
  }
  ~Draft() {
    if (!isPlaced_ && descriptor_.IsOpen()) ::unlink(path_.c_str());
  }
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;

  // The owner stays when that is permitted; if not, the file belongs to whoever saves it.
  void TakeOver(const struct stat& former) {
    if (::fchown(descriptor_.Number(), former.st_uid, former.st_gid) != 0) errno = 0;
    if (::fchmod(descriptor_.Number(), former.st_mode & kPermissions) != 0) FailToSave(file_);
  }
  void Write(std::string_view bytes) {
    if (!WriteAll(descriptor_.Number(), bytes) || !Flush(descriptor_.Number())) {
      FailToSave(file_);
    }
  }
  void Place(bool onlyIfFree) {
    if (onlyIfFree ? !MoveIfFree() : ::rename(path_.c_str(), file_.c_str()) != 0) {
      if (errno == EEXIST) FailAsItAppeared(file_);
      FailToSave(file_);
    }
    isPlaced_ = true;
  }
  Descriptor& File() { return descriptor_; }

 private:
  // Not every file system can move so, and some have no second names for files either.
  bool MoveIfFree() const {
    if (::renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, file_.c_str(), RENAME_NOREPLACE) == 0) {
      return true;
    }
    if (errno != EINVAL && errno != ENOSYS) return false;
    if (::link(path_.c_str(), file_.c_str()) == 0) return ::unlink(path_.c_str()) == 0;
    if (errno == EEXIST || ::access(file_.c_str(), F_OK) == 0) {
      errno = EEXIST;
      return false;
    }
    return ::rename(path_.c_str(), file_.c_str()) == 0;
  }
  fs::path NewName() const {
    static constexpr char kLetters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    static std::random_device random;
    std::uniform_int_distribution<std::size_t> letter(0, sizeof kLetters - 2);
    std::string name(1, '.');
    name += file_.filename().string();
    name += '.';
    for (int i = 0; i < 8; ++i) name += kLetters[letter(random)];
    return file_.parent_path() / name;
  }

  fs::path file_;
  fs::path path_;
  Descriptor descriptor_;
  bool isPlaced_ = false;
};

// What stands at the path, nothing when it is free.
std::optional<struct stat> Former(const fs::path& file) {
  struct stat former {};
  if (::stat(file.c_str(), &former) != 0) {
    if (errno != ENOENT) FailToSave(file);
    return std::nullopt;
  }
  if (!S_ISREG(former.st_mode)) {
    throw InputError(file.string() +
                     ": no document can be saved here; the name must be free or "
                     "that of an ordinary file");
  }
  if (::access(file.c_str(), W_OK) != 0) {
    Fail(file, "is protected against changes", "permit writing it or choose another name");
  }
  return former;
}

void FlushFolder(const fs::path& file) {
  const Descriptor folder(file.parent_path().empty() ? "." : file.parent_path(),
                          O_RDONLY | O_DIRECTORY);
  // Some file systems cannot flush folders and say so.
  if (!folder.IsOpen() || (!Flush(folder.Number()) && errno != EINVAL)) FailToSave(file);
}

}  // namespace

std::string ReadWholeFile(const fs::path& iFile, std::size_t iMaxBytes) {
  const auto fail = [&] { Fail(iFile, "cannot be read", "it must be a file that can be read"); };
  // Not blocking: a pipe would be waited for.
  const Descriptor file(iFile, O_RDONLY | O_NONBLOCK);
  struct stat status {};
  if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0) fail();
  if (!S_ISREG(status.st_mode)) {
    throw InputError(iFile.string() + ": this is no ordinary file; name a document file");
  }
  std::string bytes;
  for (std::size_t size = 0, room = static_cast<std::size_t>(status.st_size) + 1;;
       room = size + 1) {
    bytes.resize(std::min(size + room, iMaxBytes + 1));
    const ssize_t read = ::read(file.Number(), bytes.data() + size, bytes.size() - size);
    if (read < 0 && errno == EINTR) continue;
    if (read < 0) fail();
    size += static_cast<std::size_t>(read);
    if (size > iMaxBytes) {
      throw InputError(iFile.string() + ": the file has more than " +
                       std::to_string(iMaxBytes >> 20) + " MiB; split the document");
    }
    bytes.resize(size);
    if (read == 0) return bytes;
  }
}

fs::path FollowLinks(const fs::path& iFile) {
  fs::path file = iFile;
  std::error_code error;
  for (int links = 0; fs::is_symlink(file, error); ++links) {
    const fs::path target = fs::read_symlink(file, error);
    if (error || links == kMostLinks) {
      errno = ELOOP;
      FailToSave(iFile);
    }
    file = file.parent_path() / target;
  }
  return file;
}

void ReplaceFile(const fs::path& iFile, std::string_view iBytes, const Replacement& iHow) {
  const fs::path target = FollowLinks(iFile);
  const auto former = Former(target);
  Draft draft(target, former ? former->st_mode & 0777 : 0666);
  if (former) draft.TakeOver(*former);
  draft.Write(iBytes);
  const bool isLocked = iHow.lock && FileLock::Prepare(draft.File());
  if (iHow.approve) iHow.approve();
  draft.Place(iHow.onlyIfFree);
  if (isLocked) iHow.lock->GoOnWith(std::move(draft.File()));
  FlushFolder(target);
}

}  // namespace embedded
