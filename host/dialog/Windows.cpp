#include "host/HostApplication.h"
#include "host/component/DescribeClass.h"
#include "host/component/FaultPoint.h"
#include "host/dialog/ZefApplicationFrame.h"
#include "host/dialog/ZefDlgNotify.h"
#include "host/dialog/ZefFrmLayout.h"
#include "host/dialog/ZefFrmWindow.h"
#include "host/dialog/ZefGetEnv.h"
#include "host/dialog/ZefInventorySpaceWnd.h"
#include "host/visu/Zef3DViewer.h"
#include "host/visu/ZefVisManager.h"

ZefApplicationFrame* ZefApplicationFrame::GetFrame() {
  return HostApplication::Installed().Frame();
}

ZefFrmLayout* ZefFrmLayout::GetCurrentLayout() {
  return HostApplication::Installed().CurrentLayout();
}

const char* ZefGetEnv(const char* iName) { return HostApplication::Installed().Environment(iName); }

ZefMetaClass* ZefEventSubscriber::MetaObject() {
  static ZefMetaClass* const meta = DescribeClass<ZefEventSubscriber>(ZefBaseUnknown::MetaObject());
  return meta;
}

void ZefEventSubscriber::ReceiveNotification(ZefCommand* iFrom, ZefNotification* iNotification) {
  const Handle<ZefEventSubscriber> alive(this);
  for (std::size_t i = 0; i < reactions_.size(); ++i) {
    const Reaction reaction = reactions_[i];
    const bool awaited = reaction.notification == iNotification && !reaction.receiver.expired();
    if (awaited) reaction.run(iFrom, iNotification);
  }
}

void ZefCommand::SendNotification(ZefCommand* iTo, ZefNotification* iNotification) {
  if (iTo) iTo->ReceiveNotification(this, iNotification);
}

ZefFrmWindow::ZefFrmWindow(ZefCommand* iFather)
    : PlatformClass(iFather), closeNotification_(Make<ZefNotification>()) {}

ZefFrmWindow::~ZefFrmWindow() = default;

void ZefFrmWindow::Close() { SendNotification(this, GetMDICloseNotification()); }

void ZefFrmWindow::OwnDialog(ZefDlgNotify* iDialog) {
  FreeClosedDialogs();
  dialogs_.push_back(Adopt(iDialog));
}

void ZefFrmWindow::FreeClosedDialogs() {
  std::erase_if(dialogs_, [](const auto& dialog) { return dialog->IsClosed(); });
}

ZefInventorySpaceWnd::ZefInventorySpaceWnd(ZefFrmEditor* iEditor)
    : viewer_(Adopt(iEditor ? HostApplication::Installed().CreateViewer(this, iEditor) : nullptr)) {
}

ZefInventorySpaceWnd::~ZefInventorySpaceWnd() = default;

Zef3DViewer* ZefInventorySpaceWnd::GetViewer() {
  return FaultPoint::Strikes() ? nullptr : viewer_.Get();
}

ZefVisManager* ZefInventorySpaceWnd::GetVisManager() { return ZefVisManager::GetVisManager(); }
