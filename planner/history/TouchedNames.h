#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "planner/history/Delta.h"

namespace biwplan {

// Keys of what a change of a document touched, each once and in order.
struct TouchedNames {
  std::vector<std::string> welds;
  std::vector<std::string> activities;
};

// From the lines that differ, of which a document has one for each object and link.
TouchedNames FindTouched(const std::vector<Hunk>& iHunks, std::string_view iOld,
                         std::string_view iNew);

std::string Pack(const TouchedNames& iNames);
// DamagedHistory for bytes that Pack did not make.
TouchedNames UnpackNames(std::string_view iBytes);

}  // namespace biwplan
