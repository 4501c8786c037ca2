#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"

extern const _GUID IID_TuvIBIWItemInfo;

// What goes into and out of a BIW activity. Stations alone answer it, neither the operations in
// them nor the root: whoever answers it is taken for a station that may own assemblies. Every
// operation appends what the list does not hold yet. Inputs are those of the activity and of the
// operations directly below it, no deeper, and not those of BIW activities below it.
class TuvIBIWItemInfo : public Interface<TuvIBIWItemInfo> {
 public:
  static constexpr char Name[] = "TuvIBIWItemInfo";

  // As ZefISPPProductIO.
  virtual HRESULT GetProductOutputs(ZefListValZefBaseUnknown_var& ioList) = 0;
  // Mode 0: the outputs as ZefISPPProductIO; mode 1: their products, outputs without one left out.
  virtual HRESULT GetOutputs(ZefListValZefBaseUnknown_var& ioList, int iMode) = 0;
  // As ZefISPPProductIO.
  virtual HRESULT GetOutputProductIOs(ZefListValZefBaseUnknown_var& ioList) = 0;
  // First-assigned products and manufacturing assemblies, never fasteners.
  virtual HRESULT GetInputItems(ZefListValZefBaseUnknown_var& ioList) = 0;
  virtual HRESULT GetFirstAssignedInputs(ZefListValZefBaseUnknown_var& ioList) = 0;
};

using TuvIBIWItemInfo_var = Handle<TuvIBIWItemInfo>;
