#pragma once

#include "host/visu/ZefVisManager.h"

namespace embedded {

// Attaches to this host's viewpoints; those of other makes are left alone. The attachments are the
// viewpoint's: see Viewpoint.
class VisManager : public ZefVisManager {
 public:
  void AttachPSOTo(ZefPSO* iSet, Zef3DViewpoint* iViewpoint) override;
  void AttachHSOTo(ZefHSO* iSet, Zef3DViewpoint* iViewpoint) override;
  void DetachPSOFrom(Zef3DViewpoint* iViewpoint) override;
  void DetachHSOFrom(Zef3DViewpoint* iViewpoint) override;
  void DetachFrom(Zef3DViewpoint* iViewpoint, int iMode) override;

  void AttachTo(Zef3DRep* iRep, Zef3DViewpoint* iViewpoint, Zef3DViewer* iViewer, int iReserved1,
                int iReserved2, int iReserved3) override;
  void AttachTo(ZefPathElement* iPath, Zef3DViewpoint* iViewpoint, const ZefListValIID& iInterfaces,
                Zef3DViewer* iViewer, int iReserved1, int iReserved2, int iReserved3,
                int iReserved4, int iReserved5) override;
  void DetachFrom(ZefPathElement* iPath, Zef3DViewpoint* iViewpoint,
                  const ZefListValIID& iInterfaces, int iMode) override;
};

}  // namespace embedded
