#pragma once

#include <memory>

#include "services/TuvBIWServices.h"

// Releases the elements of a list, then frees the list.
struct ReleaseUnknowns {
  void operator()(ZefListPtrIUnknown* objects) const {
    TuvBIWServices::ClearUnknownList(objects);
    delete objects;
  }
};
using UnknownList = std::unique_ptr<ZefListPtrIUnknown, ReleaseUnknowns>;
