#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

class Zef3DRep;

extern const _GUID IID_ZefIVisu;

// An object shown in a further viewer.
class ZefIVisu : public Interface<ZefIVisu> {
 public:
  static constexpr char Name[] = "ZefIVisu";

  // A representation apart from that of the main view, made on demand, no reference taken; may be
  // null. While it hangs in one scene, a further scene that is to show the object makes a bag of
  // its own with the same children; one that is no bag hangs in both.
  virtual Zef3DRep* GetRep() = 0;
};

using ZefIVisu_var = Handle<ZefIVisu>;
