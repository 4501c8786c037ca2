#include "embedded/model/ControlFlow.h"

#include <algorithm>

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

void Remove(const ControlFlow* flow, FlowPlace::Neighbours& neighbours) {
  const auto isItsEnd = [flow](const Neighbour& neighbour) { return neighbour.flow == flow; };
  neighbours.erase(std::remove_if(neighbours.begin(), neighbours.end(), isItsEnd),
                   neighbours.end());
}

}  // namespace

ControlFlow::ControlFlow(Activity& iFrom, Activity& iTo) : from_(&iFrom), to_(&iTo) {}

ZefMetaClass* ControlFlow::GetMetaObject() const { return ObjectClass<ControlFlow>("ControlFlow"); }

HRESULT ControlFlow::GetFrom(ZefISPPFlowEnd_var& oEnd) { return GiveEnd(*from_, oEnd); }

HRESULT ControlFlow::GetTo(ZefISPPFlowEnd_var& oEnd) { return GiveEnd(*to_, oEnd); }

void ControlFlow::Connect() {
  from_->next_.push_back({to_.Get(), this});
  to_->previous_.push_back({from_.Get(), this});
}

void ControlFlow::Disconnect() {
  Remove(this, from_->next_);
  Remove(this, to_->previous_);
}

}  // namespace embedded
