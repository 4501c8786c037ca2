#pragma once

#include "host/dialog/ZefFrmWindow.h"

class ZefFrmEditor;
class ZefVisManager;

// A window with a 3D viewer of its own. Made without an editor it has none.
class ZefInventorySpaceWnd : public ZefFrmWindow {
 public:
  explicit ZefInventorySpaceWnd(ZefFrmEditor* iEditor);
  ~ZefInventorySpaceWnd() override;

  Zef3DViewer* GetViewer() override { return viewer_; }
  // No reference taken; may be null.
  ZefVisManager* GetVisManager();

 private:
  Zef3DViewer* viewer_;
};
