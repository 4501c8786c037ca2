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

template <class List>
void MakeRoom(List& list) {
  if (list.size() == list.capacity()) list.reserve(2 * list.size() + 1);
}

void Remove(const ControlFlow* flow, std::vector<ControlFlow*>& flows, NeighbourList& neighbours) {
  const auto found = std::find(flows.begin(), flows.end(), flow);
  if (found == flows.end()) return;
  neighbours.erase(neighbours.begin() + (found - flows.begin()));
  flows.erase(found);
}

}  // namespace

ControlFlow::ControlFlow(Activity& iFrom, Activity& iTo) : from_(&iFrom), to_(&iTo) {}

ZefMetaClass* ControlFlow::GetMetaObject() const { return ObjectClass<ControlFlow>("ControlFlow"); }

HRESULT ControlFlow::GetFrom(ZefISPPFlowEnd_var& oEnd) { return GiveEnd(*from_, oEnd); }

HRESULT ControlFlow::GetTo(ZefISPPFlowEnd_var& oEnd) { return GiveEnd(*to_, oEnd); }

// All four lists have it or none.
void ControlFlow::Connect() {
  MakeRoom(from_->next_);
  MakeRoom(from_->nextFlows_);
  MakeRoom(to_->previous_);
  MakeRoom(to_->previousFlows_);
  from_->next_.push_back(to_.Get());
  from_->nextFlows_.push_back(this);
  to_->previous_.push_back(from_.Get());
  to_->previousFlows_.push_back(this);
}

void ControlFlow::Disconnect() {
  Remove(this, from_->nextFlows_, from_->next_);
  Remove(this, to_->previousFlows_, to_->previous_);
}

}  // namespace embedded
