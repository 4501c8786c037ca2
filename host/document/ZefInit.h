#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

extern const _GUID IID_ZefInit;

// Gives a document's root container.
class ZefInit : public Interface<ZefInit> {
 public:
  static constexpr char Name[] = "ZefInit";

  // The root container as that interface, with a reference for the caller; null when there is none
  // or it does not answer the interface.
  virtual ZefBaseUnknown* GetRootContainer(const char* iInterfaceName) = 0;
};

using ZefInit_var = Handle<ZefInit>;
