#pragma once

#include "host/component/PlatformClass.h"
#include "host/component/ZefBaseUnknown.h"
#include "host/values/ZefListValIID.h"

class Zef3DRep;
class Zef3DViewer;
class Zef3DViewpoint;
class ZefHSO;
class ZefPSO;
class ZefPathElement;

// Attaches to viewpoints what they show. Viewpoints are not counted; what is attached is, until it
// is detached or the viewpoint ends.
class ZefVisManager : public PlatformClass<ZefVisManager, ZefBaseUnknown> {
 public:
  static constexpr char Name[] = "ZefVisManager";

  // No reference taken; may be null.
  static ZefVisManager* GetVisManager();

  // Again is harmless.
  virtual void AttachPSOTo(ZefPSO* iSet, Zef3DViewpoint* iViewpoint) = 0;
  virtual void AttachHSOTo(ZefHSO* iSet, Zef3DViewpoint* iViewpoint) = 0;
  virtual void DetachPSOFrom(Zef3DViewpoint* iViewpoint) = 0;
  virtual void DetachHSOFrom(Zef3DViewpoint* iViewpoint) = 0;
  // Takes everything off the viewpoint. `iMode` is 1.
  virtual void DetachFrom(Zef3DViewpoint* iViewpoint, int iMode) = 0;

  virtual void AttachTo(Zef3DRep* iRep, Zef3DViewpoint* iViewpoint, Zef3DViewer* iViewer,
                        int iReserved1, int iReserved2, int iReserved3) = 0;
  // `iInterfaces` says through which interfaces the path's object is shown.
  virtual void AttachTo(ZefPathElement* iPath, Zef3DViewpoint* iViewpoint,
                        const ZefListValIID& iInterfaces, Zef3DViewer* iViewer, int iReserved1,
                        int iReserved2, int iReserved3, int iReserved4, int iReserved5) = 0;
  // Detaches what shows the path's object through these interfaces.
  virtual void DetachFrom(ZefPathElement* iPath, Zef3DViewpoint* iViewpoint,
                          const ZefListValIID& iInterfaces, int iMode) = 0;
};
