#pragma once

#include <vector>

#include "host/component/PlatformClass.h"
#include "host/component/ZefBaseUnknown.h"

class Zef3DRep;
class Zef3DViewpoint;
class ZefHSO;
class ZefISO;

// A 3D view in a window. When it ends it leaves the interactive sets that it was added to.
class Zef3DViewer : public PlatformClass<Zef3DViewer, ZefBaseUnknown> {
 public:
  static constexpr char Name[] = "Zef3DViewer";

  ~Zef3DViewer() override;

  // Draws the scene again.
  virtual void Draw() = 0;
  // No reference taken; may be null.
  virtual Zef3DViewpoint* GetMain3DViewpoint() = 0;
  // Takes the representation off the viewer and gives the viewer's reference back.
  virtual void RemoveRep(Zef3DRep* iRep) = 0;

  // The sets whose temporary objects it shows; not counted.
  const std::vector<ZefISO*>& InteractiveSets() const { return interactiveSets_; }

 private:
  friend class ZefISO;

  std::vector<ZefISO*> interactiveSets_;
};

// Moves the viewer's viewpoint so that the set fills the view.
void ZefReframeOn(ZefHSO& iSet, Zef3DViewer* iViewer);
