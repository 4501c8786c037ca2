#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/values/ZefListPtrIUnknown.h"

extern const _GUID IID_ZefIIPDDataMgt;

// The hierarchy of the external process database. While anyone holds the object of a process, every
// operation answers this one for it: walks to the root end at an object that they met already.
class ZefIIPDDataMgt : public Interface<ZefIIPDDataMgt> {
 public:
  static constexpr char Name[] = "ZefIIPDDataMgt";

  // A new list that the caller deletes, with one reference per element for the caller, or null.
  // `iMode` is 0.
  virtual HRESULT ListParents(IUnknown* iObject, ZefListPtrIUnknown*& oParents, int iMode) = 0;
};

using ZefIIPDDataMgt_var = Handle<ZefIIPDDataMgt>;
