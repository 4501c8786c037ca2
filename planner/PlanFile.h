#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "embedded/storage/FileLock.h"
#include "embedded/storage/Fingerprint.h"

namespace biwplan {

// The file of a plan: being alone on it, and knowing whether it is still the one that was read.
class PlanFile {
 public:
  static constexpr std::chrono::milliseconds kUsualWait{10'000};

  // What the user should know is told in whole sentences; `iTell` may be empty.
  PlanFile(std::filesystem::path iPath, std::function<void(const std::string&)> iTell)
      : path_(std::move(iPath)), tell_(std::move(iTell)) {}

  const std::filesystem::path& Path() const { return path_; }
  // Symbolic links are followed.
  bool Exists() const;
  // The path is this file's, whatever its links.
  bool IsAt(const std::filesystem::path& iPath) const;

  // How long another writer is waited for.
  void WaitFor(std::chrono::milliseconds iTime) { wait_ = iTime; }
  // Alone on the file until Release; where none is, a file that appears meanwhile is respected.
  // InputError tells who has it.
  void Lock();
  void Release() { lock_.Release(); }

  // Is alone while it lives, and afterwards if it was before.
  class Alone {
   public:
    explicit Alone(PlanFile& ioFile) : file_(ioFile.IsLocked() ? nullptr : &ioFile) {
      if (file_) file_->Lock();
    }
    ~Alone() {
      if (file_) file_->Release();
    }
    Alone(const Alone&) = delete;
    Alone& operator=(const Alone&) = delete;

   private:
    PlanFile* file_;
  };

  // The text in it. InputError when it is missing or cannot be read.
  std::string Read();
  // The file is not what was read or written last, or it is not there any more.
  bool IsAnother() const;
  // What stands there now may be replaced.
  void AcceptAsItIs();
  // A file that is not yet there is to be made.
  void ExpectNone() { known_.reset(); }

  // InputError when another one has changed or made the file meanwhile.
  void RequireKnown() const;
  // All of the text or nothing. Over changes of others only where that is wanted; else
  // InputError.
  void Write(std::string_view iText, bool iOverwrites);

 private:
  bool IsLocked() const { return lock_.Now() == embedded::FileLock::State::Held; }

  std::filesystem::path path_;
  std::function<void(const std::string&)> tell_;
  std::chrono::milliseconds wait_ = kUsualWait;
  embedded::FileLock lock_;
  // Of what was read or written last; nothing before there was a file.
  std::optional<embedded::Fingerprint> known_;
  bool hasToldUnable_ = false;
};

}  // namespace biwplan
