#include <algorithm>
#include <memory>

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

}  // namespace

void TuvEUpdateManufAssly::GetFirstAssignedItems(ZefISPPActivity_var& iActivity,
                                                 ZefListValZefBaseUnknown_var& ioItems) {
  const ZefISPPItemMgt_var management = iActivity;
  const NewList items(management ? management->GetItems("Item", kFirstAssigned) : nullptr);
  for (const auto& item : Each<ZefISPPItem>(items)) ioItems.Append(item);
}

void TuvEUpdateManufAssly::CollectFirstAssignPartsFromPreviousActs(
    ZefISPPActivity_var& iActivity, ZefListValZefBaseUnknown_var& ioItems) {
  if (!iActivity) return;
  const auto previous = [](const ZefISPPActivity_var& activity) {
    return std::make_unique<ZefListValZefBaseUnknown_var>(PreviousActivities(activity));
  };
  WalkDepthFirst(iActivity, previous, [&](ZefISPPActivity_var activity, const auto&, int) {
    GetFirstAssignedItems(activity, ioItems);
    return Onward::Below;
  });
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
