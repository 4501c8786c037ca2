#include "host/component/Callbacks.h"

#include "host/document/ZefISpecObject.h"
#include "host/fastening/TuvIBIWFastener.h"
#include "host/process/ZefISPPActivity.h"
#include "host/process/ZefISPPActivityModificationEvents.h"
#include "host/values/Each.h"
#include "manufassly/TuvEUpdateManufAssly.h"
#include "services/Received.h"
#include "services/TuvBIWServices.h"

namespace {

ZefSPPActivityNotification* ActivityNotification(ZefNotification* notification) {
  if (!notification || !notification->IsAKindOf("ZefSPPActivityNotification")) return nullptr;
  return dynamic_cast<ZefSPPActivityNotification*>(notification->GetImpl(0));
}

void ShowUnassigned(TuvIBIWFastener& weld) {
  ZefBaseUnknown* represented = nullptr;
  weld.GetRepresentedObject(represented);
  if (represented) weld.SetDisplayStatus(1, 1);
}

}  // namespace

HRESULT TuvEUpdateManufAssly::FindPublisher(ZefIContainer_var& oContainer,
                                            ZefSPPActivityNotificationDispatcher*& oDispatcher) {
  ZefBaseUnknown* const activity = GetImpl(0);
  if (!activity) return E_FAIL;
  const ZefISpecObject_var feature = activity;
  if (feature) feature->GetFeatContainer(oContainer);
  const ZefISPPActivityModificationEvents_var events = activity;
  if (!events || !oContainer) return E_FAIL;
  oDispatcher = events->GetDispatcher();
  return oDispatcher ? S_OK : E_FAIL;
}

HRESULT TuvEUpdateManufAssly::AddUpdateCallback() {
  ZefIContainer_var container;
  ZefSPPActivityNotificationDispatcher* dispatcher = nullptr;
  if (Failed(FindPublisher(container, dispatcher))) return E_FAIL;
  _UpdateAsslyCB = static_cast<std::int32_t>(
      AddCallback(this, dispatcher, dispatcher->GetSPPViewsChange(),
                  {this, &TuvEUpdateManufAssly::UpdateAutoManufAsslyCB}, nullptr));
  return S_OK;
}

// The subscriber named here is not the one that subscribed; the identifier decides.
HRESULT TuvEUpdateManufAssly::RemoveUpdateCallback() {
  ZefIContainer_var container;
  ZefSPPActivityNotificationDispatcher* dispatcher = nullptr;
  if (Failed(FindPublisher(container, dispatcher))) return E_FAIL;
  RemoveCallback(container->GetImpl(0), dispatcher, _UpdateAsslyCB);
  _UpdateAsslyCB = 0;
  return S_OK;
}

HRESULT TuvEUpdateManufAssly::AddWeldColorUpdateCallback() {
  ZefIContainer_var container;
  ZefSPPActivityNotificationDispatcher* dispatcher = nullptr;
  if (Failed(FindPublisher(container, dispatcher))) return E_FAIL;
  AddCallback(container->GetImpl(0), dispatcher, dispatcher->GetSPPViewsChange(),
              &TuvEUpdateManufAssly::ShowWeldsUnassigned, nullptr);
  return S_OK;
}

HRESULT TuvEUpdateManufAssly::ReturnZefCallbackStatus(long& oCallback) {
  oCallback = _UpdateAsslyCB;
  return S_OK;
}

void TuvEUpdateManufAssly::UpdateAutoManufAsslyCB(const char*, void*,
                                                  ZefNotification* iNotification, void*, long) {
  ZefSPPActivityNotification* notification = ActivityNotification(iNotification);
  if (!notification) return;
  switch (notification->GetNotificationKind()) {
    case ZefSPPActivityNotification::ItemRemoved:
      return HandleDragOfAssignedItems(notification);
    case ZefSPPActivityNotification::ItemFirstAssigned:
      return HandleDropOfFirstAssignedItems(notification);
    case ZefSPPActivityNotification::LinkRemoved:
      return RemoveProductLink(notification);
    case ZefSPPActivityNotification::FlowCreated:
    case ZefSPPActivityNotification::OutputCreated:
      return CreateProductLink(notification);
    default:
      return;
  }
}

void TuvEUpdateManufAssly::UpdateWeldColorCallback(const char* iEvent, void* iPublisher,
                                                   ZefNotification* iNotification, void* iData,
                                                   long iCallback) {
  ShowWeldsUnassigned(iEvent, iPublisher, iNotification, iData, iCallback);
}

void TuvEUpdateManufAssly::ShowWeldsUnassigned(const char*, void*, ZefNotification* iNotification,
                                               void*, long) {
  ZefSPPActivityNotification* const notification = ActivityNotification(iNotification);
  if (!notification) return;
  if (notification->GetNotificationKind() != ZefSPPActivityNotification::LinkRemoved) return;
  const ZefISPPActivity_var activity = notification->GetSon();
  if (!activity) return;
  Received<ZefListValZefBaseUnknown_var> welds;
  TuvBIWServices::GetWeldFromActivity(activity, welds.Out(), 0, 0);
  for (const auto& weld : Each<TuvIBIWFastener>(welds.Get())) ShowUnassigned(*weld);
}

ZefUnicodeString TuvEUpdateManufAssly::GetNameOfActivity(ZefBaseUnknown* iObject) {
  const ZefISPPAbstractActivity_var activity = iObject;
  return activity ? activity->GetLabel() : ZefUnicodeString();
}

ZefUnicodeString TuvEUpdateManufAssly::GetType(ZefBaseUnknown* iObject) {
  return iObject ? iObject->IsA() : "";
}
