#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

extern const _GUID IID_ZefIAsmGraphicProperties;

// The colour that an assembly gives an object: 0 to 255 each, all 255 for none of its own.
class ZefIAsmGraphicProperties : public Interface<ZefIAsmGraphicProperties> {
 public:
  static constexpr char Name[] = "ZefIAsmGraphicProperties";

  virtual HRESULT GetColor(int& oRed, int& oGreen, int& oBlue) = 0;
};

using ZefIAsmGraphicProperties_var = Handle<ZefIAsmGraphicProperties>;
