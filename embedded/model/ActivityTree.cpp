#include <algorithm>
#include <memory>

#include "embedded/model/Activity.h"
#include "host/values/FetchAhead.h"

namespace embedded {

namespace {

// What a walk of the tree reads of an activity, which may have ended.
void FetchPlace(const void* activity) {
  FetchBytes(activity, sizeof(ZefISPPActivity) + sizeof(WithheldInterfaces) + sizeof(TreePlace));
}

}  // namespace

void Activity::AddChild(Activity& ioChild) {
  ioChild.parent_ = this;
  children_.push_back(&ioChild);
  if (!parent_ || !parent_->parent_) return;
  Activity* const above = parent_->parent_;
  auto& below = above->below_;
  const auto free = std::find(below.begin(), below.end(), above);
  if (free != below.end()) *free = &ioChild;
}

// A walk of the tree goes on with the children. Memory comes later than that, so that those further
// down must be named already.
void Activity::FetchBelow() const {
  for (const Activity* const child : FirstFew(children_)) FetchPlace(child);
  for (const void* const below : below_) FetchPlace(below);
}

HRESULT Activity::GetParentActivity(ZefISPPAbstractActivity_var& oParent) {
  if (FaultPoint::Strikes()) return E_FAIL;
  oParent = parent_ ? ZefISPPAbstractActivity_var(parent_->Identity()) : nullptr;
  return S_OK;
}

ZefListValZefBaseUnknown_var* Activity::GetChildren(const ZefUnicodeString& iType) {
  if (FaultPoint::Strikes()) return nullptr;
  const std::size_t size = children_.size();
  auto children = std::make_unique<ZefListValZefBaseUnknown_var>(static_cast<int>(size));
  for (std::size_t i = 0; i < size; ++i) {
    FetchAhead(children_, i);
    Activity* const child = children_[i];
    child->FetchBelow();
    if (iType == "" || child->GetMetaObject()->IsAKindOf(iType)) {
      children->Append(child->Identity());
    }
  }
  return children.release();
}

ZefBaseUnknown* Activity::GetFather() {
  if (!parent_ || FaultPoint::Strikes()) return nullptr;
  return ZefBaseUnknown_var(parent_->Identity()).Detach();
}

std::vector<const Activity*> Activity::OwnScope() const {
  std::vector<const Activity*> scope{this};
  for (const Activity* const child : children_) {
    if (!child->IsStation()) scope.push_back(child);
  }
  return scope;
}

}  // namespace embedded
