#include "services/TuvBIWActivityIntelligenceServices.h"

#include "host/fastening/TuvIBIWActivityCurveFastening.h"
#include "host/fastening/TuvIBIWActivityWelding.h"
#include "host/values/Each.h"
#include "services/Received.h"
#include "services/TuvBIWServices.h"

namespace {

template <class Kind>
bool UpdateAs(ZefBaseUnknown* activity) {
  const Handle<Kind> ofKind = activity;
  if (ofKind) ofKind->UpdateCycleTime();
  return static_cast<bool>(ofKind);
}

bool Update(ZefBaseUnknown* activity) {
  const bool welds = UpdateAs<TuvIBIWActivityWelding>(activity);
  const bool makesSeams = UpdateAs<TuvIBIWActivityCurveFastening>(activity);
  return welds || makesSeams;
}

}  // namespace

TuvBIWActivityIntelligenceServices::TuvBIWActivityIntelligenceServices() = default;
TuvBIWActivityIntelligenceServices::~TuvBIWActivityIntelligenceServices() = default;

HRESULT TuvBIWActivityIntelligenceServices::UpdateCycleTimeForWelding(ZefISPPActivity* iActivity) {
  if (!iActivity) return E_FAIL;
  return Update(iActivity) ? S_OK : E_FAIL;
}

HRESULT TuvBIWActivityIntelligenceServices::UpdateAllCycleTimeActivities() {
  Received<ZefListValZefBaseUnknown_var> activities;
  TuvBIWServices::GetListOfAllActivities(activities.Out(), nullptr);
  if (!activities) return E_FAIL;
  for (const auto& activity : Each<ZefBaseUnknown>(activities.Get())) Update(activity);
  return S_OK;
}
