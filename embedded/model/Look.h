#pragma once

#include "host/component/Handle.h"
#include "host/component/ZefNotification.h"
#include "host/visu/Zef3DBagRep.h"
#include "host/visu/ZefVisPropertiesValues.h"

namespace embedded {

// How an object is shown: its representations and its visual properties.
class Look {
 public:
  Look() = default;
  Look(const Look&) = delete;
  Look& operator=(const Look&) = delete;
  // Takes everything out of the representations: what was put there may point back at the object.
  ~Look();

  // Made on the first demand; null when the object has no representation.
  Zef3DRep* Main();
  // A second one for further windows; made anew after it was destroyed by the last parent.
  Zef3DRep* Further();
  void SetRepresented(bool iRepresented) { represented_ = iRepresented; }
  // Replaces the main representation by one that is not a bag, or by null.
  void ReplaceMain(Zef3DRep* iRep) {
    main_ = iRep;
    custom_ = true;
  }

  // E_FAIL for types other than 7, the show attribute.
  HRESULT Read(ZefVisPropertiesValues& oValues, int iType) const;
  HRESULT Apply(const ZefNotification& iChange);
  int ShowAttribute() const { return values_.GetShowAttr(); }
  void SetShowAttribute(int iShow) { values_.SetShowAttr(iShow); }

  // 0 to 255 each.
  void SetColour(int iRed, int iGreen, int iBlue);

 private:
  Handle<Zef3DRep> main_;
  Handle<Zef3DRep> further_;
  ZefVisPropertiesValues values_;
  int colour_[3] = {-1, -1, -1};
  bool represented_ = true;
  bool custom_ = false;
};

}  // namespace embedded
