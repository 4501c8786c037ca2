#pragma once

#include "host/component/Handle.h"
#include "host/visu/Zef3DRep.h"

// A temporary object that consists of a representation only.
class ZefModelForRep3D : public ZefBaseUnknown {
 public:
  // Takes a reference of its own.
  void SetRep(Zef3DRep* iRep) { rep_ = iRep; }
  Zef3DRep* GetRep() const { return rep_.Get(); }

  static const char* ClassName() { return "ZefModelForRep3D"; }
  static ZefMetaClass* MetaObject();
  ZefMetaClass* GetMetaObject() const override { return MetaObject(); }

 private:
  Handle<Zef3DRep> rep_;
};
