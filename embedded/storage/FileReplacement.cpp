#include "embedded/storage/FileReplacement.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <new>
#include <optional>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "embedded/Error.h"
#include "embedded/storage/Descriptor.h"
#include "embedded/storage/Draft.h"
#include "embedded/storage/FileCalls.h"
#include "embedded/storage/FileFailure.h"
#include "embedded/storage/FileRights.h"
#include "embedded/storage/JsonLimits.h"

namespace embedded {

namespace fs = std::filesystem;

namespace {

constexpr int kMostLinks = 40;
constexpr mode_t kPrivate = 0600;
constexpr mode_t kForAll = 0666;

// What stands at the path, nothing when it is free.
std::optional<struct stat> Former(const fs::path& file) {
  struct stat former {};
  if (FileCalls::Current().Status(file.c_str(), &former) != 0) {
    if (errno != ENOENT) FailToSave(file);
    return std::nullopt;
  }
  if (!S_ISREG(former.st_mode)) {
    throw InputError(file.string() +
                     ": no document can be saved here; the name must be free or "
                     "that of an ordinary file");
  }
  if (::access(file.c_str(), W_OK) != 0) {
    FailOnFile(file, "is protected against changes", "permit writing it or choose another name");
  }
  return former;
}

// "FILE: its owner (1000) could not be kept, its mode could not be kept"
std::string Sentence(const fs::path& file, const std::vector<std::string>& clauses) {
  std::string sentence;
  for (const std::string& clause : clauses) sentence += (sentence.empty() ? "" : ", ") + clause;
  return file.string() + ": " + sentence;
}

bool IsFlushed(const fs::path& file) {
  try {
    return FlushFolderOf(file);
  } catch (const std::bad_alloc&) {
    return false;
  }
}

}  // namespace

std::string ReadWholeFile(const fs::path& iFile, std::size_t iMaxBytes) {
  const auto fail = [&] {
    FailOnFile(iFile, "cannot be read", "it must be a file that can be read");
  };
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
    const ssize_t read = Retried([&] {
      return FileCalls::Current().Read(file.Number(), bytes.data() + size, bytes.size() - size);
    });
    if (read < 0) fail();
    size += static_cast<std::size_t>(read);
    if (size > iMaxBytes) {
      throw InputError(iFile.string() + ": the file has more than " +
                       JsonLimits{.bytes = iMaxBytes}.BytesInWords() + "; split the document");
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

std::vector<std::string> ReplaceFile(const fs::path& iFile, std::string_view iBytes,
                                     const Replacement& iHow) {
  const fs::path target = FollowLinks(iFile);
  const auto former = Former(target);
  std::vector<std::string> remarks;
  Draft draft(target, former ? kPrivate : kForAll);
  draft.Write(iBytes);
  if (former) {
    const auto missed = KeepRights(draft.File(), target, *former);
    if (!missed.empty()) remarks.push_back(Sentence(iFile, missed));
  }
  if (iHow.approve) iHow.approve();
  // Ready before, as nothing may fail once the file is in place.
  remarks.push_back(iFile.string() +
                    ": the new file is in place, but its folder cannot be synchronised: it may "
                    "not survive a loss of power");
  draft.Place(iHow.onlyIfFree);
  if (iHow.lock && draft.IsLocked()) iHow.lock->GoOnWith(std::move(draft.File()));
  if (IsFlushed(target)) remarks.pop_back();
  return remarks;
}

}  // namespace embedded
