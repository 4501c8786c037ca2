#include "embedded/model/ItemLink.h"

#include <utility>

#include "embedded/model/Activity.h"
#include "embedded/model/Facets.h"
#include "embedded/model/ObjectClass.h"
#include "embedded/model/Owned.h"

namespace embedded {

ItemLink::ItemLink(Activity* iActivity, ZefBaseUnknown* iItem, int iSelector)
    : activity_(iActivity), item_(iItem), target_(ObjectAs<Linkable>(iItem)), selector_(iSelector) {
  if (target_) target_->AddLink(this);
}

ItemLink::~ItemLink() { Detach(); }

ZefMetaClass* ItemLink::GetMetaObject() const {
  return ObjectClass<ItemLink>("ActivitySpecification");
}

HRESULT ItemLink::GetSpecifiedItem(ZefBaseUnknown_var& oItem) {
  if (FaultPoint::Strikes()) return E_FAIL;
  oItem = item_;
  return S_OK;
}

ZefBaseUnknown* ItemLink::GetFather() {
  if (!activity_ || FaultPoint::Strikes()) return nullptr;
  return ZefBaseUnknown_var(activity_->Identity()).Detach();
}

HRESULT ItemLink::GetFeatContainer(ZefIContainer_var& oContainer) {
  return activity_ ? activity_->GetFeatContainer(oContainer) : E_FAIL;
}

const ItemLink::Details& ItemLink::OwnDetails() const {
  static const Details none;
  return details_ ? *details_ : none;
}

void ItemLink::SetDetails(Details iDetails) {
  const bool isPlain = !iDetails.source && iDetails.name.empty() && iDetails.fixed == 0;
  details_ = isPlain ? nullptr : std::make_unique<const Details>(std::move(iDetails));
}

void ItemLink::Detach() {
  if (target_) target_->DropLink(this);
  target_ = nullptr;
  activity_ = nullptr;
}

}  // namespace embedded
