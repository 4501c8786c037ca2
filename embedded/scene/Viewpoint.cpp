#include "embedded/scene/Viewpoint.h"

#include <algorithm>

#include "host/visu/ZefIVisu.h"

namespace embedded {

namespace {

Zef3DRep* FurtherRepOf(ZefBaseUnknown* object) {
  const ZefIVisu_var shown = object;
  return shown ? shown->GetRep() : nullptr;
}

}  // namespace

void Viewpoint::Attach(Zef3DRep* iRep) {
  if (iRep) representations_[iRep] = iRep;
}

void Viewpoint::Detach(Zef3DRep* iRep) { representations_.Remove(iRep); }

void Viewpoint::Attach(ZefPathElement* iPath, const ZefListValIID& iInterfaces) {
  if (!iPath || !iPath->GetObject() || iInterfaces.Size() == 0) return;
  ShownObject& shown = objects_[iPath->GetObject()];
  if (!shown.path) {
    shown.path = iPath;
    shown.representation = FurtherRepOf(iPath->GetObject());
  }
  for (int i = 1; i <= iInterfaces.Size(); ++i) {
    std::vector<_GUID>& known = shown.interfaces;
    const bool isKnown = std::find(known.begin(), known.end(), iInterfaces[i]) != known.end();
    if (!isKnown) known.push_back(iInterfaces[i]);
  }
}

void Viewpoint::Detach(ZefPathElement* iPath, const ZefListValIID& iInterfaces) {
  ShownObject* const shown = iPath ? objects_.Find(iPath->GetObject()) : nullptr;
  if (!shown) return;
  for (int i = 1; i <= iInterfaces.Size(); ++i) std::erase(shown->interfaces, iInterfaces[i]);
  if (shown->interfaces.empty()) objects_.Remove(iPath->GetObject());
}

void Viewpoint::DetachAll() {
  preselected_ = nullptr;
  highlighted_ = nullptr;
  representations_.Clear();
  objects_.Clear();
}

}  // namespace embedded
