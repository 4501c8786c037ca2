#include "embedded/model/Facets.h"

#include <algorithm>

#include "embedded/model/Activity.h"
#include "embedded/model/Document.h"
#include "embedded/model/ItemLink.h"
#include "embedded/model/ObjectClass.h"

namespace embedded {

namespace {

class PointingHolder : public ComponentObject<ZefIPointingHolder> {
 public:
  explicit PointingHolder(const std::vector<ItemLink*>& links) {
    for (ItemLink* const link : links) features_.Append(link->Identity());
  }
  ZefMetaClass* GetMetaObject() const override {
    return ObjectClass<PointingHolder>("PointingHolder");
  }
  HRESULT ListPointingObjects(ZefListValZefBaseUnknown_var& ioFeatures) override {
    if (FaultPoint::Strikes()) return E_FAIL;
    ioFeatures.Append(features_);
    return S_OK;
  }

 private:
  ZefListValZefBaseUnknown_var features_;
};

}  // namespace

HRESULT Redrawable::Redraw() {
  if (FaultPoint::Strikes()) return E_FAIL;
  ++redraws_;
  return S_OK;
}

HRESULT Redrawable::RedrawNode() {
  if (FaultPoint::Strikes()) return E_FAIL;
  ++nodeRedraws_;
  return S_OK;
}

ZefIPointingHolder* Linkable::GetPointingHolder() {
  if (links_.empty() || FaultPoint::Strikes()) return nullptr;
  return new PointingHolder(links_);
}

ZefDocument* Linkable::GetDocument() { return FaultPoint::Strikes() ? nullptr : OwnDocument(); }

void Linkable::DropLink(ItemLink* iLink) {
  const auto found = std::find(links_.begin(), links_.end(), iLink);
  if (found != links_.end()) links_.erase(found);
}

void Linkable::DropEndedLinks() {
  std::erase_if(links_, [](const ItemLink* link) { return !link->OwnActivity()->OwnDocument(); });
}

}  // namespace embedded
