#pragma once

#include <random>
#include <string>
#include <vector>

#include "tests/support/PlantTest.h"

namespace tests {

// A process drawn at random, in vectors and in a plant alike: what the services find in the plant
// is held against plain recursion over the vectors. Some objects withhold an interface.
struct Sketch {
  // Steps and parts are numbered from 0, -1 for none.
  struct Step {
    embedded::Activity* activity = nullptr;
    int parent = -1;
    std::vector<int> children{}, previous{}, items{}, outputs{};
    bool isActivity = true, hasFlow = true, hasChildren = true, hasItems = true;
  };
  struct Part {
    embedded::Product* product = nullptr;
    int reference = -1;
    std::vector<int> children{};
    bool isProduct = true;
  };

  // With `rings` the flows go anywhere, else the process comes to an end in every direction.
  Sketch(Plant& plant, unsigned seed, bool rings);

  const std::vector<int>& Below(int part) const {
    return parts[parts[part].reference < 0 ? part : parts[part].reference].children;
  }
  // What a service sees of a step; -1 for what is no activity.
  int AsActivity(int step) const { return step >= 0 && steps[step].isActivity ? step : -1; }
  std::string Key(int step) const { return steps[step].activity->Key(); }
  std::string PartKey(int part) const { return parts[part].product->Key(); }
  ReferenceSnapshot Snapshot() const;

  std::vector<Step> steps;
  std::vector<Part> parts;

 private:
  int Draw(std::size_t limit) { return static_cast<int>(dice_() % limit); }
  void DrawParts(embedded::Document& document);
  void DrawTree(embedded::Document& document);
  void DrawFlows(embedded::Document& document, bool rings);
  void DrawItems(Plant& plant);
  void Hide();

  std::mt19937 dice_;
};

// The lines of "X -- IN" and "X -- OUT", written as an operation enters and leaves.
class Bracket {
 public:
  Bracket(Strings& lines, const std::string& operation)
      : lines_(lines), name_("TuvBIWServices::" + operation) {
    lines_.push_back(name_ + " -- IN");
  }
  ~Bracket() { lines_.push_back(name_ + " -- OUT"); }
  Bracket(const Bracket&) = delete;
  Bracket& operator=(const Bracket&) = delete;

 private:
  Strings& lines_;
  std::string name_;
};

// Lays out so many activities, each after and, if `nested`, below the one before, that a recursive
// walk would exhaust the stack. Answers the last.
constexpr int kDepth = 30000;
embedded::Activity& LayOutDeep(Plant& plant, bool nested);

}  // namespace tests
