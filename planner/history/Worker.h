#pragma once

#include <cstdint>
#include <string>

namespace biwplan {

// The process that works on a plan, told apart from every other one on any computer.
struct Worker {
  std::string user;
  std::string host;
  std::int64_t process = 0;
  // Since when the process runs, in words of the system.
  std::string since;
};

Worker ThisWorker();
// The number in digits, when the system knows no name for it.
std::string UserName(unsigned int iUser);
// False when its process has ended. One on another computer is taken to live.
bool IsAlive(const Worker& iWorker);

// Milliseconds since 1970, UTC.
std::int64_t Now();
// "2026-03-31 08:15:00.250", UTC.
std::string TimeInWords(std::int64_t iMilliseconds);

}  // namespace biwplan
