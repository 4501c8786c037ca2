#pragma once

#include "host/values/ZefListValZefBaseUnknown_var.h"

// A set of objects of an editor. It holds a reference on each element.
class ZefSelectionSet : public ZefBaseUnknown {
 public:
  // Nothing for null.
  void AddElement(ZefBaseUnknown* iElement);
  // Nothing when it is no element. `iMode` is 0.
  void RemoveElement(ZefBaseUnknown* iElement, int iMode);
  void Empty() { elements_.RemoveAll(); }

  const ZefListValZefBaseUnknown_var& Elements() const { return elements_; }

  static const char* ClassName() { return "ZefSelectionSet"; }
  static ZefMetaClass* MetaObject();
  ZefMetaClass* GetMetaObject() const override { return MetaObject(); }

 private:
  ZefListValZefBaseUnknown_var elements_;
};
