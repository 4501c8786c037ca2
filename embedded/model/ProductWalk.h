#pragma once

#include "host/values/ZefListValZefBaseUnknown_var.h"

namespace embedded {

// The direct children of a product or an assembly; none for any other object.
ZefListValZefBaseUnknown_var ChildrenBelow(const ZefBaseUnknown* iObject);

// A new list that the caller deletes: everything below, parents before their children, that answers
// the interface named `iType`. An object on the current path is not entered again.
ZefListValZefBaseUnknown_var* ListAllBelow(const ZefBaseUnknown* iObject, const char* iType);

}  // namespace embedded
