#pragma once

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "embedded/model/ObjectClass.h"
#include "host/process/Process.h"
#include "tests/support/PlantTest.h"

namespace tests {

// A process drawn at random, in vectors and in a plant alike: what the services find in the plant
// is held against plain recursion over the vectors. Some objects withhold an interface.
class Sketch {
 public:
  struct Step {
    embedded::Activity* activity = nullptr;
    int parent = -1;  // steps and parts are numbered from 0, -1 for none
    std::vector<int> children{}, previous{}, items{}, outputs{};
    bool isActivity = true, hasFlow = true, hasChildren = true, hasItems = true;
  };
  struct Part {
    embedded::Product* product = nullptr;
    int reference = -1;
    int number = -1;  // equal for parts with equal part numbers
    std::vector<int> children{};
    bool isProduct = true, hasChildren = true;
  };

  // With `rings` the flows go anywhere, else the process comes to an end in every direction.
  Sketch(Plant& plant, unsigned seed, bool rings);

  int Size() const { return static_cast<int>(steps_.size()); }
  int Parts() const { return static_cast<int>(parts_.size()); }
  const Step& At(int step) const { return steps_[static_cast<std::size_t>(step)]; }
  const Part& PartAt(int part) const { return parts_[static_cast<std::size_t>(part)]; }
  const std::vector<int>& PartsBelow(int part) const;
  // What a service is given; null for what is no activity.
  ZefISPPActivity_var HandleOf(int step) const { return At(step).activity->Identity(); }
  // -1 for what is no activity.
  int AsActivity(int step) const { return step >= 0 && At(step).isActivity ? step : -1; }
  std::string Key(int step) const { return At(step).activity->Key(); }
  std::string PartKey(int part) const { return PartAt(part).product->Key(); }
  ReferenceSnapshot Snapshot() const;

 private:
  void DrawParts(Plant& plant);
  void DrawSteps(Plant& plant, bool rings);
  void Hide();
  int Below(std::size_t limit) { return static_cast<int>(dice_() % limit); }

  std::mt19937 dice_;
  std::vector<Step> steps_;
  std::vector<Part> parts_;
};

// Lays out so many activities, each after and, if `nested`, below the one before, that a recursive
// walk would exhaust the stack. Answers the last.
constexpr int kDepth = 30000;
embedded::Activity& LayOutDeep(Plant& plant, bool nested);

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

// An activity of another host, whose neighbours are any objects or none.
class ForeignActivity
    : public ComponentObject<ZefISPPActivity, ZefISPPFlowMgt, ZefISPPChildManagement> {
 public:
  using List = ZefListValZefBaseUnknown_var;
  ZefMetaClass* GetMetaObject() const override {
    return embedded::ObjectClass<ForeignActivity>("ForeignActivity");
  }
  HRESULT GetParentActivity(ZefISPPAbstractActivity_var&) override { return E_FAIL; }
  ZefUnicodeString GetLabel() override { return "foreign"; }
  List GetPreviousActivities(const ZefUnicodeString&) override { return previous; }
  List GetProductOutputs(ZefISPPItem_var&) override { return outputs; }
  List GetNextActivities(const ZefUnicodeString&) override { return {}; }
  HRESULT GetItemSource(ZefBaseUnknown*&, const ZefISPPItem_var&) override { return E_FAIL; }
  HRESULT AddProductOutput(ZefISPPProductIO*&, const ZefISPPItem_var&) override { return E_FAIL; }
  List* GetChildren(const ZefUnicodeString&) override { return new List(children); }

  List previous, children, outputs;
};

}  // namespace tests
