#pragma once

#include "host/component/Handle.h"
#include "host/component/Interface.h"

extern const _GUID IID_ZefIRedrawEvent;

// Asks the panels that show an object to draw it again.
class ZefIRedrawEvent : public Interface<ZefIRedrawEvent> {
 public:
  static constexpr char Name[] = "ZefIRedrawEvent";

  virtual HRESULT Redraw() = 0;
  // The object's own node only, not what lies below it.
  virtual HRESULT RedrawNode() = 0;
};

using ZefIRedrawEvent_var = Handle<ZefIRedrawEvent>;
