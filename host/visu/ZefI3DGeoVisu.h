#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

class Zef3DRep;

extern const _GUID IID_ZefI3DGeoVisu;

// An object shown in 3D.
class ZefI3DGeoVisu : public Interface<ZefI3DGeoVisu> {
 public:
  static constexpr char Name[] = "ZefI3DGeoVisu";

  // The object's own representation, made on demand, no reference taken; may be null.
  virtual Zef3DRep* GetRep() = 0;
};

using ZefI3DGeoVisu_var = Handle<ZefI3DGeoVisu>;
