#include "planner/names/Nearest.h"

#include <algorithm>
#include <array>

#include "planner/report/Text.h"

namespace biwplan {

namespace {

constexpr std::size_t kMost = 3;
// Longer names are typed by no one; what they are near to is not worth the time.
constexpr std::size_t kLongest = 64;

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::string Lowered(std::string_view text) {
  std::string lowered(text);
  std::transform(lowered.begin(), lowered.end(), lowered.begin(), Lower);
  return lowered;
}

}  // namespace

std::size_t EditDistance(std::string_view iFirst, std::string_view iSecond, std::size_t iLimit) {
  const std::size_t difference =
      std::max(iFirst.size(), iSecond.size()) - std::min(iFirst.size(), iSecond.size());
  if (difference > iLimit || iFirst.size() > kLongest || iSecond.size() > kLongest) {
    return iLimit + 1;
  }
  using Row = std::array<std::size_t, kLongest + 1>;
  std::array<Row, 3> rows{};
  for (std::size_t j = 0; j <= iSecond.size(); ++j) rows[0][j] = j;
  for (std::size_t i = 1; i <= iFirst.size(); ++i) {
    const Row& above = rows[(i - 1) % 3];
    Row& row = rows[i % 3];
    row[0] = i;
    for (std::size_t j = 1; j <= iSecond.size(); ++j) {
      const char a = Lower(iFirst[i - 1]);
      const char b = Lower(iSecond[j - 1]);
      row[j] = std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + (a == b ? 0 : 1)});
      const bool isSwap = i > 1 && j > 1 && a == Lower(iSecond[j - 2]) && b == Lower(iFirst[i - 2]);
      if (isSwap) row[j] = std::min(row[j], rows[(i + 1) % 3][j - 2] + 1);
    }
  }
  return rows[iFirst.size() % 3][iSecond.size()];
}

NearestNames::NearestNames(std::string_view iWanted)
    : wanted_(iWanted.substr(0, kLongest + 1)), limit_(1 + wanted_.size() / 3) {}

void NearestNames::Offer(std::string_view iName) {
  std::size_t distance = EditDistance(wanted_, iName, limit_);
  const bool isBeginning = !wanted_.empty() && Lowered(iName).starts_with(Lowered(wanted_));
  if (distance > limit_ && isBeginning) distance = limit_;
  if (distance > limit_) return;
  const auto place =
      std::upper_bound(best_.begin(), best_.end(), distance,
                       [](std::size_t wanted, const auto& entry) { return wanted < entry.first; });
  best_.emplace(place, distance, iName);
  if (best_.size() > kMost) best_.pop_back();
}

std::vector<std::string> NearestNames::Best() const {
  std::vector<std::string> names;
  for (const auto& [distance, name] : best_) names.push_back(name);
  return names;
}

std::string NearestNames::Hint() const {
  return best_.empty() ? std::string() : "; nearest: " + Listed(Best());
}

}  // namespace biwplan
