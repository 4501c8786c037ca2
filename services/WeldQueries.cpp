#include <memory>
#include <unordered_set>
#include <vector>

#include "frame/Trace.h"
#include "host/document/ZefIAlias.h"
#include "host/document/ZefILinkableObject.h"
#include "host/document/ZefISpecObject.h"
#include "host/fastening/TuvIBIWActivity.h"
#include "host/fastening/TuvIBIWFastener.h"
#include "host/fastening/TuvISpotWeld.h"
#include "host/process/ZefISPPActivitySpecification.h"
#include "host/process/ZefISPPChildManagement.h"
#include "host/process/ZefISPPItem.h"
#include "host/process/ZefISPPItemMgt.h"
#include "host/values/Each.h"
#include "services/Members.h"
#include "services/Received.h"
#include "services/TuvBIWServices.h"

namespace {

using NewList = std::unique_ptr<ZefListValZefBaseUnknown_var>;

constexpr char kWalkEntry[] = "TuvBIWServices::GetWeldFromActivity --> IN";
constexpr char kWalkExit[] = "TuvBIWServices::GetWeldFromActivity <-- OUT";

void AppendTo(ZefListValZefBaseUnknown_var*& ioList, const ZefBaseUnknown_var& element) {
  if (!ioList) ioList = new ZefListValZefBaseUnknown_var;
  ioList->Append(element);
}

ZefIContainer_var OwnContainer(ZefISPPActivity* activity) {
  const ZefISpecObject_var feature = activity;
  ZefIContainer_var container;
  if (feature) feature->GetFeatContainer(container);
  return container;
}

// The item that a link names, if it is a fastener.
ZefBaseUnknown_var SpecifiedFastener(const ZefISPPActivitySpecification_var& link) {
  ZefBaseUnknown_var item;
  if (link) link->GetSpecifiedItem(item);
  return TuvIBIWFastener_var(item) ? item : nullptr;
}

HRESULT AppendFastenerItems(ZefISPPActivity* activity, ZefListValZefBaseUnknown_var*& ioWelds) {
  const ZefISPPItemMgt_var management = activity;
  if (!management) return E_FAIL;
  HRESULT result = E_FAIL;
  for (const auto& item : Each<ZefISPPItem>(NewList(management->GetItems("Item", 0)))) {
    const TuvIBIWFastener_var fastener = item;
    if (!fastener) continue;
    AppendTo(ioWelds, fastener);
    result = S_OK;
  }
  return result;
}

// Walks the tree of activities depth first, without recursion: trees are as deep as their author
// likes. Lines and welds come in the order of the recursive walk.
class WeldWalk {
 public:
  explicit WeldWalk(ZefListValZefBaseUnknown_var*& ioWelds) : welds_(ioWelds) {}

  // Answers for `top` alone.
  HRESULT Run(ZefISPPActivity* top) {
    const HRESULT result = AppendFastenerItems(top, welds_);
    const ZefBaseUnknown_var object = top;
    Open(top, object);
    while (EnterNextChild() || LeaveToParent()) {
    }
    return result;
  }

 private:
  // The children list of the step above keeps the activity.
  struct Step {
    ZefISPPActivity* activity;
    const ZefBaseUnknown* identity;
    NewList children;
    int position;
  };

  static void TraceLabel(ZefISPPActivity* activity) {
    TuvKelBIWUtilsTrace.TraPutLN(activity->GetLabel().CastToCharPtr());
  }

  void Open(ZefISPPActivity* activity, const ZefBaseUnknown* identity) {
    TraceLabel(activity);
    const ZefISPPChildManagement_var management = activity;
    path_.push_back(
        {activity, identity, NewList(management ? management->GetChildren("") : nullptr), 0});
    onPath_.insert(identity);
  }

  bool EnterNextChild() {
    Step& step = path_.back();
    while (step.children && ++step.position <= step.children->Size()) {
      const ZefBaseUnknown_var object = (*step.children)[step.position];
      const ZefISPPActivity_var child = object;
      if (!child || onPath_.contains(object)) continue;
      TuvKelBIWUtilsTrace.TraPutLN(kWalkEntry);
      AppendFastenerItems(child, welds_);
      Open(child, object);
      return true;
    }
    return false;
  }

  // The entry and exit lines of the top are its caller's.
  bool LeaveToParent() {
    ZefISPPActivity* const activity = path_.back().activity;
    onPath_.erase(path_.back().identity);
    path_.pop_back();
    if (path_.empty()) return false;
    TuvKelBIWUtilsTrace.TraPutLN(kWalkExit);
    TraceLabel(activity);
    return true;
  }

  ZefListValZefBaseUnknown_var*& welds_;
  std::vector<Step> path_;
  std::unordered_set<const ZefBaseUnknown*> onPath_;
};

bool IsOnActivity(ZefBaseUnknown* weld, ZefISPPActivity* activity) {
  if (!activity || !weld) return false;
  Received<ZefListValZefBaseUnknown_var> welds;
  const HRESULT status = TuvBIWServices::GetWeldFromActivity(activity, welds.Out(), 1, 0);
  return Succeeded(status) && welds && welds->Locate(weld, 1) != 0;
}

}  // namespace

