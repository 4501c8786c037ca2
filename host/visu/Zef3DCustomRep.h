#pragma once

#include <memory>
#include <vector>

#include "host/visu/Zef3DRep.h"
#include "host/visu/ZefGraphicAttributeSet.h"
#include "host/visu/ZefGraphicPrimitive.h"

// A representation made of graphic primitives, which it owns.
class Zef3DCustomRep : public Zef3DRep {
 public:
  struct Drawn {
    std::unique_ptr<ZefGraphicPrimitive> primitive;  // never null
    ZefGraphicAttributeSet attributes;
  };

  Zef3DCustomRep() = default;
  // Takes the primitive over.
  Zef3DCustomRep(ZefGraphicPrimitive* iPrimitive, const ZefGraphicAttributeSet& iAttributes);
  ~Zef3DCustomRep() override;

  // Takes the primitive over; nothing for null.
  void AddGP(ZefGraphicPrimitive* iPrimitive, const ZefGraphicAttributeSet& iAttributes);
  const std::vector<Drawn>& Primitives() const { return primitives_; }

  static const char* ClassName() { return "Zef3DCustomRep"; }
  static ZefMetaClass* MetaObject();
  ZefMetaClass* GetMetaObject() const override { return MetaObject(); }

 private:
  std::vector<Drawn> primitives_;
};
