#include "embedded/scene/VisManager.h"

#include "embedded/scene/Viewpoint.h"

namespace embedded {

namespace {

template <class Action>
void On(Zef3DViewpoint* viewpoint, const Action& action) {
  if (auto* const own = dynamic_cast<Viewpoint*>(viewpoint)) action(*own);
}

}  // namespace

void VisManager::AttachPSOTo(ZefPSO* iSet, Zef3DViewpoint* iViewpoint) {
  On(iViewpoint, [&](Viewpoint& viewpoint) { viewpoint.SetPreselected(iSet); });
}

void VisManager::AttachHSOTo(ZefHSO* iSet, Zef3DViewpoint* iViewpoint) {
  On(iViewpoint, [&](Viewpoint& viewpoint) { viewpoint.SetHighlighted(iSet); });
}

void VisManager::DetachPSOFrom(Zef3DViewpoint* iViewpoint) { AttachPSOTo(nullptr, iViewpoint); }

void VisManager::DetachHSOFrom(Zef3DViewpoint* iViewpoint) { AttachHSOTo(nullptr, iViewpoint); }

void VisManager::DetachFrom(Zef3DViewpoint* iViewpoint, int) {
  On(iViewpoint, [](Viewpoint& viewpoint) { viewpoint.DetachAll(); });
}

void VisManager::AttachTo(Zef3DRep* iRep, Zef3DViewpoint* iViewpoint, Zef3DViewer*, int, int, int) {
  On(iViewpoint, [&](Viewpoint& viewpoint) { viewpoint.Attach(iRep); });
}

void VisManager::AttachTo(ZefPathElement* iPath, Zef3DViewpoint* iViewpoint,
                          const ZefListValIID& iInterfaces, Zef3DViewer*, int, int, int, int, int) {
  On(iViewpoint, [&](Viewpoint& viewpoint) { viewpoint.Attach(iPath, iInterfaces); });
}

void VisManager::DetachFrom(ZefPathElement* iPath, Zef3DViewpoint* iViewpoint,
                            const ZefListValIID& iInterfaces, int) {
  On(iViewpoint, [&](Viewpoint& viewpoint) { viewpoint.Detach(iPath, iInterfaces); });
}

}  // namespace embedded
