#include "planner/import/WeldTypes.h"

#include <algorithm>
#include <array>

#include "planner/import/Values.h"

namespace biwplan {

namespace {

struct Word {
  std::string_view folded;
  std::string_view type;
  WeldShape shape;
};

// Where no word fits as a whole, the first one that is part of the text counts.
constexpr std::array<Word, 28> kWords = {{
    {"spot", "spot", WeldShape::Point},         {"seam", "seam", WeldShape::Curve},
    {"rsw", "spot", WeldShape::Point},          {"point", "spot", WeldShape::Point},
    {"endo", "endo", WeldShape::Point},         {"projection", "projection", WeldShape::Point},
    {"stud", "stud", WeldShape::Point},         {"rivet", "rivet", WeldShape::Point},
    {"clinch", "clinch", WeldShape::Point},     {"bolt", "bolt", WeldShape::Point},
    {"curve", "seam", WeldShape::Curve},        {"stitch", "seam", WeldShape::Curve},
    {"laser", "laser", WeldShape::Curve},       {"arc", "arc", WeldShape::Curve},
    {"mig", "arc", WeldShape::Curve},           {"mag", "arc", WeldShape::Curve},
    {"tig", "arc", WeldShape::Curve},           {"adhesive", "adhesive", WeldShape::Curve},
    {"glue", "adhesive", WeldShape::Curve},     {"sealant", "adhesive", WeldShape::Curve},
    {"bead", "adhesive", WeldShape::Curve},     {"hem", "hem", WeldShape::Curve},
    {"locator", "locator", WeldShape::Locator}, {"locating", "locator", WeldShape::Locator},
    {"pin", "locator", WeldShape::Locator},     {"clamp", "clamp", WeldShape::Clamp},
    {"clamping", "clamp", WeldShape::Clamp},    {"weld", "spot", WeldShape::Point},
}};

// Short words are part of many others ("mig" of "migration"), so they count as a whole alone.
constexpr std::size_t kLeastTelling = 4;

const Word* FindWord(const std::string& folded) {
  auto found = std::find_if(kWords.begin(), kWords.end(),
                            [&](const Word& word) { return word.folded == folded; });
  if (found != kWords.end()) return &*found;
  found = std::find_if(kWords.begin(), kWords.end(), [&](const Word& word) {
    return word.folded.size() >= kLeastTelling && folded.find(word.folded) != std::string::npos;
  });
  return found == kWords.end() ? nullptr : &*found;
}

std::string WithoutEnding(std::string word, std::string_view ending) {
  if (word.size() > ending.size() && word.ends_with(ending)) {
    word.resize(word.size() - ending.size());
  }
  return word;
}

}  // namespace

WeldType FindWeldType(std::string_view iText) {
  if (iText.empty()) return {"spot", WeldShape::Point, true};
  const std::string folded = WithoutEnding(WithoutEnding(Folded(iText), "welding"), "weld");
  if (const Word* const word = FindWord(folded)) {
    return {std::string(word->type), word->shape, true};
  }
  return {std::string(CheckName("type", iText)), WeldShape::Point, false};
}

}  // namespace biwplan
