#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/document/ZefIPointingHolder.h"

class ZefDocument;

extern const _GUID IID_ZefILinkableObject;

// An object that features can point at.
class ZefILinkableObject : public Interface<ZefILinkableObject> {
 public:
  static constexpr char Name[] = "ZefILinkableObject";

  // With a reference for the caller; null when nothing points at the object.
  virtual ZefIPointingHolder* GetPointingHolder() = 0;
  // The document that holds the object, no reference taken; may be null.
  virtual ZefDocument* GetDocument() = 0;
};

using ZefILinkableObject_var = Handle<ZefILinkableObject>;
