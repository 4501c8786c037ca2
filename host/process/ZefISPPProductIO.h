#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/process/ZefISPPItem.h"

extern const _GUID IID_ZefISPPProductIO;

// A product output or input of an activity. The class of an output is named "ProductOutput": by
// that name alone (IsA) a removed output is told from a removed item.
class ZefISPPProductIO : public Interface<ZefISPPProductIO> {
 public:
  static constexpr char Name[] = "ZefISPPProductIO";

  // With a reference for the caller; null before a product is set. A removed output still answers.
  virtual HRESULT GetProduct(ZefBaseUnknown*& oProduct) = 0;
  // Gives the output its product, which is notified as kind 39 (father activity, son output).
  virtual HRESULT SetProduct(const ZefISPPItem_var& iItem) = 0;
};

using ZefISPPProductIO_var = Handle<ZefISPPProductIO>;
