#pragma once

#include "host/component/PlatformClass.h"
#include "host/dialog/ZefEventSubscriber.h"

// An element of the command tree: windows and dialogs.
class ZefCommand : public PlatformClass<ZefCommand, ZefEventSubscriber> {
 public:
  static constexpr char Name[] = "ZefCommand";

  // The father is not counted.
  explicit ZefCommand(ZefCommand* iFather = nullptr) : father_(iFather) {}

  ZefCommand* GetFather() { return father_; }
  void SetFather(ZefCommand* iFather) { father_ = iFather; }

  // Hands the notification to `iTo`; nothing for null.
  void SendNotification(ZefCommand* iTo, ZefNotification* iNotification);

 private:
  ZefCommand* father_;
};
