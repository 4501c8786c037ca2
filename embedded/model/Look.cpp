#include "embedded/model/Look.h"

#include "host/component/FaultPoint.h"
#include "host/visu/ZefModifyVisProperties.h"

namespace embedded {

namespace {

constexpr int kShowAttribute = 7;

void RemoveChildren(Zef3DRep* rep) {
  if (auto* const bag = dynamic_cast<Zef3DBagRep*>(rep)) bag->RemoveAllChildren();
}

}  // namespace

void Look::Empty() {
  RemoveChildren(main_.Get());
  RemoveChildren(further_.Get());
}

Zef3DRep* Look::Main() {
  if (!represented_ || FaultPoint::Strikes()) return nullptr;
  if (!main_ && !custom_) {
    main_ = Make<Zef3DBagRep>();
    if (main_ && colour_[0] >= 0) main_->SetColor(colour_[0], colour_[1], colour_[2], 255);
  }
  return main_.Get();
}

Zef3DRep* Look::Further() {
  if (!represented_ || FaultPoint::Strikes()) return nullptr;
  const bool isUnused = further_ && further_->ReferenceCount() == 1 && further_->Parents().empty();
  if (!further_ || isUnused || further_->WasDestroyed()) {
    further_ = Make<Zef3DBagRep>();
  }
  return further_.Get();
}

HRESULT Look::Read(ZefVisPropertiesValues& oValues, int iType) const {
  if (iType != kShowAttribute || FaultPoint::Strikes()) return E_FAIL;
  oValues = values_;
  return S_OK;
}

HRESULT Look::Apply(const ZefNotification& iChange) {
  const auto* const change = dynamic_cast<const ZefModifyVisProperties*>(&iChange);
  if (!change || change->GetType() != kShowAttribute || FaultPoint::Strikes()) return E_FAIL;
  values_ = change->GetValues();
  return S_OK;
}

void Look::SetColour(int iRed, int iGreen, int iBlue) {
  colour_ = {iRed, iGreen, iBlue};
  if (main_) main_->SetColor(iRed, iGreen, iBlue, 255);
}

}  // namespace embedded
