#pragma once

#include <string>

#include "host/component/PlatformClass.h"
#include "host/dialog/ZefCommand.h"
#include "host/values/ZefUnicodeString.h"

class ZefFrmWindow;

// A message that waits for the user. Create it with new: the parent window owns it from the start
// and frees it once it was closed; a dialog without parent is freed after its destruction was
// requested.
class ZefDlgNotify : public PlatformClass<ZefDlgNotify, ZefCommand> {
 public:
  static constexpr char Name[] = "ZefDlgNotify";

  ZefDlgNotify(ZefFrmWindow* iParent, const char* iName, unsigned int iStyle);

  // Shows the message until the user closes it.
  int DisplayBlocked(const ZefUnicodeString& iMessage, const ZefUnicodeString& iTitle);
  // 2 hides the dialog.
  void SetVisibility(int iVisibility) { visibility_ = iVisibility; }
  int GetVisibility() const { return visibility_; }
  // Destroys the dialog once the calls that are under way have returned.
  void RequestDelayedDestruction();

  bool IsClosed() const { return closed_; }

  // Frees the parentless dialogs whose destruction was requested; for the application's idle time.
  static void DestroyRequested();

 private:
  ZefFrmWindow* parent_;
  std::string name_;
  unsigned int style_;
  int visibility_ = 1;
  bool closed_ = false;
  bool requested_ = false;
};
