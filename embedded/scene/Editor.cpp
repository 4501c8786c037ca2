#include "embedded/scene/Editor.h"

#include "host/component/FaultPoint.h"

namespace embedded {

namespace {

bool IsRank(int rank) { return 0 <= rank && rank < Editor::kInteractiveSets; }

}  // namespace

Editor::Editor()
    : highlighted_(Make<ZefHSO>()),
      interactive_{Make<ZefISO>(), Make<ZefISO>(), Make<ZefISO>()},
      preselected_(Make<ZefPSO>()) {}

ZefDocument* Editor::GetDocument() { return FaultPoint::Strikes() ? nullptr : document_.Get(); }

ZefHSO* Editor::GetHSO() { return FaultPoint::Strikes() ? nullptr : highlighted_.Get(); }

ZefISO* Editor::GetISO(int iRank) {
  if (FaultPoint::Strikes() || !IsRank(iRank)) return nullptr;
  return interactive_[static_cast<unsigned>(iRank)].Get();
}

ZefPSO* Editor::GetPSO() { return FaultPoint::Strikes() ? nullptr : preselected_.Get(); }

void Editor::SetISO(int iRank, ZefISO* iSet) {
  if (IsRank(iRank)) interactive_[static_cast<unsigned>(iRank)] = iSet;
}

void Editor::EmptySets() {
  if (highlighted_) highlighted_->Empty();
  if (preselected_) preselected_->Empty();
  for (const Handle<ZefISO>& set : interactive_) {
    if (set) set->Empty();
  }
}

}  // namespace embedded
