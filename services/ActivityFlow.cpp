#include <utility>
#include <vector>

#include "frame/Trace.h"
#include "host/process/ZefISPPActivityRoot.h"
#include "host/process/ZefISPPFlowMgt.h"
#include "host/values/Each.h"
#include "host/values/FetchAhead.h"
#include "services/ActivityTree.h"
#include "services/DepthFirst.h"
#include "services/TuvBIWServices.h"

namespace {

constexpr char kDescendantsEntry[] = "TuvBIWServices::GetDescendants -- IN";
constexpr char kDescendantsExit[] = "TuvBIWServices::GetDescendants -- OUT";
constexpr char kPreviousEntry[] = "TuvBIWServices::GetPreviousActivities -- IN";
constexpr char kPreviousExit[] = "TuvBIWServices::GetPreviousActivities -- OUT";

// The labels from the activity up to the one below the root; none for an activity without parent.
std::vector<ZefUnicodeString> LabelsBelowRoot(ZefISPPActivity& activity) {
  ZefISPPAbstractActivity_var parent = ParentOf(activity);
  if (!parent) return {};
  std::vector<ZefUnicodeString> labels{activity.GetLabel()};
  while (parent) {
    TuvKelBIWUtilsTrace.TraPutLN("LOOP");
    if (ZefISPPActivityRoot_var(parent)) break;
    labels.push_back(parent->GetLabel());
    parent = ZefISPPActivity_var(ParentOf(*parent));
  }
  return labels;
}

// The lines are those of one call for each activity.
void AppendDescendants(const ZefISPPActivity_var& top, ZefListValZefBaseUnknown_var& ioResult) {
  const auto append = [&](const ZefISPPActivity_var& child, const auto&, int) {
    ioResult.Append(child);
    return Onward::Below;
  };
  WalkDepthFirst<SparseGuard>(
      top, ChildActivities, append, [] { TuvKelBIWUtilsTrace.TraPutLN(kDescendantsEntry); },
      [] { TuvKelBIWUtilsTrace.TraPutLN(kDescendantsExit); });
}

// The predecessors of the activity, everything below them after the last one, and its parent, which
// is answered, too.
ZefISPPAbstractActivity_var AppendPrevious(const ZefISPPActivity_var& activity,
                                           ZefListValZefBaseUnknown_var& ioActivities) {
  ZefListValZefBaseUnknown_var predecessors;
  ZefListValZefBaseUnknown_var descendants;
  TuvBIWServices::GetAllPredecessors(activity, predecessors);
  for (const auto& predecessor : Each<ZefISPPActivity>(predecessors)) {
    ioActivities.Append(predecessor);
    TuvBIWServices::GetDescendants(predecessor, descendants);
  }
  for (const auto& descendant : Each<ZefBaseUnknown>(descendants)) ioActivities.Append(descendant);
  const ZefISPPAbstractActivity_var parent = ParentOf(*activity);
  if (parent) ioActivities.Append(parent);
  return parent;
}

}  // namespace

HRESULT TuvBIWServices::GetActivityHierarchy(ZefISPPActivity* iActivity, ZefUnicodeString& ioText) {
  const TraceScope trace("TuvBIWServices::GetActivityHierarchy --> IN",
                         "TuvBIWServices::GetActivityHierarchy <-- OUT");
  if (!iActivity) return E_FAIL;
  const std::vector<ZefUnicodeString> labels = LabelsBelowRoot(*iActivity);
  if (labels.empty()) return E_FAIL;
  ioText = labels.back();
  for (auto label = labels.rbegin() + 1; label != labels.rend(); ++label) {
    ioText.Append("->").Append(*label);
  }
  return S_OK;
}

ZefISPPActivity_var TuvBIWServices::GetPredecessorActivity(
    ZefISPPActivity_var iActivity, ZefListValZefBaseUnknown_var*& ioPredecessors) {
  const TraceScope trace("TuvBIWServices::GetPredecessorActivity -- IN",
                         "TuvBIWServices::GetPredecessorActivity -- OUT");
  const ZefISPPFlowMgt_var flow = iActivity;
  if (!flow) return {};
  const ZefListValZefBaseUnknown_var previous = flow->GetPreviousActivities("Activity");
  if (ioPredecessors) ioPredecessors->Append(previous);
  return previous[1];
}

HRESULT TuvBIWServices::GetPredecessors(ZefISPPActivity_var iActivity,
                                        ZefListValZefBaseUnknown_var& oPredecessors) {
  const TraceScope trace("TuvBIWServices::GetPredecessors -- IN",
                         "TuvBIWServices::GetPredecessors -- OUT");
  if (!iActivity) return E_FAIL;
  const ZefISPPFlowMgt_var flow = iActivity;
  if (flow) oPredecessors = flow->GetPreviousActivities("Activity");
  return S_OK;
}

HRESULT TuvBIWServices::GetAllPredecessors(ZefISPPActivity_var iActivity,
                                           ZefListValZefBaseUnknown_var& ioPredecessors) {
  const TraceScope trace("TuvBIWServices::GetAllPredecessors -- IN",
                         "TuvBIWServices::GetAllPredecessors -- OUT");
  if (!iActivity) return E_FAIL;
  std::vector<ZefISPPActivity_var> open{iActivity};
  while (!open.empty()) {
    const ZefISPPActivity_var activity = std::move(open.back());
    open.pop_back();
    if (!open.empty()) FetchAhead(open.back().Get());
    ZefListValZefBaseUnknown_var found;
    if (Failed(GetPredecessors(activity, found))) continue;
    ioPredecessors.PrepareLocate(found);
    for (int i = 1; i <= found.Size(); ++i) {
      const ZefBaseUnknown_var predecessor = found[i];
      if (ioPredecessors.Locate(predecessor, 1) != 0) continue;
      ioPredecessors.Append(predecessor);
      open.emplace_back(predecessor);
    }
  }
  return S_OK;
}

HRESULT TuvBIWServices::GetDescendants(ZefISPPActivity_var iActivity,
                                       ZefListValZefBaseUnknown_var& ioDescendants) {
  // Nothing is below null, of which the walk writes the lines all the same.
  AppendDescendants(iActivity, ioDescendants);
  return iActivity ? S_OK : E_FAIL;
}

void TuvBIWServices::GetPreviousActivities(ZefISPPActivity_var iActivity,
                                           ZefListValZefBaseUnknown_var*& ioActivities) {
  ZefISPPActivity_var activity = iActivity;
  int levels = 0;
  bool hasLevelAbove = true;
  while (hasLevelAbove) {
    TuvKelBIWUtilsTrace.TraPutLN(kPreviousEntry);
    ++levels;
    ZefISPPAbstractActivity_var parent;
    if (activity && ioActivities) parent = AppendPrevious(activity, *ioActivities);
    hasLevelAbove = static_cast<bool>(parent);
    activity = parent;
  }
  for (; levels > 0; --levels) TuvKelBIWUtilsTrace.TraPutLN(kPreviousExit);
}
