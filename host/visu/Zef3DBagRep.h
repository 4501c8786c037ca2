#pragma once

#include <memory>

#include "host/values/Geometry.h"
#include "host/visu/Zef3DRep.h"

// A node that holds further representations, with a place of its own.
class Zef3DBagRep : public Zef3DRep {
 public:
  ~Zef3DBagRep() override;

  list<Zef3DRep>* GetChildren() override;
  // Takes a reference of its own; nothing for null and for a bag that this one hangs under.
  void AddChild(Zef3DRep* iChild);
  // Gives the reference of one occurrence back; nothing when it is no child.
  void RemoveChild(Zef3DRep* iChild);
  void RemoveAllChildren();

  void SetMatrix(const Zef4x4Matrix& iMatrix) { matrix_ = iMatrix; }
  const Zef4x4Matrix& GetMatrix() const { return matrix_; }

  static const char* ClassName() { return "Zef3DBagRep"; }
  static ZefMetaClass* MetaObject();
  ZefMetaClass* GetMetaObject() const override { return MetaObject(); }

 private:
  // Whether `iRep` is this bag or a bag above it.
  bool HangsUnder(const Zef3DRep* iRep) const;

  std::unique_ptr<list<Zef3DRep>> children_;
  Zef4x4Matrix matrix_;
};
