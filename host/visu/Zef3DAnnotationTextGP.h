#pragma once

#include "host/values/Geometry.h"
#include "host/values/ZefUnicodeString.h"
#include "host/visu/ZefGraphicPrimitive.h"

// Where a text stands about its point.
enum ZefAnchorPoint { BASE_LEFT = 0, BASE_CENTER = 1, BASE_RIGHT = 2 };

// A text at a point in space (mm). Height 0 is the viewer's own; `iStyle` 0 is plain.
class Zef3DAnnotationTextGP : public ZefGraphicPrimitive {
 public:
  Zef3DAnnotationTextGP(const ZefMathPointf& iPosition, const ZefUnicodeString& iText,
                        ZefAnchorPoint iAnchor, float iHeight, int iStyle);

  const ZefMathPointf& GetPosition() const { return position_; }
  const ZefUnicodeString& GetText() const { return text_; }
  ZefAnchorPoint GetAnchor() const { return anchor_; }
  float GetHeight() const { return height_; }
  int GetStyle() const { return style_; }

 private:
  ZefMathPointf position_;
  ZefUnicodeString text_;
  ZefAnchorPoint anchor_;
  float height_;
  int style_;
};
