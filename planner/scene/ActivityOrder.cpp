#include "planner/scene/ActivityOrder.h"

#include <cstddef>
#include <unordered_map>

#include "planner/import/Graph.h"

namespace biwplan {

namespace {

using embedded::Activity;
using Activities = std::vector<Activity*>;

Graph FlowsAmong(const Activities& activities) {
  std::unordered_map<const Activity*, std::size_t> numbers;
  for (const Activity* const activity : activities) numbers.emplace(activity, numbers.size());
  Graph next(activities.size());
  for (const Activity* const activity : activities) {
    for (const Activity* const following : activity->Next()) {
      const auto to = numbers.find(following);
      if (to != numbers.end()) next[numbers[activity]].push_back(to->second);
    }
  }
  return next;
}

Activities Sorted(const Activities& activities) {
  const Graph next = FlowsAmong(activities);
  if (!FindCycles(next, 1).empty()) return activities;
  Activities sorted;
  for (const std::size_t number : SortNodes(next)) sorted.push_back(activities[number]);
  return sorted;
}

}  // namespace

std::vector<const Activity*> InProcessOrder(const embedded::Document& iDocument) {
  std::vector<const Activity*> found;
  std::vector<const Activity*> open;
  if (iDocument.Root()) open.push_back(iDocument.Root());
  while (!open.empty()) {
    const Activity* const activity = open.back();
    open.pop_back();
    found.push_back(activity);
    const Activities children = Sorted({activity->Children().begin(), activity->Children().end()});
    open.insert(open.end(), children.rbegin(), children.rend());
  }
  return found;
}

}  // namespace biwplan
