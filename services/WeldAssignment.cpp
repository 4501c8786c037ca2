#include <exception>

#include "frame/Trace.h"
#include "host/dialog/ZefApplicationFrame.h"
#include "host/dialog/ZefDlgNotify.h"
#include "host/dialog/ZefFrmWindow.h"
#include "host/dialog/ZefMsgCatalog.h"
#include "host/document/ZefIRedrawEvent.h"
#include "host/fastening/TuvIBIWFastener.h"
#include "host/fastening/TuvIRabBltCBSubscriber.h"
#include "host/fastening/TuvIRabBltMgr.h"
#include "host/process/ZefISPPItemMgt.h"
#include "host/values/Each.h"
#include "services/Received.h"
#include "services/TuvBIWServices.h"
#include "services/WeldBag.h"

namespace {

enum DisplayStatus { kUnassigned = 1, kAssigned = 4 };

constexpr char kCatalog[] = "TuvKelBIWAssignWeldDlg";
constexpr unsigned int kWarningStyle = 0x8100200;

// Suspends an activity's item-change callbacks while a batch of changes runs.
class BlockedCallbacks {
 public:
  explicit BlockedCallbacks(ZefISPPActivity* activity)
      : subscriber_(activity), exceptions_(std::uncaught_exceptions()) {
    if (subscriber_) subscriber_->SetCallbacksBlocked(1);
  }
  // What a host raises here passes to the caller, unless another exception is on its way there.
  ~BlockedCallbacks() noexcept(false) {
    try {
      if (subscriber_) subscriber_->SetCallbacksBlocked(0);
    } catch (...) {
      if (std::uncaught_exceptions() == exceptions_) throw;
    }
  }
  BlockedCallbacks(const BlockedCallbacks&) = delete;
  BlockedCallbacks& operator=(const BlockedCallbacks&) = delete;

 private:
  TuvIRabBltCBSubscriber_var subscriber_;
  int exceptions_;
};

void ProcessPendingUpdates(ZefISPPActivity* activity) {
  const TuvIRabBltMgr_var manager = activity;
  if (manager) manager->ProcessPendingUpdates();
}

bool IsRepresented(const TuvIBIWFastener_var& fastener) {
  ZefBaseUnknown* represented = nullptr;
  fastener->GetRepresentedObject(represented);
  return represented != nullptr;
}

void RefreshDisplay(const TuvIBIWFastener_var& fastener, DisplayStatus status) {
  if (!IsRepresented(fastener)) return;
  const ZefBaseUnknown_var weld = fastener;
  const bool hasLabel = Succeeded(TuvBIWServices::CheckForTuvBIWCustomRep(BagOfWeld(weld)));
  ZefListValZefBaseUnknown_var welds;
  if (hasLabel) welds.Append(weld);
  // The first call takes the label away, the second makes it anew in the weld's new look.
  if (hasLabel) TuvBIWServices::VisualizationKoraWeldList(&welds, 0, 0, 255, 255, 255, 255);
  fastener->SetDisplayStatus(status, 1);
  if (hasLabel) TuvBIWServices::VisualizationKoraWeldList(&welds, 0, 0, 255, 255, 255, 255);
}

struct Outcome {
  HRESULT result = E_FAIL;
  bool duplicates = false;
};

Outcome AssignNewWelds(const ZefListValZefBaseUnknown_var& welds, ZefISPPActivity* activity) {
  Received<ZefListValZefBaseUnknown_var> existing;
  TuvBIWServices::GetWeldFromActivity(activity, existing.Out(), 1, 0);
  Outcome outcome;
  for (const auto& fastener : Each<TuvIBIWFastener>(welds)) {
    if (existing && existing->Locate(fastener, 1) > 0) {
      outcome.duplicates = true;
      continue;
    }
    TuvBIWServices::AssignKoraWeld(activity, fastener);
    outcome.result = S_OK;
    RefreshDisplay(fastener, kAssigned);
  }
  return outcome;
}

// The container is redrawn only for a current product document whose root also is the process's.
void RedrawAfterAssignment(ZefISPPActivity* activity) {
  const ZefISPPProcessContainer_var container = TuvBIWServices::GetRootContainer(nullptr);
  const ZefIRedrawEvent_var process = container;
  if (process) {
    TuvKelBIWUtilsTrace.TraPutLN("Redraw");
    process->Redraw();
  }
  const ZefIRedrawEvent_var node = activity;
  if (node) node->RedrawNode();
}

void WarnOfDuplicates() {
  ZefApplicationFrame* const frame = ZefApplicationFrame::GetFrame();
  ZefFrmWindow* const window = frame ? frame->GetMainWindow() : nullptr;
  if (!window) return;
  const ZefUnicodeString title =
      ZefMsgCatalog::BuildMessage(kCatalog, "TitleDuplicateWarningId", nullptr, 0, "WARNING");
  auto* const dialog = new ZefDlgNotify(window, title, kWarningStyle);
  if (!dialog) return;
  dialog->DisplayBlocked(ZefMsgCatalog::BuildMessage(kCatalog, "DuplicateWarningId", nullptr, 0,
                                                     "Duplicated weld assignements to \n"
                                                     "the SAME activity are illegal and\n"
                                                     "ignored."),
                         title);
}

void RedrawItems(const ZefISPPItemMgt_var& items) {
  const ZefIRedrawEvent_var event = items;
  if (event) event->Redraw();
}

void MoveWeld(const ZefBaseUnknown_var& weld, ZefISPPItemMgt& source, ZefISPPItemMgt& target) {
  source.RemoveItem(weld, -1);
  ZefBaseUnknown_var added;
  target.AddItem(weld, added);
  const TuvIBIWFastener_var fastener = weld;
  if (fastener && IsRepresented(fastener)) fastener->SetDisplayStatus(kAssigned, 1);
}

void MoveWelds(const ZefListValZefBaseUnknown_var& welds, ZefISPPItemMgt& source,
               ZefISPPActivity* to) {
  const ZefISPPItemMgt_var target = to;
  if (!target) return;
  for (const auto& weld : Each<ZefBaseUnknown>(welds)) {
    if (TuvBIWServices::IsValidWeldForActivity(weld, to)) MoveWeld(weld, source, *target);
  }
  RedrawItems(target);
}

void RemoveWelds(const ZefListValZefBaseUnknown_var& welds, ZefISPPActivity* activity) {
  const ZefISPPItemMgt_var items = activity;
  if (!items) return;
  for (const auto& fastener : Each<TuvIBIWFastener>(welds)) {
    items->RemoveItem(fastener, -1);
    RefreshDisplay(fastener, kUnassigned);
  }
}

}  // namespace

