#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"
#include "host/values/ZefUnicodeString.h"

extern const _GUID IID_ZefIProduct;

// A part or an assembly, as a reference or as an instance of one.
class ZefIProduct : public Interface<ZefIProduct> {
 public:
  static constexpr char Name[] = "ZefIProduct";

  // The reference of an instance; a reference answers itself.
  virtual HRESULT GetReferenceProduct(Handle<ZefIProduct>& oReference) = 0;
  // Direct children only.
  virtual int GetChildrenCount() = 0;
  // A new list that the caller deletes, or null: every product below, at every depth, that answers
  // the interface named `iType`. Depth first: each is followed by what lies below it, before its
  // next sibling, and is listed as often as it is met.
  virtual ZefListValZefBaseUnknown_var* GetAllChildren(const char* iType) = 0;
  virtual HRESULT GetProductText(ZefUnicodeString& oText) = 0;
  virtual ZefUnicodeString GetPartNumber() = 0;
};

using ZefIProduct_var = Handle<ZefIProduct>;
