#include "embedded/storage/FileLock.h"

#include <cerrno>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <utility>

#include "embedded/storage/FileCalls.h"
#include "embedded/storage/LockHolder.h"
#include "host/component/Interruption.h"

namespace embedded {

namespace {

constexpr std::chrono::milliseconds kPause{2};
// A file that is always replaced before it can be locked stands on a system that names it anew.
constexpr int kMostAttempts = 1000;

// Locks over a network want a file that can be written.
Descriptor Open(const std::filesystem::path& file) {
  Descriptor descriptor(file, O_RDWR | O_NONBLOCK);
  return descriptor.IsOpen() ? std::move(descriptor) : Descriptor(file, O_RDONLY | O_NONBLOCK);
}

bool IsOrdinary(const Descriptor& file) {
  struct stat status {};
  return ::fstat(file.Number(), &status) == 0 && S_ISREG(status.st_mode);
}

// Saving replaces files: who has waited may have the former one in hand.
bool IsStillAt(const std::filesystem::path& path, const Descriptor& file) {
  struct stat there {};
  struct stat here {};
  return FileCalls::Current().Status(path.c_str(), &there) == 0 &&
         ::fstat(file.Number(), &here) == 0 && there.st_dev == here.st_dev &&
         there.st_ino == here.st_ino;
}

int Lock(const Descriptor& file) {
  const auto lock = [&] { return FileCalls::Current().Lock(file.Number(), LOCK_EX | LOCK_NB); };
  return Retried(lock) == 0 ? 0 : errno;
}

}  // namespace

FileLock::State FileLock::Become(State state, Descriptor file) {
  file_ = std::move(file);
  return state_ = state;
}

FileLock::State FileLock::Try(const std::filesystem::path& file) {
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    Descriptor descriptor = Open(file);
    if (!descriptor.IsOpen() || !IsOrdinary(descriptor)) return Become(State::NoFile);
    const int error = Lock(descriptor);
    if (error == EWOULDBLOCK) return Become(State::Busy, std::move(descriptor));
    if (error != 0) return Become(State::Unable);
    if (!IsStillAt(file, descriptor)) continue;
    NoteLockTime(descriptor.Number());
    return Become(State::Held, std::move(descriptor));
  }
  return Become(State::Unable);
}

FileLock::State FileLock::Take(const std::filesystem::path& iFile,
                               std::chrono::milliseconds iWait) {
  const auto end = std::chrono::steady_clock::now() + iWait;
  while (Try(iFile) == State::Busy && std::chrono::steady_clock::now() < end) {
    Interruption::Check();
    std::this_thread::sleep_for(kPause);
  }
  if (state_ == State::Busy) {
    holder_ = DescribeLockHolder(file_.Number());
    file_ = {};
  }
  return state_;
}

void FileLock::Release() { Become(State::Free); }

bool FileLock::Prepare(const Descriptor& iFile) {
  if (Lock(iFile) != 0) return false;
  NoteLockTime(iFile.Number());
  return true;
}

void FileLock::GoOnWith(Descriptor iFile) { Become(State::Held, std::move(iFile)); }

}  // namespace embedded
