#include "embedded/storage/LockHolder.h"

#include <chrono>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <optional>
#include <pwd.h>
#include <sstream>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <vector>

namespace embedded {

namespace {

constexpr std::size_t kLongestCommand = 80;
constexpr std::size_t kNameRoom = 4096;
// Times are milliseconds since 1970: no lock on a part of a document reaches as far.
constexpr off_t kEarliestTime = 1'000'000'000'000;

// The number of the process, from the kernel's table of locks; nothing when it is of another
// machine or hidden.
std::optional<long> ProcessOf(const struct stat& file) {
  char place[64];
  std::snprintf(place, sizeof place, "%02x:%02x:%lu", major(file.st_dev), minor(file.st_dev),
                static_cast<unsigned long>(file.st_ino));
  std::ifstream locks("/proc/locks");
  for (std::string line; std::getline(locks, line);) {
    std::istringstream words(line);
    std::string number, kind, advice, mode, where;
    long process = 0;
    words >> number >> kind >> advice >> mode >> process >> where;
    if (words && kind == "FLOCK" && process > 0 && where == place) return process;
  }
  return std::nullopt;
}

std::string CommandOf(long process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/cmdline", std::ios::binary);
  std::string command{std::istreambuf_iterator<char>(file), {}};
  while (!command.empty() && command.back() == '\0') command.pop_back();
  for (char& c : command) c = c == '\0' ? ' ' : c;
  if (command.size() > kLongestCommand) command = command.substr(0, kLongestCommand) + "...";
  return command;
}

std::string UserOf(long process) {
  struct stat status {};
  if (::stat(("/proc/" + std::to_string(process)).c_str(), &status) != 0) return {};
  struct passwd entry {};
  struct passwd* found = nullptr;
  std::vector<char> room(kNameRoom);
  ::getpwuid_r(status.st_uid, &entry, room.data(), room.size(), &found);
  return found ? found->pw_name : std::to_string(status.st_uid);
}

std::string TimeNotedOn(int descriptor) {
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  lock.l_start = kEarliestTime;
  if (::fcntl(descriptor, F_OFD_GETLK, &lock) != 0 || lock.l_type == F_UNLCK) return {};
  if (lock.l_len != 1 || lock.l_start < kEarliestTime) return {};
  const std::time_t seconds = lock.l_start / 1000;
  struct tm parts {};
  char text[32];
  if (!::localtime_r(&seconds, &parts)) return {};
  return {text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &parts)};
}

}  // namespace

void NoteLockTime(int iDescriptor) {
  using namespace std::chrono;
  struct flock lock {};
  lock.l_type = F_RDLCK;
  lock.l_whence = SEEK_SET;
  lock.l_start = duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
  lock.l_len = 1;
  ::fcntl(iDescriptor, F_OFD_SETLK, &lock);
}

std::string DescribeLockHolder(int iDescriptor) {
  struct stat file {};
  std::string holder = "another process";
  const auto process = ::fstat(iDescriptor, &file) == 0 ? ProcessOf(file) : std::nullopt;
  if (process) {
    const std::string command = CommandOf(*process);
    holder = "process " + std::to_string(*process) + " (" +
             (command.empty() ? "" : command + ", ") + "user " + UserOf(*process) + ")";
  }
  const std::string since = TimeNotedOn(iDescriptor);
  return since.empty() ? holder : holder + " since " + since;
}

}  // namespace embedded
