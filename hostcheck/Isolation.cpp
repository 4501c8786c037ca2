#include "hostcheck/Isolation.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace hostcheck {

namespace {

using Clock = std::chrono::steady_clock;

// The last line of work that returned.
constexpr char kReturned[] = "returned";

void WriteLine(int descriptor, const std::string& text) {
  std::string line = text;
  std::replace(line.begin(), line.end(), '\n', ' ');
  line += '\n';
  for (std::size_t done = 0; done < line.size();) {
    const ssize_t written = ::write(descriptor, line.data() + done, line.size() - done);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    done += static_cast<std::size_t>(written);
  }
}

// True when everything was read, false when the time was over before.
bool ReadAll(int descriptor, Clock::time_point end, std::string& text) {
  std::array<char, 4096> buffer;
  for (;;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
    pollfd awaited{descriptor, POLLIN, 0};
    const int ready = ::poll(&awaited, 1, static_cast<int>(std::max<long>(left.count(), 0)));
    if (ready < 0 && errno == EINTR) continue;
    if (ready <= 0) return false;
    const ssize_t size = ::read(descriptor, buffer.data(), buffer.size());
    if (size < 0 && errno == EINTR) continue;
    if (size <= 0) return true;
    text.append(buffer.data(), static_cast<std::size_t>(size));
  }
}

int WaitFor(pid_t child) {
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  return status;
}

std::string HowItEnded(int status) {
  if (WIFSIGNALED(status)) {
    return std::string("the host crashed (") + ::strsignal(WTERMSIG(status)) + ")";
  }
  return "the host ended the process with status " + std::to_string(WEXITSTATUS(status));
}

// Results stand alone on the standard output, and nobody answers a question.
void Redirect() {
  ::dup2(STDERR_FILENO, STDOUT_FILENO);
  const int nothing = ::open("/dev/null", O_RDONLY);
  if (nothing < 0) return;
  ::dup2(nothing, STDIN_FILENO);
  ::close(nothing);
}

}  // namespace

Apart RunApart(const std::function<void(const Say&)>& iWork, double iSecondsAtMost) {
  std::array<int, 2> ends;
  if (::pipe(ends.data()) != 0) return {{}, "no pipe could be made", true};
  std::fflush(nullptr);
  const pid_t child = ::fork();
  if (child < 0) {
    for (const int end : ends) ::close(end);
    return {{}, "no process could be made", true};
  }
  if (child == 0) {
    ::close(ends[0]);
    Redirect();
    iWork([&](const std::string& line) { WriteLine(ends[1], line); });
    std::fflush(nullptr);
    WriteLine(ends[1], kReturned);
    ::_exit(0);
  }
  ::close(ends[1]);
  std::string text;
  const auto allowed = std::chrono::duration<double>(iSecondsAtMost);
  const auto end = Clock::now() + std::chrono::duration_cast<Clock::duration>(allowed);
  const bool inTime = ReadAll(ends[0], end, text);
  if (!inTime) ::kill(child, SIGKILL);
  ::close(ends[0]);
  const int status = WaitFor(child);

  Apart apart;
  apart.inTime = inTime;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) apart.lines.push_back(line);
  if (!apart.lines.empty() && apart.lines.back() == kReturned) {
    apart.lines.pop_back();
  } else {
    apart.fault = inTime ? HowItEnded(status) : "the host did not come to an end in time";
  }
  return apart;
}

}  // namespace hostcheck
