#pragma once

#include "embedded/model/Owned.h"
#include "host/component/ComponentObject.h"
#include "host/process/ZefISPPControlFlow.h"

namespace embedded {

class Activity;

// A control flow. It holds both activities, also after it was removed.
class ControlFlow : public ComponentObject<ZefISPPControlFlow> {
 public:
  ControlFlow(Activity& iFrom, Activity& iTo);
  ZefMetaClass* GetMetaObject() const override;
  HRESULT GetFrom(ZefISPPFlowEnd_var& oEnd) override;
  HRESULT GetTo(ZefISPPFlowEnd_var& oEnd) override;

  Activity& From() const { return *from_; }
  Activity& To() const { return *to_; }
  // Enters the flow at both ends, or takes it out.
  void Connect();
  void Disconnect();

 private:
  Owned<Activity> from_;
  Owned<Activity> to_;
};

}  // namespace embedded
