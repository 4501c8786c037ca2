#pragma once

#include <memory>
#include <string>

#include "host/component/Result.h"

class TuvIMfgAssembly;
class Zef3DViewer;
class ZefApplicationFrame;
class ZefDocument;
class ZefFrmEditor;
class ZefFrmLayout;
class ZefFrmWindow;
class ZefHSO;
class ZefVisManager;

// A dialog that waits for the user.
struct DialogRequest {
  ZefFrmWindow* parent;  // may be null
  std::string name;
  unsigned int style;
  std::string message;
  std::string title;
};

// What an embedding application implements to answer the platform's static entry points. Every
// operation has the answer of an application that offers nothing, which is also what the entry
// points answer while none is installed. Pointers are not counted and stay the application's.
class HostApplication {
 public:
  virtual ~HostApplication();

  virtual ZefFrmEditor* CurrentEditor() { return nullptr; }
  virtual ZefApplicationFrame* Frame() { return nullptr; }
  virtual ZefFrmLayout* CurrentLayout() { return nullptr; }
  virtual ZefVisManager* VisManager() { return nullptr; }
  // A viewer for a window that was made for an editor, with a reference for the window.
  virtual Zef3DViewer* CreateViewer(ZefFrmWindow* /*iWindow*/, ZefFrmEditor* /*iEditor*/) {
    return nullptr;
  }
  // Moves the viewer's viewpoint so that the set fills the view.
  virtual void Reframe(ZefHSO& /*iSet*/, Zef3DViewer* /*iViewer*/) {}

  // Shows a dialog until the user closes it; answers the button, 0 for the default. It must not
  // change the model.
  virtual int ShowDialog(const DialogRequest& /*iRequest*/) { return 0; }

  virtual bool HasCatalog(const std::string& /*iCatalog*/) { return false; }
  // False when the catalog or the key is missing.
  virtual bool FindMessage(const std::string& /*iCatalog*/, const std::string& /*iKey*/,
                           std::string& /*oText*/) {
    return false;
  }

  // Null only when the variable is not set; valid until the next call.
  virtual const char* Environment(const char* iName);
  // User setting: 1 when fasteners may only be assigned where their parts are loaded.
  virtual HRESULT PartLoadConstraint(unsigned char&) { return E_FAIL; }
  // A new assembly in the document, or in the current editor's for null, with a reference for the
  // caller.
  virtual HRESULT CreateMfgAssembly(ZefDocument* /*iDocument*/, TuvIMfgAssembly** /*oAssembly*/) {
    return E_FAIL;
  }

  // The application that answers the entry points; never null. Installing null ends it. The
  // application is not owned and must outlive its installation.
  static void Install(HostApplication* iApplication);
  static HostApplication& Installed();
};
