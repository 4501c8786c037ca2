#pragma once

#include "embedded/model/Facets.h"
#include "embedded/model/Look.h"
#include "host/component/ComponentObject.h"
#include "host/visu/ZefIModelEvents.h"
#include "host/visu/ZefIVisProperties.h"

namespace embedded {

// An object of a document that has a name, can be linked to activities and is shown in 3D.
template <class... Interfaces>
class DisplayedObject
    : public ComponentObject<Interfaces..., Aliased, Linkable, Redrawable, MainView, FurtherView,
                             ZefIVisProperties, ZefIModelEvents> {
 public:
  Zef3DRep* MainRep() override { return look_.Main(); }
  Zef3DRep* FurtherRep() override { return look_.Further(); }
  HRESULT GetPropertiesAtt(ZefVisPropertiesValues& oValues, int iType, int, int, int) override {
    return look_.Read(oValues, iType);
  }
  HRESULT Dispatch(const ZefNotification& iChange) override { return look_.Apply(iChange); }

  Look& Display() { return look_; }

 private:
  Look look_;
};

}  // namespace embedded
