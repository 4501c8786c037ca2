#include "planner/import/Graph.h"

#include <algorithm>
#include <functional>
#include <queue>

namespace biwplan {

namespace {

enum class Mark : unsigned char { New, OnPath, Done };

// Walks depth first without recursion: lists are as deep as whoever writes them likes.
class CycleSearch {
 public:
  CycleSearch(const Graph& next, std::size_t most)
      : next_(next), most_(most), marks_(next.size()), taken_(next.size()) {}

  std::vector<std::vector<std::size_t>> Run() {
    for (std::size_t node = 0; node < next_.size(); ++node) {
      if (marks_[node] == Mark::New) Walk(node);
    }
    return cycles_;
  }

 private:
  void Walk(std::size_t from) {
    Enter(from);
    while (!path_.empty()) {
      const std::size_t node = path_.back();
      if (taken_[node] == next_[node].size()) {
        marks_[node] = Mark::Done;
        path_.pop_back();
        continue;
      }
      Follow(next_[node][taken_[node]++]);
    }
  }

  void Follow(std::size_t node) {
    if (marks_[node] == Mark::New) {
      Enter(node);
    } else if (marks_[node] == Mark::OnPath) {
      Record(node);
    }
  }

  void Enter(std::size_t node) {
    marks_[node] = Mark::OnPath;
    path_.push_back(node);
  }

  void Record(std::size_t node) {
    if (cycles_.size() == most_) return;
    cycles_.emplace_back(std::find(path_.begin(), path_.end(), node), path_.end());
  }

  const Graph& next_;
  const std::size_t most_;
  std::vector<Mark> marks_;
  std::vector<std::size_t> taken_;
  std::vector<std::size_t> path_;
  std::vector<std::vector<std::size_t>> cycles_;
};

}  // namespace

std::vector<std::vector<std::size_t>> FindCycles(const Graph& iNext, std::size_t iMost) {
  return CycleSearch(iNext, iMost).Run();
}

std::vector<std::size_t> SortNodes(const Graph& iNext) {
  std::vector<std::size_t> awaited(iNext.size());
  for (const auto& followers : iNext) {
    for (const std::size_t node : followers) ++awaited[node];
  }
  std::priority_queue<std::size_t, std::vector<std::size_t>, std::greater<>> ready;
  for (std::size_t node = 0; node < iNext.size(); ++node) {
    if (awaited[node] == 0) ready.push(node);
  }
  std::vector<std::size_t> sorted;
  while (!ready.empty()) {
    const std::size_t node = ready.top();
    ready.pop();
    sorted.push_back(node);
    for (const std::size_t next : iNext[node]) {
      if (--awaited[next] == 0) ready.push(next);
    }
  }
  return sorted;
}

std::vector<std::size_t> Levels(const Graph& iNext) {
  std::vector<std::size_t> levels(iNext.size(), 1);
  for (const std::size_t node : SortNodes(iNext)) {
    for (const std::size_t next : iNext[node]) {
      levels[next] = std::max(levels[next], levels[node] + 1);
    }
  }
  return levels;
}

}  // namespace biwplan
