#include "planner/history/Worker.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <iterator>
#include <pwd.h>
#include <unistd.h>

namespace biwplan {

namespace {

std::string HostName() {
  std::array<char, 256> name{};
  return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

std::string FirstWord(const std::string& file) {
  std::ifstream stream(file);
  std::string word;
  stream >> word;
  return word;
}

// The start of the system and of the process in it; empty when there is no such process.
std::string StartOf(std::int64_t process) {
  std::ifstream stream("/proc/" + std::to_string(process) + "/stat");
  std::string line;
  std::getline(stream, line, '\0');
  // The program's name, in brackets, may hold anything; field 22 is the 20th behind it.
  std::size_t at = line.rfind(')');
  const bool hasEnded = at != std::string::npos && line.compare(at, 3, ") Z") == 0;
  if (hasEnded) return {};
  for (int field = 2; field < 22 && at != std::string::npos; ++field) at = line.find(' ', at + 1);
  if (at == std::string::npos) return {};
  const std::size_t end = line.find(' ', at + 1);
  return FirstWord("/proc/sys/kernel/random/boot_id") + line.substr(at, end - at);
}

}  // namespace

std::string UserName(unsigned int iUser) {
  std::array<char, 16384> room{};
  passwd entry{};
  passwd* found = nullptr;
  const bool isKnown = ::getpwuid_r(iUser, &entry, room.data(), room.size(), &found) == 0;
  return isKnown && found ? found->pw_name : std::to_string(iUser);
}

Worker ThisWorker() { return {UserName(::geteuid()), HostName(), ::getpid(), StartOf(::getpid())}; }

bool IsAlive(const Worker& iWorker) {
  return iWorker.host != HostName() || StartOf(iWorker.process) == iWorker.since;
}

std::int64_t Now() {
  const auto time = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
}

std::string TimeInWords(std::int64_t iMilliseconds) {
  const std::time_t seconds = iMilliseconds / 1000;
  std::tm time{};
  ::gmtime_r(&seconds, &time);
  std::array<char, 64> text{};
  const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &time);
  std::snprintf(text.data() + length, text.size() - length, ".%03d",
                static_cast<int>(iMilliseconds % 1000));
  return text.data();
}

}  // namespace biwplan
