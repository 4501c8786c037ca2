#pragma once

#include <array>
#include <vector>

#include "host/component/ZefBaseUnknown.h"
#include "host/values/List.h"

class Zef3DBagRep;

// A representation: a node of a scene. It starts with one reference for whoever created it; each
// bag that it is added to takes one of its own.
class Zef3DRep : public ZefBaseUnknown {
 public:
  // The children, counted from 0, no references taken. Null for a representation that never had
  // one, an empty list after the last was removed.
  virtual list<Zef3DRep>* GetChildren() { return nullptr; }

  // Takes the representation out of every parent at once; its memory goes with its last reference.
  void Destroy();
  bool WasDestroyed() const { return destroyed_; }
  // Computes the bounding element anew.
  void ComputeBoundingElement(int iMode);

  // Palette entry; 251 is the fixed colour of labels. Of the two ways to set a colour, the last
  // one used holds.
  void SetColor(int iPaletteIndex);
  // 0 to 255 each.
  void SetColor(int iRed, int iGreen, int iBlue, int iAlpha);
  void SetInheritanceMode(unsigned int iMode) { inheritance_ = iMode; }

  // Red, green, blue, alpha; all -1 while the colour is inherited.
  const std::array<int, 4>& GetColor() const { return color_; }
  // -1 when no palette entry was set.
  int GetPaletteIndex() const { return palette_; }
  unsigned int GetInheritanceMode() const { return inheritance_; }
  int BoundingComputations() const { return boundings_; }
  // The bags that hold the representation, one entry for each time.
  const std::vector<Zef3DBagRep*>& Parents() const { return parents_; }

  static const char* ClassName() { return "Zef3DRep"; }
  static ZefMetaClass* MetaObject();
  ZefMetaClass* GetMetaObject() const override { return MetaObject(); }

 private:
  friend class Zef3DBagRep;

  std::vector<Zef3DBagRep*> parents_;
  std::array<int, 4> color_{-1, -1, -1, -1};
  int palette_ = -1;
  unsigned int inheritance_ = 0;
  int boundings_ = 0;
  bool destroyed_ = false;
};
