#include "embedded/storage/Circle.h"

#include <algorithm>

namespace embedded {

namespace {

enum class State { New, OnPath, Done };

}  // namespace

std::vector<std::size_t> FindCircle(const std::vector<std::vector<std::size_t>>& iBelow) {
  std::vector<State> states(iBelow.size(), State::New);
  std::vector<std::size_t> next(iBelow.size(), 0);
  std::vector<std::size_t> path;
  for (std::size_t start = 0; start < iBelow.size(); ++start) {
    if (states[start] == State::New) path.push_back(start);
    while (!path.empty()) {
      const std::size_t at = path.back();
      states[at] = State::OnPath;
      if (next[at] == iBelow[at].size()) {
        states[at] = State::Done;
        path.pop_back();
        continue;
      }
      const std::size_t below = iBelow[at][next[at]++];
      if (states[below] == State::OnPath) {
        return {std::find(path.begin(), path.end(), below), path.end()};
      }
      if (states[below] == State::New) path.push_back(below);
    }
  }
  return {};
}

}  // namespace embedded
