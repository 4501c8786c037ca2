#include <unordered_set>
#include <vector>

#include "host/values/Each.h"
#include "planner/check/LoadedParts.h"
#include "services/TuvBIWServices.h"

namespace biwplan {

namespace {

using embedded::Activity;
using Objects = ZefListValZefBaseUnknown_var;
using ActivitySet = std::unordered_set<const Activity*>;

// Adds the parts of each activity once: what it would add a second time is in the list by then.
class Collector {
 public:
  explicit Collector(Objects& ioParts) : parts_(ioParts) {}

  void AddItemsOf(Activity& activity) {
    Objects* list = &parts_;
    TuvBIWServices::GetAssignedParts(activity.Identity(), list);
  }

  void AddBefore(Activity& activity) {
    ActivitySet entered;
    std::vector<Step> path;
    const auto enter = [&](Activity* place) {
      if (place && entered.insert(place).second) path.push_back({place});
    };
    enter(&activity);
    while (!path.empty()) {
      Step& step = path.back();
      const embedded::NeighbourList& previous = step.activity->Previous();
      const bool isFirst = step.next == 0;
      if (step.next < previous.size()) {
        Activity& next = *previous[step.next++];
        AddPartsOf(next);
        AddBelow(next);
        enter(&next);
      } else if (isFirst) {
        // What begins a flow has before it what its parent has.
        ++step.next;
        enter(step.activity->Parent());
      } else {
        path.pop_back();
      }
    }
  }

  void AddBelow(Activity& top) {
    std::vector<Activity*> open;
    const auto openBelow = [&](Activity& activity) {
      if (!descended_.insert(&activity).second) return;
      const auto& children = activity.Children();
      open.insert(open.end(), children.rbegin(), children.rend());
    };
    openBelow(top);
    while (!open.empty()) {
      Activity& activity = *open.back();
      open.pop_back();
      AddPartsOf(activity);
      openBelow(activity);
    }
  }

 private:
  struct Step {
    Activity* activity;
    std::size_t next = 0;
  };

  void AddPartsOf(Activity& activity) {
    if (!added_.insert(&activity).second) return;
    AddItemsOf(activity);
    Objects outputs;
    Objects* list = &outputs;
    TuvBIWServices::GetProductOutputsFromActivity(activity.Identity(), list);
    for (const auto& output : Each<ZefBaseUnknown>(outputs)) {
      if (parts_.Locate(output) == 0) parts_.Append(output);
    }
  }

  Objects& parts_;
  ActivitySet added_;
  ActivitySet descended_;
};

}  // namespace

Objects LoadedAt(Activity& iActivity) {
  Objects parts;
  Collector collector(parts);
  collector.AddBefore(iActivity);
  collector.AddItemsOf(iActivity);
  collector.AddBelow(iActivity);
  return parts;
}

}  // namespace biwplan
