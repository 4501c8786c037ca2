#pragma once

#include <vector>

#include "embedded/scene/Viewer.h"
#include "host/component/Handle.h"
#include "host/dialog/ZefApplicationFrame.h"
#include "host/dialog/ZefFrmLayout.h"
#include "host/dialog/ZefFrmWindow.h"

namespace embedded {

// The window of the edited document, with the main viewer.
class MainWindow : public ZefFrmWindow {
 public:
  MainWindow() : viewer_(Make<Viewer>()) {}
  Zef3DViewer* GetViewer() override;
  Viewer& OwnViewer() const { return *viewer_; }

 private:
  Handle<Viewer> viewer_;
};

// The application's windows: the main one, and further ones while they are open. One of them is
// active, the main one unless another was activated.
class WindowFrame : public ZefApplicationFrame {
 public:
  WindowFrame() : main_(Make<MainWindow>()) {}
  ZefFrmWindow* GetMainWindow() override;

  MainWindow& Main() const { return *main_; }
  ZefFrmWindow* Active() const;
  // Nothing for a window that is not open.
  void Activate(ZefFrmWindow* iWindow);

  // Takes the window over with its creation reference; nothing for null.
  void Open(ZefFrmWindow* iWindow);
  // Closes a further window as its user does: it is told, then the frame gives its reference back.
  void Close(ZefFrmWindow* iWindow);
  void CloseFurtherWindows();
  const std::vector<Handle<ZefFrmWindow>>& FurtherWindows() const { return further_; }

  // Frees the dialogs that were closed.
  void FreeClosedDialogs();

 private:
  bool IsOpen(const ZefFrmWindow* window) const;

  Handle<MainWindow> main_;
  std::vector<Handle<ZefFrmWindow>> further_;
  ZefFrmWindow* active_ = nullptr;
};

// Leads to the frame's active window.
class Layout : public ZefFrmLayout {
 public:
  // The frame outlives the layout's use.
  explicit Layout(const WindowFrame& iFrame) : frame_(iFrame) {}
  ZefFrmWindow* GetCurrentWindow() override;

 private:
  const WindowFrame& frame_;
};

}  // namespace embedded
