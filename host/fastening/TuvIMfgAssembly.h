#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"
#include "host/values/ZefUnicodeString.h"

extern const _GUID IID_TuvIMfgAssembly;

// A manufacturing assembly: an intermediate product that groups parts and other assemblies. It
// answers ZefISPPItem, ZefIProduct, ZefINavigateObject and ZefILinkableObject, too: without the
// first it is neither output nor handed on, and without the last no consumer of it is found.
class TuvIMfgAssembly : public Interface<TuvIMfgAssembly> {
 public:
  static constexpr char Name[] = "TuvIMfgAssembly";

  virtual HRESULT SetName(const ZefUnicodeString& iName) = 0;
  virtual ZefUnicodeString GetName() = 0;
  // A new list that the caller deletes; null or empty when there are no children.
  virtual HRESULT GetChildren(ZefListValZefBaseUnknown_var*& oChildren) = 0;
  // A child that is there already changes nothing. E_FAIL for null, the assembly itself and an
  // assembly that contains it.
  virtual HRESULT AddChild(const ZefBaseUnknown_var& iChild) = 0;
  // E_FAIL when it is no child.
  virtual HRESULT RemoveChild(const ZefBaseUnknown_var& iChild) = 0;
};

using TuvIMfgAssembly_var = Handle<TuvIMfgAssembly>;
