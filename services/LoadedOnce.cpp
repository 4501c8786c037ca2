#include "services/LoadedOnce.h"

#include "services/ActivityTree.h"
#include "services/DepthFirst.h"
#include "services/TuvBIWServices.h"
#include "services/WalkBack.h"

namespace {

// What an activity adds a second time is in the list by then.
class Collector {
 public:
  explicit Collector(ZefListValZefBaseUnknown_var*& ioParts) : parts_(ioParts) {}

  void AddBefore(const ZefISPPActivity_var& activity) {
    WalkBack<OnceGuard>().Run(activity, [this](const ZefISPPActivity_var& previous) {
      AddPartsOf(previous);
      AddBelow(previous);
    });
  }

  void AddBelow(const ZefISPPActivity_var& top) {
    if (!descended_.Enter(top)) return;
    WalkDepthFirst<NoGuard>(top, ChildActivities,
                            [this](const ZefISPPActivity_var& child, const auto&, int) {
                              AddPartsOf(child);
                              return descended_.Enter(child) ? Onward::Below : Onward::Past;
                            });
  }

 private:
  void AddPartsOf(const ZefISPPActivity_var& activity) {
    if (!added_.Enter(activity)) return;
    TuvBIWServices::GetAssignedParts(activity, parts_);
    TuvBIWServices::GetProductOutputsFromActivity(activity, parts_);
  }

  ZefListValZefBaseUnknown_var*& parts_;
  OnceGuard added_;
  OnceGuard descended_;
};

}  // namespace

int AppendLoadedOnce(const ZefISPPActivity_var& iActivity, ZefListValZefBaseUnknown_var*& ioParts) {
  if (!iActivity || !ioParts) return 0;
  Collector collector(ioParts);
  collector.AddBefore(iActivity);
  TuvBIWServices::GetAssignedParts(iActivity, ioParts);
  collector.AddBelow(iActivity);
  return 0;
}
