#include "planner/report/Progress.h"

#include <algorithm>

#include "host/component/Interruption.h"
#include "planner/report/Printable.h"
#include "planner/report/Pulse.h"

namespace biwplan {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kPatience{400};
constexpr milliseconds kPace{100};
constexpr std::size_t kWidth = 30;

}  // namespace

Progress::Progress(std::ostream* iTerminal, std::string iWhat, std::size_t iTotal)
    : terminal_(iTerminal),
      what_(std::move(iWhat)),
      total_(std::max<std::size_t>(iTotal, 1)),
      nextDraw_(Clock::now() + kPatience) {}

Progress::~Progress() {
  if (isDrawn_) *terminal_ << "\r\x1b[K" << std::flush;
}

void Progress::Advance(std::size_t iSteps) {
  Interruption::Check();
  done_ = std::min(done_ + iSteps, total_);
  if (!terminal_ || (done_ - lastLook_) * 1000 < total_) return;
  lastLook_ = done_;
  if (Clock::now() >= nextDraw_) Draw();
}

void Progress::Draw() {
  Pulse::Hide();
  const std::size_t filled = done_ * kWidth / total_;
  *terminal_ << '\r' << Printable(what_) << " [" << std::string(filled, '#')
             << std::string(kWidth - filled, ' ') << "] " << done_ * 100 / total_ << "%\x1b[K"
             << std::flush;
  isDrawn_ = true;
  nextDraw_ = Clock::now() + kPace;
}

WatchedFile::WatchedFile(const std::string& iPath, Progress& ioProgress) : progress_(ioProgress) {
  open(iPath, std::ios::in | std::ios::binary);
}

WatchedFile::int_type WatchedFile::underflow() {
  const int_type byte = std::filebuf::underflow();
  progress_.Advance(static_cast<std::size_t>(egptr() - gptr()));
  return byte;
}

std::streamsize WatchedFile::xsgetn(char* oBytes, std::streamsize iCount) {
  const std::streamsize count = std::filebuf::xsgetn(oBytes, iCount);
  progress_.Advance(static_cast<std::size_t>(count));
  return count;
}

}  // namespace biwplan
