#pragma once

#include "host/component/PlatformClass.h"
#include "host/dialog/ZefFrmWindow.h"

class ZefFrmEditor;
class ZefVisManager;

// A window with a 3D viewer of its own. Made without an editor it has none.
class ZefInventorySpaceWnd : public PlatformClass<ZefInventorySpaceWnd, ZefFrmWindow> {
 public:
  static constexpr char Name[] = "ZefInventorySpaceWnd";

  explicit ZefInventorySpaceWnd(ZefFrmEditor* iEditor);
  ~ZefInventorySpaceWnd() override;

  Zef3DViewer* GetViewer() override;
  // No reference taken; may be null.
  ZefVisManager* GetVisManager();

 private:
  Handle<Zef3DViewer> viewer_;
};
