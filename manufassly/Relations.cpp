#include <algorithm>
#include <memory>
#include <unordered_map>
#include <vector>

#include "host/document/ZefILinkableObject.h"
#include "host/document/ZefIPointingHolder.h"
#include "host/document/ZefISpecObject.h"
#include "host/process/ZefISPPItemMgt.h"
#include "host/values/Each.h"
#include "manufassly/Assemblies.h"
#include "manufassly/TuvEUpdateManufAssly.h"
#include "services/ActivityTree.h"
#include "services/DepthFirst.h"

namespace {

using NewList = std::unique_ptr<ZefListValZefBaseUnknown_var>;

constexpr int kFirstAssigned = 2;

ZefListValZefBaseUnknown_var PointingFeatures(const TuvIMfgAssembly_var& assembly) {
  ZefListValZefBaseUnknown_var features;
  const ZefILinkableObject_var linkable = assembly;
  const auto holder = Adopt(linkable ? linkable->GetPointingHolder() : nullptr);
  if (holder) holder->ListPointingObjects(features);
  return features;
}

// None for an assembly that lists itself: it would be walked for ever.
NewList ChildrenToWalk(const TuvIMfgAssembly_var& assembly) {
  NewList children = ChildrenOf(assembly);
  return children && children->Locate(assembly, 1) == 0 ? std::move(children) : nullptr;
}

// Collects what is first assigned upstream, once for each path. What another path has found behind
// an activity is copied, unless a ring cut it short: then it depends on the path.
class Upstream {
 public:
  Upstream(TuvEUpdateManufAssly& update, ZefListValZefBaseUnknown_var& ioItems)
      : update_(update), items_(ioItems) {}

  void Run(const ZefISPPActivity_var& activity) {
    Enter(activity);
    while (!path_.empty()) {
      Step& step = path_.back();
      if (++step.position > step.previous.Size()) {
        Leave();
        continue;
      }
      ZefISPPActivity_var previous = step.previous[step.position];
      if (!previous) continue;
      update_.GetFirstAssignedItems(previous, items_);
      Enter(previous);
    }
  }

 private:
  struct Step {
    ZefBaseUnknown_var activity;
    ZefListValZefBaseUnknown_var previous;
    int behind;  // how many items stand before those found from here on
    int ringsBefore;
    int position = 0;
  };
  struct Found {
    ZefBaseUnknown_var activity;  // kept, so that no other one has its address
    int first;
    int last;
  };

  void Enter(const ZefISPPActivity_var& activity) {
    const ZefBaseUnknown_var identity = activity;
    const auto known = found_.find(identity.Get());
    if (known != found_.end()) return Repeat(known->second);
    if (!guard_.Enter(activity)) {
      ++rings_;
      return;
    }
    path_.push_back({identity, PreviousActivities(activity), items_.Size(), rings_});
  }

  void Repeat(const Found& found) {
    for (int i = found.first; i <= found.last; ++i) {
      const ZefISPPItem_var item = items_[i];
      items_.Append(item);
    }
  }

  void Leave() {
    const Step& step = path_.back();
    if (step.ringsBefore == rings_) {
      found_.emplace(step.activity.Get(), Found{step.activity, step.behind + 1, items_.Size()});
    }
    guard_.Leave();
    path_.pop_back();
  }

  TuvEUpdateManufAssly& update_;
  ZefListValZefBaseUnknown_var& items_;
  std::vector<Step> path_;
  PathGuard guard_;
  std::unordered_map<const ZefBaseUnknown*, Found> found_;
  int rings_ = 0;
};

}  // namespace

void TuvEUpdateManufAssly::GetFirstAssignedItems(ZefISPPActivity_var& iActivity,
                                                 ZefListValZefBaseUnknown_var& ioItems) {
  const ZefISPPItemMgt_var management = iActivity;
  const NewList items(management ? management->GetItems("Item", kFirstAssigned) : nullptr);
  for (const auto& item : Each<ZefISPPItem>(items)) ioItems.Append(item);
}

void TuvEUpdateManufAssly::CollectFirstAssignPartsFromPreviousActs(
    ZefISPPActivity_var& iActivity, ZefListValZefBaseUnknown_var& ioItems) {
  if (iActivity) Upstream(*this, ioItems).Run(iActivity);
}

void TuvEUpdateManufAssly::GetRelatedActivities(TuvIMfgAssembly_var& iAssembly,
                                                ZefListValZefBaseUnknown_var& ioActivities) {
  if (!iAssembly) return;
  for (const auto& feature : Each<ZefISpecObject>(PointingFeatures(iAssembly))) {
    auto activity = AdoptAs<ZefISPPActivity>(feature->GetFather());
    if (!activity) continue;
    ZefListValZefBaseUnknown_var items;
    GetFirstAssignedItems(activity, items);
    if (items.Locate(iAssembly, 1) == 0 || ioActivities.Locate(activity, 1) != 0) continue;
    ioActivities.Append(activity);
  }
}

void TuvEUpdateManufAssly::GetAllChildParts(TuvIMfgAssembly_var& iAssembly,
                                            ZefListValZefBaseUnknown_var& ioChildren) {
  if (!iAssembly || ioChildren.Locate(iAssembly, 1) != 0) return;
  // What was listed before is listed again but not entered, so rings end.
  WalkDepthFirst<NoGuard>(iAssembly, ChildrenToWalk,
                          [&](const TuvIMfgAssembly_var& child, const auto&, int) {
                            const bool known = ioChildren.Locate(child, 1) != 0;
                            ioChildren.Append(child);
                            return known ? Onward::Past : Onward::Below;
                          });
}

unsigned char TuvEUpdateManufAssly::IsMAaChild(TuvIMfgAssembly_var& iParent,
                                               TuvIMfgAssembly_var& iCandidate) {
  if (!iParent || !iCandidate) return 0;
  ZefListValZefBaseUnknown_var below;
  GetAllChildParts(iParent, below);
  return below.Locate(iCandidate, 1) != 0 ? 1 : 0;
}

void TuvEUpdateManufAssly::GetParents(ZefISPPActivity_var& iActivity,
                                      ZefListValZefBaseUnknown_var& ioParents) {
  ZefISPPActivity_var activity = iActivity;
  while (activity) {
    const ZefISPPAbstractActivity_var parent = ParentOf(activity);
    if (parent) ioParents.Append(parent);
    activity = parent;
  }
}

void TuvEUpdateManufAssly::FilterActsBasedOnParent(ZefISPPActivity_var& iRoot,
                                                   ZefListValZefBaseUnknown_var& ioActivities,
                                                   int iPosition) {
  if (!iRoot) return;
  for (int i = std::max(iPosition, 1); i <= ioActivities.Size();) {
    ZefISPPActivity_var activity = ioActivities[i];
    ZefListValZefBaseUnknown_var above;
    GetParents(activity, above);
    if (activity && (activity == iRoot || above.Locate(iRoot, 1) != 0)) {
      ++i;
    } else {
      ioActivities.RemovePosition(i);
    }
  }
}
