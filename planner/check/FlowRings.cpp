#include "planner/check/FlowRings.h"

#include <algorithm>
#include <unordered_map>

#include "planner/import/Graph.h"

namespace biwplan {

using embedded::Activity;

std::vector<const Activity*> WayBetween(const Activity& iFrom, const Activity& iTo) {
  std::unordered_map<const Activity*, const Activity*> cameFrom{{&iFrom, nullptr}};
  std::vector<const Activity*> open{&iFrom};
  for (std::size_t i = 0; i < open.size() && !cameFrom.contains(&iTo); ++i) {
    for (const Activity* const next : open[i]->Next()) {
      if (cameFrom.emplace(next, open[i]).second) open.push_back(next);
    }
  }
  std::vector<const Activity*> way;
  if (!cameFrom.contains(&iTo)) return way;
  for (const Activity* at = &iTo; at; at = cameFrom.at(at)) way.push_back(at);
  std::reverse(way.begin(), way.end());
  return way;
}

std::vector<FlowRing> RingsOf(const embedded::Document& iDocument, std::size_t iMost) {
  std::unordered_map<const Activity*, std::size_t> numbers;
  for (const auto& activity : iDocument.Activities()) numbers.emplace(&*activity, numbers.size());
  Graph next(numbers.size());
  for (const auto& activity : iDocument.Activities()) {
    for (const Activity* const following : activity->Next()) {
      next[numbers.at(&*activity)].push_back(numbers.at(following));
    }
  }
  std::vector<FlowRing> rings;
  for (const std::vector<std::size_t>& cycle : FindCycles(next, iMost)) {
    FlowRing& ring = rings.emplace_back();
    for (const std::size_t number : cycle) ring.push_back(&*iDocument.Activities()[number]);
  }
  return rings;
}

std::string Describe(const FlowRing& iRing) {
  constexpr std::size_t kMost = 12;
  std::string text;
  for (std::size_t i = 0; i < iRing.size(); ++i) {
    const bool isCut = iRing.size() > kMost && i == kMost - 1;
    if (isCut) i = iRing.size() - 1;
    text += (isCut ? "... -> " : "") + iRing[i]->Key() + " -> ";
  }
  return text + iRing.front()->Key();
}

}  // namespace biwplan
