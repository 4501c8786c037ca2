#pragma once

#include "embedded/model/Facets.h"
#include "embedded/model/Look.h"
#include "host/component/ComponentObject.h"
#include "host/visu/ZefIModelEvents.h"
#include "host/visu/ZefIVisProperties.h"

namespace embedded {

// Gives every object that is shown in 3D its look, whatever its kind.
class Displayed {
 public:
  Look& Display() { return look_; }
  const Look& Display() const { return look_; }

 protected:
  ~Displayed() = default;
  Look look_;
};

// An object of a document that has a name, can be linked to activities and is shown in 3D.
template <class... Interfaces>
class DisplayedObject
    : public ComponentObject<Interfaces..., Aliased, Linkable, Redrawable, MainView, FurtherView,
                             ZefIVisProperties, ZefIModelEvents>,
      public Displayed {
 public:
  Zef3DRep* MainRep() override { return look_.Main(); }
  Zef3DRep* FurtherRep() override { return look_.Further(); }
  HRESULT GetPropertiesAtt(ZefVisPropertiesValues& oValues, int iType, int, int, int) override {
    return look_.Read(oValues, iType);
  }
  HRESULT Dispatch(const ZefNotification& iChange) override { return look_.Apply(iChange); }
};

}  // namespace embedded
