#include "planner/report/Pulse.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <ctime>
#include <sys/time.h>
#include <unistd.h>

namespace biwplan {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kBeat{100};
constexpr int kQuietBeats = 10;
constexpr int kWidth = 30;
constexpr int kBlock = 6;
constexpr std::string_view kErase = "\r\x1b[K";

// What the handler of a signal may touch.
std::atomic<int> terminal{-1};
std::atomic<int> quietBeats{0};
std::atomic<int> beats{0};
std::atomic<bool> isDrawn{false};
std::atomic<std::time_t> begin{0};
char what[32];
struct sigaction former;

std::time_t Now() {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec;
}

void Write(std::string_view text) {
  [[maybe_unused]] const ssize_t written = ::write(terminal, text.data(), text.size());
}

void Draw(int beat) {
  char line[sizeof what + kWidth + 40];
  char* at = line;
  const auto add = [&at](std::string_view text) { at = std::copy(text.begin(), text.end(), at); };
  const int turn = beat % (2 * (kWidth - kBlock));
  const int first = std::min(turn, 2 * (kWidth - kBlock) - turn);
  add("\r");
  add(what);
  add(" [");
  for (int i = 0; i < kWidth; ++i) *at++ = i >= first && i < first + kBlock ? '#' : ' ';
  add("] ");
  at = std::to_chars(at, line + sizeof line, static_cast<long>(Now() - begin)).ptr;
  add(" s\x1b[K");
  Write({line, static_cast<std::size_t>(at - line)});
  isDrawn = true;
}

void Beat(int) {
  const int error = errno;
  const int beat = ++beats;
  if (quietBeats > 0) {
    --quietBeats;
  } else {
    Draw(beat);
  }
  errno = error;
}

void SetTimer(milliseconds interval) {
  const timeval pause{0, static_cast<suseconds_t>(interval.count() * 1000)};
  const itimerval timer{pause, pause};
  ::setitimer(ITIMER_REAL, &timer, nullptr);
}

}  // namespace

Pulse::Pulse(int iTerminal, std::string_view iWhat, milliseconds iPatience) {
  terminal = iTerminal;
  if (iTerminal < 0) return;
  what[iWhat.copy(what, sizeof what - 1)] = '\0';
  beats = 0;
  quietBeats = static_cast<int>(iPatience / kBeat);
  begin = Now();
  struct sigaction action {};
  action.sa_handler = Beat;
  action.sa_flags = SA_RESTART;
  ::sigaction(SIGALRM, &action, &former);
  SetTimer(kBeat);
}

Pulse::~Pulse() {
  if (terminal < 0) return;
  SetTimer(milliseconds(0));
  // A last beat may be on its way.
  Hide();
  ::sigaction(SIGALRM, &former, nullptr);
  terminal = -1;
}

void Pulse::Hide() noexcept {
  quietBeats = kQuietBeats;
  if (isDrawn.exchange(false)) Write(kErase);
}

}  // namespace biwplan
