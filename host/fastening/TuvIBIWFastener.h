#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"
#include "host/values/ZefUnicodeString.h"

extern const _GUID IID_TuvIBIWFastener;

// A weld or another fastener.
class TuvIBIWFastener : public Interface<TuvIBIWFastener> {
 public:
  static constexpr char Name[] = "TuvIBIWFastener";

  // The object that stands for the fastener in the product, no reference taken; null for a fastener
  // that is not shown.
  virtual HRESULT GetRepresentedObject(ZefBaseUnknown*& oObject) = 0;
  // 4 is the assigned look, 1 the unassigned one. `iFlag` is 1.
  virtual HRESULT SetDisplayStatus(int iStatus, int iFlag) = 0;
  // The parts that the fastener joins.
  virtual HRESULT GetJointedParts(ZefListValZefBaseUnknown_var& oParts) = 0;
  virtual HRESULT GetFastenerType(ZefUnicodeString& oType) = 0;
};

using TuvIBIWFastener_var = Handle<TuvIBIWFastener>;
