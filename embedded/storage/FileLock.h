#pragma once

#include <chrono>
#include <filesystem>
#include <string>

#include "embedded/storage/Descriptor.h"

namespace embedded {

// Being alone on a file among all who ask for it in this way. The kernel keeps the lock: it ends
// with the process, however that ends, and leaves nothing in the folder.
class FileLock {
 public:
  enum class State {
    Free,    // not taken
    Held,    // alone
    Busy,    // another one has it, see Holder
    NoFile,  // nothing is there that could be locked
    Unable   // the file system cannot lock
  };

  // Waits up to `iWait` for others. The path leads to the file itself, not to a symbolic link.
  State Take(const std::filesystem::path& iFile, std::chrono::milliseconds iWait);
  void Release();
  State Now() const { return state_; }

  // Who has the file since when, after Busy: "process 4711 (biwplan door.json, user anna) since
  // 2026-11-24 10:32:05", or as much as can be known.
  const std::string& Holder() const { return holder_; }

  // Locks a file that nobody else knows yet, to replace the one that is held; false when that
  // cannot be.
  static bool Prepare(const Descriptor& iFile);
  // Is alone on a prepared file from now on, in place of the former.
  void GoOnWith(Descriptor iFile);

 private:
  State Try(const std::filesystem::path& file);
  State Become(State state, Descriptor file = {});

  Descriptor file_;
  State state_ = State::Free;
  std::string holder_;
};

}  // namespace embedded
