#pragma once

#include <algorithm>
#include <cstdlib>
#include <sys/wait.h>
#include <unistd.h>

#include "planner/report/Json.h"
#include "tests/planner/Typist.h"

namespace tests {

// A plan whose history is looked at.
class HistoryFixture : public ShellFixture {
 protected:
  HistoryFixture() { Begin(); }

  biwplan::Json Steps(const std::string& filters = {}) const {
    return biwplan::Json::parse(Do("history --json " + filters).results).at("steps");
  }
  std::vector<std::string> Commands(const std::string& filters = {}) const {
    std::vector<std::string> commands;
    for (const auto& step : Steps(filters)) commands.push_back(step.at("command"));
    return commands;
  }
  // But for the lists.
  std::vector<std::string> Files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
      if (entry.path().extension() != ".csv") names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  // How often what is random is tried; a campaign multiplies it.
  static int Times(int count) {
    const char* const factor = std::getenv("TUV_CAMPAIGN");
    return factor ? count * std::max(1, std::atoi(factor)) : count;
  }
};

// Runs the action in a process of its own.
template <class Action>
pid_t Apart(const Action& action) {
  const pid_t child = ::fork();
  if (child != 0) return child;
  action();
  ::_exit(0);
}

// Its exit status, or minus the signal that ended it.
inline int EndOf(pid_t child) {
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

}  // namespace tests
