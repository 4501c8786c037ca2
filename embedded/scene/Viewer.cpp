#include "embedded/scene/Viewer.h"

#include "embedded/scene/Editor.h"
#include "host/component/FaultPoint.h"

namespace embedded {

Viewer::Viewer() : viewpoint_(Make<Viewpoint>()) {}

Viewer::~Viewer() {
  if (viewpoint_) viewpoint_->DetachAll();
}

Zef3DViewpoint* Viewer::GetMain3DViewpoint() {
  return FaultPoint::Strikes() ? nullptr : viewpoint_.Get();
}

void Viewer::RemoveRep(Zef3DRep* iRep) {
  if (viewpoint_) viewpoint_->Detach(iRep);
}

void Viewer::Empty() {
  if (viewpoint_) viewpoint_->DetachAll();
  framed_.reset();
}

void Viewer::ShowSetsOf(const Editor& iEditor) {
  if (viewpoint_) {
    viewpoint_->SetPreselected(iEditor.Preselected());
    viewpoint_->SetHighlighted(iEditor.Highlighted());
  }
  for (const Handle<ZefISO>& set : iEditor.Interactive()) {
    if (set) set->AddViewer(this);
  }
}

}  // namespace embedded
