#pragma once

#include <array>

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
  ~Look() { Empty(); }

  // Takes everything out of the representations: what was put there may point back at the object.
  void Empty();

  // Made on the first demand; null when the object has no representation.
  Zef3DRep* Main();
  // The main representation as far as it was made; null before.
  Zef3DRep* MadeMain() const { return main_.Get(); }
  // A second one for further windows; made anew after it was destroyed, or when
  // nobody else has it.
  Zef3DRep* Further();
  // The same as far as it was made.
  const Zef3DRep* MadeFurther() const { return further_.Get(); }
  void SetRepresented(bool iRepresented) { represented_ = iRepresented; }
  bool IsRepresented() const { return represented_; }
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

  // 0 to 255 each; all -1 before a colour was set.
  void SetColour(int iRed, int iGreen, int iBlue);
  const std::array<int, 3>& Colour() const { return colour_; }

 private:
  Handle<Zef3DRep> main_;
  Handle<Zef3DRep> further_;
  ZefVisPropertiesValues values_;
  std::array<int, 3> colour_{-1, -1, -1};
  bool represented_ = true;
  bool custom_ = false;
};

}  // namespace embedded
