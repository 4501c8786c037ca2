#include "embedded/model/ControlFlow.h"

#include "embedded/model/Activity.h"
#include "embedded/model/ObjectClass.h"

namespace embedded {

namespace {

class FlowEnd : public ComponentObject<ZefISPPFlowEnd> {
 public:
  explicit FlowEnd(Activity& activity) : activity_(activity.Identity()) {}
  ZefMetaClass* GetMetaObject() const override { return ObjectClass<FlowEnd>("FlowEnd"); }
  HRESULT GetActivity(ZefISPPActivity_var& oActivity) override {
    if (FaultPoint::Strikes()) return E_FAIL;
    oActivity = activity_;
    return S_OK;
  }

 private:
  ZefBaseUnknown_var activity_;
};

HRESULT GiveEnd(Activity& activity, ZefISPPFlowEnd_var& end) {
  if (FaultPoint::Strikes()) return E_FAIL;
  const Owned<FlowEnd> made = TryMakeOwned<FlowEnd>(activity);
  if (!made) return E_FAIL;
  end = made->Identity();
  return S_OK;
}

}  // namespace

ControlFlow::ControlFlow(Activity& iFrom, Activity& iTo) : from_(&iFrom), to_(&iTo) {}

ZefMetaClass* ControlFlow::GetMetaObject() const { return ObjectClass<ControlFlow>("ControlFlow"); }

HRESULT ControlFlow::GetFrom(ZefISPPFlowEnd_var& oEnd) { return GiveEnd(*from_, oEnd); }

HRESULT ControlFlow::GetTo(ZefISPPFlowEnd_var& oEnd) { return GiveEnd(*to_, oEnd); }

void ControlFlow::Connect() {
  from_->flowsOut_.push_back(this);
  to_->flowsIn_.push_back(this);
}

void ControlFlow::Disconnect() {
  std::erase(from_->flowsOut_, this);
  std::erase(to_->flowsIn_, this);
}

}  // namespace embedded
