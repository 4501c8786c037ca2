#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"
#include "host/values/SEQUENCE_ZefBaseUnknown_ptr.h"

extern const _GUID IID_ZefIContainer;

// A container of features, listed by the interface that they answer.
class ZefIContainer : public Interface<ZefIContainer> {
 public:
  static constexpr char Name[] = "ZefIContainer";

  // Appends every member that answers the interface named `iType`, in creation order, with one
  // reference each for the receiver; what the sequence held stays. A member stands there as the
  // pointer that a query by that name answers: the interface asked for, not the identity. The
  // container of a process root lists the root activity first, then every other activity.
  virtual HRESULT ListMembersHere(const char* iType, _SEQUENCE_ZefBaseUnknown_ptr& ioMembers) = 0;
};

using ZefIContainer_var = Handle<ZefIContainer>;
