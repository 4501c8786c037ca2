#pragma once

#include <fcntl.h>
#include <filesystem>
#include <sys/types.h>
#include <unistd.h>
#include <utility>

#include "embedded/storage/FileCalls.h"

namespace embedded {

// An open file or folder, closed at the end. Programs that are started do not inherit it.
class Descriptor {
 public:
  Descriptor() = default;
  // Check IsOpen; errno tells why it is not.
  Descriptor(const std::filesystem::path& iPath, int iFlags, mode_t iMode = 0)
      : number_(Retried(
            [&] { return FileCalls::Current().Open(iPath.c_str(), iFlags | O_CLOEXEC, iMode); })) {}
  ~Descriptor() { Close(); }
  Descriptor(Descriptor&& iOther) noexcept : number_(std::exchange(iOther.number_, -1)) {}
  Descriptor& operator=(Descriptor&& iOther) noexcept {
    if (this == &iOther) return *this;
    Close();
    number_ = std::exchange(iOther.number_, -1);
    return *this;
  }

  bool IsOpen() const { return number_ >= 0; }
  int Number() const { return number_; }

 private:
  void Close() {
    if (number_ >= 0) ::close(number_);
    number_ = -1;
  }

  int number_ = -1;
};

}  // namespace embedded
