#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/values/ZefUnicodeString.h"

extern const _GUID IID_ZefIIPDAdapter;

// Objects of the external process database, as seen from a document. What it knows of fasteners is
// asked of the feature container (TuvIBIWFeatureContainer), by a null feature for a fastener that
// is none.
class ZefIIPDAdapter : public Interface<ZefIIPDAdapter> {
 public:
  static constexpr char Name[] = "ZefIIPDAdapter";

  // The database object of an activity, with a reference for the caller; E_FAIL when it has none.
  virtual HRESULT GetIPDObject(const ZefBaseUnknown_var& iActivity, IUnknown*& oObject) = 0;
  // With a reference for the caller.
  virtual HRESULT GetObjectFromID(const ZefUnicodeString& iIdentifier, IUnknown*& oObject) = 0;
  virtual HRESULT GetObjectID(IUnknown* iObject, ZefUnicodeString& oIdentifier) = 0;
  // The object as a base process, with a reference for the caller; E_FAIL when it is none.
  virtual HRESULT GetBaseProcess(IUnknown* iParent, IUnknown*& oBase) = 0;
  // A new text that the caller deletes, or null.
  virtual HRESULT GetIDString(IUnknown* iObject, ZefUnicodeString*& oIdentifier) = 0;
};

using ZefIIPDAdapter_var = Handle<ZefIIPDAdapter>;
