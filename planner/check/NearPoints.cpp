#include "planner/check/NearPoints.h"

#include <algorithm>
#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <iterator>
#include <tuple>
#include <utility>

#include "host/component/Interruption.h"

namespace biwplan {

namespace {

namespace index = boost::geometry::index;
using Point = boost::geometry::model::point<double, 3, boost::geometry::cs::cartesian>;
using Entry = std::pair<Point, std::size_t>;
using Tree = index::rtree<Entry, index::quadratic<16>>;

std::vector<Entry> Entries(const std::vector<std::array<double, 3>>& points) {
  std::vector<Entry> entries;
  entries.reserve(points.size());
  for (const auto& [x, y, z] : points) entries.emplace_back(Point(x, y, z), entries.size());
  return entries;
}

}  // namespace

std::vector<NearPair> FindNearPairs(const std::vector<std::array<double, 3>>& iPoints,
                                    double iLimit, unsigned iMost) {
  const std::vector<Entry> entries = Entries(iPoints);
  const Tree tree(entries);
  std::vector<NearPair> pairs;
  for (const Entry& entry : entries) {
    Interruption::Check();
    // The point itself is among its nearest ones.
    for (auto near = tree.qbegin(index::nearest(entry.first, iMost + 1)); near != tree.qend();
         ++near) {
      const double distance = boost::geometry::distance(entry.first, near->first);
      if (near->second == entry.second || distance >= iLimit) continue;
      const auto [first, second] = std::minmax(entry.second, near->second);
      pairs.push_back({first, second, distance});
    }
  }
  const auto key = [](const NearPair& pair) { return std::tie(pair.first, pair.second); };
  std::sort(pairs.begin(), pairs.end(),
            [&](const NearPair& a, const NearPair& b) { return key(a) < key(b); });
  const auto same = [&](const NearPair& a, const NearPair& b) { return key(a) == key(b); };
  pairs.erase(std::unique(pairs.begin(), pairs.end(), same), pairs.end());
  return pairs;
}

}  // namespace biwplan
