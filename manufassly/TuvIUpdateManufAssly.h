#pragma once

#include "frame/Export.h"
#include "host/component/Handle.h"
#include "host/component/Interface.h"

extern TUV_EXPORT const _GUID IID_TuvIUpdateManufAssly;

// Switches the update of manufacturing assemblies on and off. Every object answers it whose class
// is "PhysicalActivity" or has it among its bases; the subscription that it makes is for the whole
// process. An application subscribes through one activity once the document is there, and keeps to
// that activity: the first query on another one makes the library forget the subscription's
// identifier.
//
// All but the last answer E_FAIL, and change nothing, when the activity has no container or its
// process no dispatcher.
class TuvIUpdateManufAssly : public Interface<TuvIUpdateManufAssly> {
 public:
  static constexpr char Name[] = "TuvIUpdateManufAssly";

  // A second call subscribes a second time, and only the second subscription can be removed.
  virtual HRESULT AddUpdateCallback() = 0;
  virtual HRESULT RemoveUpdateCallback() = 0;
  // Shows the welds of a removed activity as unassigned from now on; for good.
  virtual HRESULT AddWeldColorUpdateCallback() = 0;
  // The subscription's identifier, 0 when none is recorded.
  virtual HRESULT ReturnZefCallbackStatus(long& oCallback) = 0;
};

using TuvIUpdateManufAssly_var = Handle<TuvIUpdateManufAssly>;
