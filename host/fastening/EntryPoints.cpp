#include "host/HostApplication.h"
#include "host/fastening/TuvEMfgAssemblyFactory.h"
#include "host/fastening/TuvKelBIWSettingsServices.h"

HRESULT TuvEMfgAssemblyFactory::CreateMfgAssembly(TuvIMfgAssembly** oAssembly) {
  if (!oAssembly) return E_FAIL;
  return HostApplication::Installed().CreateMfgAssembly(document_, oAssembly);
}

HRESULT TuvKelBIWSettingsServices::GetPartLoadConstraint(unsigned char& oOn) {
  return HostApplication::Installed().PartLoadConstraint(oOn);
}
