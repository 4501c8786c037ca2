#include "embedded/model/ProductOutput.h"

#include "embedded/events/Notifications.h"
#include "embedded/model/Activity.h"
#include "embedded/model/MfgAssembly.h"
#include "embedded/model/ObjectClass.h"

namespace embedded {

ProductOutput::~ProductOutput() { Leave(); }

ZefMetaClass* ProductOutput::GetMetaObject() const {
  return ObjectClass<ProductOutput>("ProductOutput");
}

HRESULT ProductOutput::GetProduct(ZefBaseUnknown*& oProduct) {
  if (FaultPoint::Strikes()) return E_FAIL;
  oProduct = ZefBaseUnknown_var(product_).Detach();
  return S_OK;
}

HRESULT ProductOutput::SetProduct(const ZefISPPItem_var& iItem) {
  if (!iItem || FaultPoint::Strikes()) return E_FAIL;
  Produce(iItem);
  return S_OK;
}

void ProductOutput::Produce(const ZefBaseUnknown_var& iProduct) {
  Hold(iProduct);
  if (!activity_) return;
  Notify(activity_->GetOwnDispatcher(), ZefSPPActivityNotification::OutputCreated,
         activity_->Identity(), Identity());
}

void ProductOutput::Hold(const ZefBaseUnknown_var& iProduct) {
  if (auto* const former = ObjectAs<MfgAssembly>(product_.Get())) former->DropProducer(this);
  product_ = iProduct;
  auto* const assembly = ObjectAs<MfgAssembly>(product_.Get());
  if (assembly && activity_) assembly->AddProducer(this);
}

void ProductOutput::Leave() {
  activity_ = nullptr;
  if (auto* const assembly = ObjectAs<MfgAssembly>(product_.Get())) assembly->DropProducer(this);
}

}  // namespace embedded
