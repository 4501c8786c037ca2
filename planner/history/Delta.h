#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace biwplan {

// A place where two texts differ, in bytes from 0; whole lines of both.
struct Hunk {
  std::size_t oldBegin;
  std::size_t oldEnd;
  std::size_t newBegin;
  std::size_t newEnd;
};

// In their order. What lies between hunks is the same in both texts.
std::vector<Hunk> Compare(std::string_view iOld, std::string_view iNew);

// The difference of two texts, small and for both directions.
std::string PackDelta(const std::vector<Hunk>& iHunks, std::string_view iOld,
                      std::string_view iNew);
enum class Direction { Forward, Back };
// The other text. DamagedHistory when the delta does not fit the text; whether it gave the right
// text is for the caller to compare.
std::string ApplyDelta(std::string_view iDelta, std::string_view iText, Direction iDirection);

}  // namespace biwplan
