#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "planner/history/HistoryFile.h"
#include "planner/history/Step.h"

namespace biwplan {

// The steps of a plan in one row, as one who works on it sees them: the saved ones, up to where
// the own ones begin, and then those.
struct Line {
  // Null when there are no saved steps.
  HistoryFile* saved = nullptr;
  // The last saved step that belongs to it.
  std::int64_t branch = kLastStep;
  std::vector<Step> own;

  // The last step that is not above the number, and the first that is.
  std::optional<Step> Last(std::int64_t iNumber) const;
  std::optional<Step> Next(std::int64_t iNumber) const;
};

// The plan on the other side of a step. InputError when the text is not that on this side,
// DamagedHistory when the step does not lead to the other.
std::string Undone(const Step& iStep, const std::string& iText);
std::string Redone(const Step& iStep, const std::string& iText);

// A step between two texts, with neither number nor author.
Step StepBetween(const std::string& iBefore, const std::string& iAfter);

}  // namespace biwplan
