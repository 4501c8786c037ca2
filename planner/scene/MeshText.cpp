#include "planner/scene/MeshText.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "planner/scene/MeshFile.h"

namespace biwplan {

namespace {

// Each solid is named at its begin and mostly at its end.
constexpr std::size_t kMostSolids = 1000;

bool BeginsWithWord(std::string_view line, std::string_view word) {
  return line.starts_with(word) && line.size() > word.size() &&
         (line[word.size()] == ' ' || line[word.size()] == '\t');
}

[[noreturn]] void RefuseMoreThan(std::size_t most, const char* what) {
  throw std::runtime_error("it must have at most " + std::to_string(most) + " " + what);
}

// Joins lines that go on after a backslash, and leaves out comments.
class ObjFilter {
 public:
  void Take(std::string_view line) {
    line = line.substr(0, line.find('#'));
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    const bool isFace = BeginsWithWord(line, "f");
    if (isFace && ++faces_ > kMostMeshTriangles) RefuseMoreThan(kMostMeshTriangles, "faces");
    if (!goesOn_ && !isFace && !BeginsWithWord(line, "v")) return;
    inFace_ = isFace || (goesOn_ && inFace_);
    // Behind anything else Assimp reads on past the end.
    if (inFace_ && line.find_first_not_of("0123456789-/ \t\\", isFace ? 1 : 0) != line.npos) {
      throw std::runtime_error("its faces must be whole numbers with blanks or / between them");
    }
    goesOn_ = line.ends_with('\\');
    if (goesOn_) line.remove_suffix(1);
    shape.append(line) += goesOn_ ? ' ' : '\n';
  }

  std::string shape;

 private:
  std::size_t faces_ = 0;
  bool goesOn_ = false;
  bool inFace_ = false;
};

}  // namespace

std::string ObjShape(const std::string& iBytes) {
  ObjFilter filter;
  std::string_view text = iBytes;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    if (end > 0) filter.Take(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return std::move(filter.shape);
}

std::string StlShape(std::string iBytes) {
  constexpr std::string_view kWord = "solid";
  std::size_t words = 0;
  for (std::size_t at = 0; (at = iBytes.find(kWord, at)) != std::string::npos; ++at) {
    if (++words > 2 * kMostSolids) RefuseMoreThan(kMostSolids, "solids");
  }
  return iBytes;
}

}  // namespace biwplan
