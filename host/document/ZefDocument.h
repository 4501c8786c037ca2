#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

extern const _GUID IID_ZefDocument;

// A document. `IsAKindOf` tells its kind: "ZefProcess" or "ZefProduct".
class ZefDocument : public Interface<ZefDocument> {
 public:
  static constexpr char Name[] = "ZefDocument";

  // Answers ZefICompoundContainer; may be null.
  virtual ZefBaseUnknown_var GetCompoundContainer() = 0;
  // The environment, with a reference for the caller, or null. A document managed by the process
  // database has one whose implementation is a kind of "IPDDocEnv".
  virtual HRESULT GetDocEnvironment(ZefBaseUnknown*& oEnvironment) = 0;
};

using ZefDocument_var = Handle<ZefDocument>;
