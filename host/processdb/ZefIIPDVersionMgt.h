#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/values/ZefListPtrIUnknown.h"

extern const _GUID IID_ZefIIPDVersionMgt;

// The versions of objects in the external process database.
class ZefIIPDVersionMgt : public Interface<ZefIIPDVersionMgt> {
 public:
  static constexpr char Name[] = "ZefIIPDVersionMgt";

  // A new list that the caller deletes, with one reference per element for the caller, or null.
  virtual HRESULT ListRelatedVersions(IUnknown* iObject, ZefListPtrIUnknown*& oVersions) = 0;
};

using ZefIIPDVersionMgt_var = Handle<ZefIIPDVersionMgt>;
