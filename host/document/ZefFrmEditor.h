#pragma once

#include "host/component/PlatformClass.h"
#include "host/component/ZefBaseUnknown.h"

class ZefDocument;
class ZefHSO;
class ZefISO;
class ZefPSO;

// The editor of a document in a window. No operation takes a reference; each may answer null.
class ZefFrmEditor : public PlatformClass<ZefFrmEditor, ZefBaseUnknown> {
 public:
  static constexpr char Name[] = "ZefFrmEditor";

  // The editor of the active window.
  static ZefFrmEditor* GetCurrentEditor();

  virtual ZefDocument* GetDocument() = 0;
  // The set of highlighted objects.
  virtual ZefHSO* GetHSO() = 0;
  // The sets of temporary objects, ranks 0 to 2.
  virtual ZefISO* GetISO(int iRank = 0) = 0;
  // The set of preselected objects.
  virtual ZefPSO* GetPSO() = 0;
};
