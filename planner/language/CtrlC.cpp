#include "planner/language/CtrlC.h"

#include <atomic>
#include <csignal>
#include <sys/time.h>
#include <unistd.h>

#include "host/component/Interruption.h"

namespace biwplan {

namespace {

constexpr suseconds_t kPatience = 500'000;
constexpr suseconds_t kPause = 50'000;

std::atomic<bool> isShell = false;

// Everything below runs in signal handlers.

void WakeIn(suseconds_t microseconds) {
  const itimerval timer{{}, {0, microseconds}};
  ::setitimer(ITIMER_REAL, &timer, nullptr);
}

[[noreturn]] void End() {
  constexpr char kMessage[] = "\r\x1b[Kbiwplan: interrupted\n";
  const bool isWatched = ::isatty(STDERR_FILENO) != 0;
  const char* const message = isWatched ? kMessage : kMessage + 4;
  if (::write(STDERR_FILENO, message, sizeof kMessage - 1 - (isWatched ? 0 : 4)) < 0) {
    // Nobody is there to be told.
  }
  ::_exit(kInterruptedStatus);
}

void OnInterrupt(int) {
  const bool isSecond = Interruption::IsRequested();
  Interruption::Request();
  if (isShell) return;
  if (isSecond) End();
  WakeIn(kPatience);
}

void OnAlarm(int) {
  if (!Interruption::IsRequested()) return;
  if (!Interruption::IsDeferred()) End();
  WakeIn(kPause);
}

void Handle(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  ::sigaction(signal, &action, nullptr);
}

}  // namespace

void WatchCtrlC() {
  struct sigaction former {};
  ::sigaction(SIGINT, nullptr, &former);
  if (former.sa_handler == SIG_IGN) return;
  Handle(SIGALRM, OnAlarm);
  Handle(SIGINT, OnInterrupt);
}

void LetShellGoOn() { isShell = true; }

}  // namespace biwplan
