#pragma once

#include <memory>

#include "host/fastening/TuvIMfgAssembly.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"

// The manufacturing assemblies that are the products of outputs, in order. Anything else in the
// list is left out.
ZefListValZefBaseUnknown_var AssembliesBehind(const ZefListValZefBaseUnknown_var& iOutputs);

// The manufacturing assemblies of a list, in order.
ZefListValZefBaseUnknown_var AssembliesAmong(const ZefListValZefBaseUnknown_var& iObjects);

// Direct children; null when the assembly has no list of them, and for null.
std::unique_ptr<ZefListValZefBaseUnknown_var> ChildrenOf(const TuvIMfgAssembly_var& iAssembly);

// Has the panels show the assembly anew.
void Redraw(const TuvIMfgAssembly_var& iAssembly);
