#include <algorithm>

#include "host/HostApplication.h"
#include "host/component/DescribeClass.h"
#include "host/visu/Zef3DViewer.h"
#include "host/visu/ZefISO.h"
#include "host/visu/ZefModelForRep3D.h"
#include "host/visu/ZefModifyVisProperties.h"
#include "host/visu/ZefPathElement.h"
#include "host/visu/ZefVisManager.h"

ZefMetaClass* ZefModelForRep3D::MetaObject() {
  static ZefMetaClass* const meta = DescribeClass<ZefModelForRep3D>(ZefBaseUnknown::MetaObject());
  return meta;
}

ZefMetaClass* ZefPathElement::MetaObject() {
  static ZefMetaClass* const meta = DescribeClass<ZefPathElement>(ZefBaseUnknown::MetaObject());
  return meta;
}

ZefMetaClass* ZefSelectionSet::MetaObject() {
  static ZefMetaClass* const meta = DescribeClass<ZefSelectionSet>(ZefBaseUnknown::MetaObject());
  return meta;
}

ZefMetaClass* ZefModifyVisProperties::MetaObject() {
  static ZefMetaClass* const meta =
      DescribeClass<ZefModifyVisProperties>(ZefNotification::MetaObject());
  return meta;
}

void ZefSelectionSet::AddElement(ZefBaseUnknown* iElement) {
  if (iElement) elements_.Append(iElement);
}

void ZefSelectionSet::RemoveElement(ZefBaseUnknown* iElement, int) {
  if (iElement) elements_.RemoveValue(iElement);
}

ZefISO::~ZefISO() {
  for (Zef3DViewer* const viewer : viewers_) std::erase(viewer->interactiveSets_, this);
}

void ZefISO::AddViewer(Zef3DViewer* iViewer) {
  if (!iViewer || std::find(viewers_.begin(), viewers_.end(), iViewer) != viewers_.end()) return;
  // Both know each other or neither, also where memory ends.
  viewers_.reserve(viewers_.size() + 1);
  iViewer->interactiveSets_.push_back(this);
  viewers_.push_back(iViewer);
}

void ZefISO::RemoveViewer(Zef3DViewer* iViewer) {
  if (std::erase(viewers_, iViewer) > 0) std::erase(iViewer->interactiveSets_, this);
}

Zef3DViewer::~Zef3DViewer() {
  while (!interactiveSets_.empty()) interactiveSets_.back()->RemoveViewer(this);
}

ZefVisManager* ZefVisManager::GetVisManager() { return HostApplication::Installed().VisManager(); }

void ZefReframeOn(ZefHSO& iSet, Zef3DViewer* iViewer) {
  if (iViewer) HostApplication::Installed().Reframe(iSet, iViewer);
}
