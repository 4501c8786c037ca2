#include "services/ActivityTree.h"

#include "host/process/ZefISPPChildManagement.h"
#include "host/process/ZefISPPFlowMgt.h"

std::unique_ptr<ZefListValZefBaseUnknown_var> ChildActivities(
    const ZefISPPActivity_var& iActivity) {
  const ZefISPPChildManagement_var management = iActivity;
  return std::unique_ptr<ZefListValZefBaseUnknown_var>(management ? management->GetChildren("")
                                                                  : nullptr);
}

ZefISPPAbstractActivity_var ParentOf(ZefISPPAbstractActivity& iActivity) {
  ZefISPPAbstractActivity_var parent;
  iActivity.GetParentActivity(parent);
  return parent;
}

ZefISPPAbstractActivity_var ParentOf(const ZefISPPAbstractActivity_var& iActivity) {
  return iActivity ? ParentOf(*iActivity) : nullptr;
}

ZefListValZefBaseUnknown_var PreviousActivities(const ZefISPPActivity_var& iActivity) {
  const ZefISPPFlowMgt_var flow = iActivity;
  return flow ? flow->GetPreviousActivities("Activity") : ZefListValZefBaseUnknown_var();
}
