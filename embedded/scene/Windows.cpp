#include "embedded/scene/Windows.h"

#include <algorithm>

#include "host/component/FaultPoint.h"
#include "host/dialog/ZefDlgNotify.h"

namespace embedded {

Zef3DViewer* MainWindow::GetViewer() { return FaultPoint::Strikes() ? nullptr : viewer_.Get(); }

ZefFrmWindow* WindowFrame::GetMainWindow() { return FaultPoint::Strikes() ? nullptr : main_.Get(); }

ZefFrmWindow* WindowFrame::Active() const { return active_ ? active_ : main_.Get(); }

bool WindowFrame::IsOpen(const ZefFrmWindow* window) const {
  return std::find(further_.begin(), further_.end(), window) != further_.end();
}

void WindowFrame::Activate(ZefFrmWindow* iWindow) {
  if (iWindow == main_.Get()) active_ = nullptr;
  if (IsOpen(iWindow)) active_ = iWindow;
}

void WindowFrame::Open(ZefFrmWindow* iWindow) {
  if (iWindow) further_.push_back(Adopt(iWindow));
}

void WindowFrame::Close(ZefFrmWindow* iWindow) {
  const auto open = std::find(further_.begin(), further_.end(), iWindow);
  if (open == further_.end()) return;
  const Handle<ZefFrmWindow> closing = *open;
  further_.erase(open);
  if (active_ == iWindow) active_ = nullptr;
  closing->Close();
}

void WindowFrame::CloseFurtherWindows() {
  while (!further_.empty()) Close(further_.back().Get());
}

void WindowFrame::FreeClosedDialogs() {
  main_->FreeClosedDialogs();
  for (const Handle<ZefFrmWindow>& window : further_) window->FreeClosedDialogs();
  ZefDlgNotify::DestroyRequested();
}

ZefFrmWindow* Layout::GetCurrentWindow() {
  return FaultPoint::Strikes() ? nullptr : frame_.Active();
}

}  // namespace embedded
