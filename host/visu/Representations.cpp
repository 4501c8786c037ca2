#include <algorithm>
#include <cstdlib>
#include <set>
#include <utility>

#include "host/component/Allocation.h"
#include "host/component/DescribeClass.h"
#include "host/component/FaultPoint.h"
#include "host/component/Handle.h"
#include "host/visu/Zef3DAnnotationTextGP.h"
#include "host/visu/Zef3DBagRep.h"
#include "host/visu/Zef3DCustomRep.h"

ZefMetaClass* Zef3DRep::MetaObject() {
  static ZefMetaClass* const meta = DescribeClass<Zef3DRep>(ZefBaseUnknown::MetaObject());
  return meta;
}

ZefMetaClass* Zef3DBagRep::MetaObject() {
  static ZefMetaClass* const meta = DescribeClass<Zef3DBagRep>(Zef3DRep::MetaObject());
  return meta;
}

ZefMetaClass* Zef3DCustomRep::MetaObject() {
  static ZefMetaClass* const meta = DescribeClass<Zef3DCustomRep>(Zef3DRep::MetaObject());
  return meta;
}

void Zef3DRep::Destroy() {
  const Handle<Zef3DRep> alive(this);
  destroyed_ = true;
  while (!parents_.empty()) parents_.back()->RemoveChild(this);
}

void Zef3DRep::ComputeBoundingElement(int) { ++boundings_; }

void Zef3DRep::SetColor(int iPaletteIndex) {
  palette_ = iPaletteIndex;
  color_.fill(-1);
}

void Zef3DRep::SetColor(int iRed, int iGreen, int iBlue, int iAlpha) {
  color_ = {iRed, iGreen, iBlue, iAlpha};
  palette_ = -1;
}

Zef3DBagRep::~Zef3DBagRep() { RemoveAllChildren(); }

list<Zef3DRep>* Zef3DBagRep::GetChildren() {
  return FaultPoint::Strikes() ? nullptr : children_.get();
}

void Zef3DBagRep::AddChild(Zef3DRep* iChild) {
  if (!iChild || HangsUnder(iChild)) return;
  if (!children_) children_ = std::make_unique<list<Zef3DRep>>();
  children_->Append(Handle<Zef3DRep>(iChild).Detach());
  iChild->parents_.push_back(this);
}

void Zef3DBagRep::RemoveChild(Zef3DRep* iChild) {
  const int index = children_ && iChild ? children_->Locate(iChild) : -1;
  if (index < 0) return;
  children_->RemoveIndex(index);
  const Handle<Zef3DRep> removed = Adopt(iChild);
  auto& parents = iChild->parents_;
  parents.erase(std::find(parents.begin(), parents.end(), this));
}

void Zef3DBagRep::RemoveAllChildren() {
  while (children_ && children_->Size() > 0) RemoveChild((*children_)[children_->Size() - 1]);
}

bool Zef3DBagRep::HangsUnder(const Zef3DRep* iRep) const {
  if (iRep == this) return true;
  if (!dynamic_cast<const Zef3DBagRep*>(iRep)) return false;
  std::set<const Zef3DRep*> seen{this};
  std::vector<const Zef3DRep*> open{this};
  while (!open.empty()) {
    const Zef3DRep* const rep = open.back();
    open.pop_back();
    for (const Zef3DRep* const parent : rep->Parents()) {
      if (parent == iRep) return true;
      if (seen.insert(parent).second) open.push_back(parent);
    }
  }
  return false;
}

Zef3DCustomRep::Zef3DCustomRep(ZefGraphicPrimitive* iPrimitive,
                               const ZefGraphicAttributeSet& iAttributes) {
  AddGP(iPrimitive, iAttributes);
}

Zef3DCustomRep::~Zef3DCustomRep() = default;

void Zef3DCustomRep::AddGP(ZefGraphicPrimitive* iPrimitive,
                           const ZefGraphicAttributeSet& iAttributes) {
  std::unique_ptr<ZefGraphicPrimitive> primitive(iPrimitive);
  if (primitive) primitives_.push_back({std::move(primitive), iAttributes});
}

ZefGraphicPrimitive::~ZefGraphicPrimitive() = default;
void* ZefGraphicPrimitive::operator new(std::size_t size) noexcept { return AllocateOrNull(size); }
void ZefGraphicPrimitive::operator delete(void* memory) noexcept { std::free(memory); }

Zef3DAnnotationTextGP::Zef3DAnnotationTextGP(const ZefMathPointf& iPosition,
                                             const ZefUnicodeString& iText, ZefAnchorPoint iAnchor,
                                             float iHeight, int iStyle)
    : position_(iPosition), text_(iText), anchor_(iAnchor), height_(iHeight), style_(iStyle) {}
