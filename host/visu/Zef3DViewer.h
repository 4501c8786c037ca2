#pragma once

#include "host/component/ZefBaseUnknown.h"

class Zef3DRep;
class Zef3DViewpoint;
class ZefHSO;

// A 3D view in a window.
class Zef3DViewer : public ZefBaseUnknown {
 public:
  // Draws the scene again.
  virtual void Draw() = 0;
  // No reference taken; may be null.
  virtual Zef3DViewpoint* GetMain3DViewpoint() = 0;
  // Takes the representation off the viewer and gives the viewer's reference back.
  virtual void RemoveRep(Zef3DRep* iRep) = 0;
};

// Moves the viewer's viewpoint so that the set fills the view.
void ZefReframeOn(ZefHSO& iSet, Zef3DViewer* iViewer);
