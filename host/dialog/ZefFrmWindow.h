#pragma once

#include <string>
#include <vector>

#include "host/component/Handle.h"
#include "host/component/PlatformClass.h"
#include "host/dialog/ZefCommand.h"

class Zef3DViewer;
class ZefDlgNotify;

// A window of the application frame. It owns the dialogs that were opened over it and frees each
// once it was closed.
class ZefFrmWindow : public PlatformClass<ZefFrmWindow, ZefCommand> {
 public:
  static constexpr char Name[] = "ZefFrmWindow";

  explicit ZefFrmWindow(ZefCommand* iFather = nullptr);
  ~ZefFrmWindow() override;

  // No reference taken; null for a window without 3D view.
  virtual Zef3DViewer* GetViewer() { return nullptr; }
  // A further window on the same content, which the frame owns; null when the window cannot be
  // duplicated.
  virtual ZefFrmWindow* DuplicateWindow() { return nullptr; }

  void SetBaseName(const char* iName) { baseName_ = iName ? iName : ""; }
  const char* GetBaseName() const { return baseName_.c_str(); }

  // Sent to the window when the user closes it; one per window.
  ZefNotification* GetMDICloseNotification() { return closeNotification_.Get(); }
  // What the frame does when the user closes the window.
  void Close();

  // Takes the dialog over with its creation reference.
  void OwnDialog(ZefDlgNotify* iDialog);
  // For the application's idle time.
  void FreeClosedDialogs();

 private:
  std::string baseName_;
  Handle<ZefNotification> closeNotification_;
  std::vector<Handle<ZefDlgNotify>> dialogs_;
};
