#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/document/ZefIContainer.h"

extern const _GUID IID_ZefISpecObject;

// A feature in the tree of features.
class ZefISpecObject : public Interface<ZefISpecObject> {
 public:
  static constexpr char Name[] = "ZefISpecObject";

  // The owning object, with a reference for the caller; null at the top. The owner of an item-link
  // feature is its activity.
  virtual ZefBaseUnknown* GetFather() = 0;
  // The container that holds the feature. The root activity's lists every activity of the process
  // and the root's own item links; every other activity has one of its own, with its item links.
  virtual HRESULT GetFeatContainer(ZefIContainer_var& oContainer) = 0;
};

using ZefISpecObject_var = Handle<ZefISpecObject>;
