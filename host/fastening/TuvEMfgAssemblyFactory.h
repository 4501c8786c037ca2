#pragma once

#include "host/component/Result.h"

class TuvIMfgAssembly;
class ZefDocument;

// Creates manufacturing assemblies in a document; null stands for the current editor's, or for none
// when there is no editor.
class TuvEMfgAssemblyFactory {
 public:
  explicit TuvEMfgAssemblyFactory(ZefDocument* iDocument) : document_(iDocument) {}

  // With a reference for the caller.
  HRESULT CreateMfgAssembly(TuvIMfgAssembly** oAssembly);

 private:
  ZefDocument* document_;
};
