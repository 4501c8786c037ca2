#pragma once

#include <vector>

#include "embedded/scene/Attachments.h"
#include "host/component/Handle.h"
#include "host/values/ZefListValIID.h"
#include "host/visu/Zef3DRep.h"
#include "host/visu/Zef3DViewpoint.h"
#include "host/visu/ZefHSO.h"
#include "host/visu/ZefPSO.h"
#include "host/visu/ZefPathElement.h"

namespace embedded {

// A viewpoint with what is attached to it. It holds a reference on each until it is detached or
// the viewpoint ends. Attaching again changes nothing.
class Viewpoint : public Zef3DViewpoint {
 public:
  // An object, the interfaces through which it is shown, at least one, each once, and what shows
  // it: a representation apart from that of the main view, null when it gave none.
  struct ShownObject {
    Handle<ZefPathElement> path;
    Handle<Zef3DRep> representation;
    std::vector<_GUID> interfaces;
  };

  void SetPreselected(ZefPSO* iSet) { preselected_ = iSet; }
  void SetHighlighted(ZefHSO* iSet) { highlighted_ = iSet; }
  // Null when none is attached.
  ZefPSO* Preselected() const { return preselected_.Get(); }
  ZefHSO* Highlighted() const { return highlighted_.Get(); }

  // Each of these does nothing for null and for what is not attached.
  void Attach(Zef3DRep* iRep);
  void Detach(Zef3DRep* iRep);
  // Paths that lead to one object are the same.
  void Attach(ZefPathElement* iPath, const ZefListValIID& iInterfaces);
  void Detach(ZefPathElement* iPath, const ZefListValIID& iInterfaces);
  void DetachAll();

  const Attachments<Handle<Zef3DRep>>& Representations() const { return representations_; }
  const Attachments<ShownObject>& Objects() const { return objects_; }

 private:
  Handle<ZefPSO> preselected_;
  Handle<ZefHSO> highlighted_;
  Attachments<Handle<Zef3DRep>> representations_;
  Attachments<ShownObject> objects_;
};

}  // namespace embedded
