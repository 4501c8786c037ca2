#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/visu/ZefVisPropertiesValues.h"

extern const _GUID IID_ZefIVisProperties;

// The visual properties of an object.
class ZefIVisProperties : public Interface<ZefIVisProperties> {
 public:
  static constexpr char Name[] = "ZefIVisProperties";

  // Property type 7 is the show attribute. The last three arguments are 0.
  virtual HRESULT GetPropertiesAtt(ZefVisPropertiesValues& oValues, int iType, int iReserved1,
                                   int iReserved2, int iReserved3) = 0;
};

using ZefIVisProperties_var = Handle<ZefIVisProperties>;
