#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace biwplan {

// Finds what the user may have meant by a name that is not there.
class NearestNames {
 public:
  explicit NearestNames(std::string_view iWanted);

  void Offer(std::string_view iName);
  // At most three of the names offered, the nearest first.
  std::vector<std::string> Best() const;
  // "; nearest: OP10, OP11, OP12", or nothing.
  std::string Hint() const;

 private:
  std::string wanted_;
  std::size_t limit_;
  std::vector<std::pair<std::size_t, std::string>> best_;
};

// Characters to insert, drop, change or swap between two texts, upper and lower case alike; any
// distance above the limit may be answered as the limit plus 1.
std::size_t EditDistance(std::string_view iFirst, std::string_view iSecond, std::size_t iLimit);

}  // namespace biwplan