HRESULT TuvBIWServices::AssignKoraWeld(ZefISPPActivity* iActivity, ZefBaseUnknown* iWeld) {
  const TraceScope trace("TuvBIWServices::AssignKoraWeld --> IN",
                         "TuvBIWServices::AssignKoraWeld <-- OUT");
  if (!iActivity || !iWeld) return E_FAIL;
  if (!TuvIBIWFastener_var(iWeld)) return E_FAIL;
  const ZefISPPItemMgt_var items = iActivity;
  if (!items) return E_FAIL;
  ZefBaseUnknown_var added;
  items->AddItem(iWeld, added);
  return S_OK;
}

HRESULT TuvBIWServices::AssignListOfWelds(ZefListValZefBaseUnknown_var* iWelds,
                                          ZefISPPActivity* iActivity, ZefIProduct*, unsigned char) {
  const TraceScope trace("TuvBIWServices::AssignListOfWelds <-- OUT");
  if (!iWelds || !iActivity) return E_FAIL;
  Outcome outcome;
  {
    const BlockedCallbacks blocked(iActivity);
    outcome = AssignNewWelds(*iWelds, iActivity);
  }
  ProcessPendingUpdates(iActivity);
  if (outcome.result == S_OK) RedrawAfterAssignment(iActivity);
  if (outcome.duplicates) WarnOfDuplicates();
  return outcome.result;
}

HRESULT TuvBIWServices::UnassignListOfWelds(ZefListValZefBaseUnknown_var* iWelds,
                                            ZefISPPActivity* iActivity) {
  const TraceScope trace("TuvBIWServices::Unassign <-- OUT");
  if (!iActivity || !iWelds) return E_FAIL;
  {
    const BlockedCallbacks blocked(iActivity);
    RemoveWelds(*iWelds, iActivity);
  }
  ProcessPendingUpdates(iActivity);
  return E_FAIL;
}

HRESULT TuvBIWServices::ReallocateWeld(ZefISPPActivity* iFrom, ZefISPPActivity* iTo,
                                       ZefListValZefBaseUnknown_var* iWelds) {
  const TraceScope trace("TuvBIWServices::ReallocateWeld --> IN",
                         "TuvBIWServices::ReallocateWeld <-- OUT");
  if (!iFrom || !iTo || !iWelds) return E_FAIL;
  {
    const BlockedCallbacks blocked(iFrom);
    const ZefISPPItemMgt_var source = iFrom;
    if (source) {
      MoveWelds(*iWelds, *source, iTo);
      RedrawItems(source);
    }
  }
  ProcessPendingUpdates(iFrom);
  ProcessPendingUpdates(iTo);
  return E_FAIL;
}

HRESULT TuvBIWServices::Unassign(ZefISPPActivity*, ZefBaseUnknown*) { return E_FAIL; }
