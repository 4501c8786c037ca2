#include "planner/import/WeldTypes.h"

#include <algorithm>
#include <array>
#include <string>

#include "planner/import/RowFault.h"
#include "planner/import/Values.h"

namespace biwplan {

namespace {

struct Word {
  std::string_view folded;
  WeldType type;
};

constexpr WeldType kSpot{"spot", WeldShape::Point};
constexpr WeldType kSeam{"seam", WeldShape::Curve};

constexpr std::array<Word, 15> kWords = {{
    {"spot", kSpot},
    {"point", kSpot},
    {"rsw", kSpot},
    {"endo", {"endo", WeldShape::Point}},
    {"projection", {"projection", WeldShape::Point}},
    {"stud", {"stud", WeldShape::Point}},
    {"rivet", {"rivet", WeldShape::Point}},
    {"clinch", {"clinch", WeldShape::Point}},
    {"bolt", {"bolt", WeldShape::Point}},
    {"seam", kSeam},
    {"curve", kSeam},
    {"laser", {"laser", WeldShape::Curve}},
    {"arc", {"arc", WeldShape::Curve}},
    {"adhesive", {"adhesive", WeldShape::Curve}},
    {"hem", {"hem", WeldShape::Curve}},
}};

std::string WithoutEnding(std::string word, std::string_view ending) {
  if (word.size() > ending.size() && word.ends_with(ending)) {
    word.resize(word.size() - ending.size());
  }
  return word;
}

[[noreturn]] void RefuseType(std::string_view text) {
  std::string known;
  for (const Word& word : kWords) known += (known.empty() ? "" : ", ") + std::string(word.folded);
  throw RowError(FaultKind::UnknownWord,
                 "the type " + Quoted(text) + " is not known; it must be one of " + known);
}

}  // namespace

const WeldType& FindWeldType(std::string_view iText) {
  if (iText.empty()) return kSpot;
  const std::string folded = WithoutEnding(WithoutEnding(Folded(iText), "welding"), "weld");
  const auto found = std::find_if(kWords.begin(), kWords.end(),
                                  [&](const Word& word) { return word.folded == folded; });
  if (found == kWords.end()) RefuseType(iText);
  return found->type;
}

}  // namespace biwplan
