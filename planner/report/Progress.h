#pragma once

#include <chrono>
#include <cstddef>
#include <fstream>
#include <ostream>
#include <string>

namespace biwplan {

// A bar for work that takes its time, drawn while somebody watches and gone at the end. Short work
// shows none.
class Progress {
 public:
  using Clock = std::chrono::steady_clock;

  // Draws nothing on a null stream.
  Progress(std::ostream* iTerminal, std::string iWhat, std::size_t iTotal);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  // Raises Interrupted when the user wishes it.
  void Advance(std::size_t iSteps = 1);

 private:
  void Draw();

  std::ostream* terminal_;
  std::string what_;
  std::size_t total_;
  std::size_t done_ = 0;
  std::size_t lastLook_ = 0;
  Clock::time_point nextDraw_;
  bool isDrawn_ = false;
};

// A file whose reading is watched.
class WatchedFile : public std::filebuf {
 public:
  WatchedFile(const std::string& iPath, Progress& ioProgress);

 protected:
  int_type underflow() override;
  std::streamsize xsgetn(char* oBytes, std::streamsize iCount) override;

 private:
  Progress& progress_;
};

}  // namespace biwplan
