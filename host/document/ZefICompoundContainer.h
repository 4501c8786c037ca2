#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/document/ZefIContainer.h"
#include "host/values/ZefUnicodeString.h"

extern const _GUID IID_ZefICompoundContainer;

// The container of a document's containers.
class ZefICompoundContainer : public Interface<ZefICompoundContainer> {
 public:
  static constexpr char Name[] = "ZefICompoundContainer";

  // The container with that identifier, with a reference for the caller, or null.
  // "TuvFPPContainer" holds the fasteners.
  virtual ZefIContainer* GetContainer(const ZefUnicodeString& iIdentifier) = 0;
};

using ZefICompoundContainer_var = Handle<ZefICompoundContainer>;