HRESULT TuvBIWServices::GetListOfAllWeld(ZefListValZefBaseUnknown_var*&) { return E_FAIL; }

HRESULT TuvBIWServices::GetListOfAssignedWeld(ZefISPPActivity* iActivity,
                                              ZefListValZefBaseUnknown_var*& ioWelds) {
  const TraceScope trace("TuvBIWServices::GetListOfAssignedWeld --> IN",
                         "TuvBIWServices::GetListOfAssignedWeld <-- OUT");
  const HRESULT result = iActivity ? GetListOfKoraAssignedWeld(iActivity, ioWelds) : E_FAIL;
  if (!ioWelds) return result;
  TuvKelBIWUtilsTrace.TraPutLN("There are some welds assigned");
  return S_OK;
}

HRESULT TuvBIWServices::GetListOfKoraAssignedWeld(ZefISPPActivity* iActivity,
                                                  ZefListValZefBaseUnknown_var*& ioWelds) {
  const TraceScope trace("TuvBIWServices::GetListOfKoraAssignedWeld --> IN",
                         "TuvBIWServices::GetListOfKoraAssignedWeld <-- OUT");
  const ZefIContainer_var container = OwnContainer(iActivity);
  if (!container) return E_FAIL;
  Members members;
  container->ListMembersHere("ZefISPPActivitySpecification", members.Out());
  for (int i = 0; i < members.Size(); ++i) {
    if (!ioWelds) ioWelds = new ZefListValZefBaseUnknown_var;
    const ZefBaseUnknown_var fastener = SpecifiedFastener(members.Take(i));
    if (fastener) ioWelds->Append(fastener);
  }
  return members.Size() > 0 ? S_OK : E_FAIL;
}

HRESULT TuvBIWServices::GetWeldFromActivity(ZefISPPActivity* iActivity,
                                            ZefListValZefBaseUnknown_var*& ioWelds, unsigned char,
                                            int iDepth) {
  const TraceScope trace(kWalkEntry, kWalkExit);
  if (!iActivity) return E_FAIL;
  if (iDepth != -1) return AppendFastenerItems(iActivity, ioWelds);
  return WeldWalk(ioWelds).Run(iActivity);
}

HRESULT TuvBIWServices::CheckWeldAssignement(ZefBaseUnknown* iWeld, ZefISPPActivity* iActivity,
                                             ZefListValZefBaseUnknown_var* iPending,
                                             unsigned char) {
  const TraceScope trace("TuvBIWServices::CheckWeldAssignment --> IN",
                         "TuvBIWServices::CheckWeldAssignment <-- OUT");
  if (IsOnActivity(iWeld, iActivity)) return E_FAIL;
  if (!iPending) return S_OK;
  return iPending->Locate(iWeld, 1) < 1 ? S_OK : E_FAIL;
}

ZefUnicodeString TuvBIWServices::GetWeldID(ZefBaseUnknown* iWeld) {
  const ZefIAlias_var weld = iWeld;
  return weld ? weld->GetAlias() : ZefUnicodeString();
}

HRESULT TuvBIWServices::GetActivityFromAssignedWeld(ZefBaseUnknown* iWeld,
                                                    ZefListValZefBaseUnknown_var*& ioActivities,
                                                    int& oCount) {
  oCount = 0;
  if (!iWeld) return E_FAIL;
  void* answer = nullptr;
  const HRESULT status = iWeld->QueryInterface(IID_ZefILinkableObject, &answer);
  const auto linkable = Adopt(static_cast<ZefILinkableObject*>(answer));
  if (Failed(status) || !linkable) return status;
  const ZefIPointingHolder_var holder = Adopt(linkable->GetPointingHolder());
  if (!holder) return status;
  ZefListValZefBaseUnknown_var features;
  holder->ListPointingObjects(features);
  for (const auto& feature : Each<ZefISpecObject>(features)) {
    const auto activity = AdoptAs<ZefISPPActivity>(feature->GetFather());
    if (!activity) continue;
    AppendTo(ioActivities, activity);
    ++oCount;
  }
  return oCount != 0 ? S_OK : status;
}

int TuvBIWServices::IsValidWeldForActivity(ZefBaseUnknown* iWeld, ZefISPPActivity* iActivity) {
  const TuvIBIWFastener_var fastener = iWeld;
  if (!fastener) return 1;
  const TuvIBIWActivity_var activity = iActivity;
  return activity ? activity->IsValidFastener(fastener) & 0xFF : 1;
}

int TuvBIWServices::IsWeldAssigned(ZefBaseUnknown* iWeld, ZefListValZefBaseUnknown_var* iAssigned) {
  const TuvISpotWeld_var weld = iWeld;
  if (!weld) return 0;
  if (Succeeded(weld->IsAssignedInPask())) return 1;
  return iAssigned && iAssigned->Locate(iWeld, 1) > 0 ? 1 : 0;
}
