#pragma once

#include "frame/Export.h"
#include "host/component/Dictionary.h"
#include "host/component/ZefBaseUnknown.h"

extern TUV_EXPORT const _GUID IID_TuvIBIWSetup;

// The set-up of a body-in-white workshop. The library declares the interface for those who
// implement it and has no operation of it.
class TUV_EXPORT TuvIBIWSetup : public ZefBaseUnknown {
 public:
  using BaseInterface = ZefBaseUnknown;
  using QueriedAs = TuvIBIWSetup;

  static ZefMetaClass* MetaObject();
  static const _GUID& ClassId();
  static const char* ClassName();
  static const _GUID& InterfaceId() { return IID_TuvIBIWSetup; }

  // Null until the interface is first described.
  static ZefMetaClass* meta_object;
};
