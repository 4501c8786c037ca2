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
//
// Exceptions. Any operation of this class and of the host's objects may throw, except AddRef,
// Release and destructors; one that throws has handed nothing over by result or pointer.
// The library catches nothing: the first exception passes to the caller, with every reference and
// list given back and item-change callbacks resumed. What was done before stays.
//
// Catalogs. Two are asked for. "TuvKelBIWAssignWeldDlg", with the keys TitleDuplicateWarningId and
// DuplicateWarningId: an English text stands in for each that is missing.
// "TuvBIWUpdateManufAssemblyCmd", with ErrorMessage.Title, WarningMessage.Title,
// ErrorMessageProcessFlow, ErrorMessageProductFlow, ErrorMessageForRecursion,
// WarningMessageInputRemoved, MultipleActsInFlow, MultipleProductOutput and MAIsChild: a key that
// is missing leaves its place in the text empty, and without the catalog the dialog is empty.
class HostApplication {
 public:
  virtual ~HostApplication();

  // Whatever is asked of no particular document goes to this editor's; labels and the highlight to
  // its sets. A preview window needs one, too.
  virtual ZefFrmEditor* CurrentEditor() { return nullptr; }
  // Without a frame the update of assemblies warns of nothing, and without its main window nobody
  // is told of duplicate assignments.
  virtual ZefApplicationFrame* Frame() { return nullptr; }
  // Custom representations of welds need both: the current window's viewer, and a manager.
  virtual ZefFrmLayout* CurrentLayout() { return nullptr; }
  virtual ZefVisManager* VisManager() { return nullptr; }
  // A viewer for a window that was made for an editor, with a reference for the window. Preview
  // windows ask for one, and for what comes next.
  virtual Zef3DViewer* CreateViewer(ZefFrmWindow* /*iWindow*/, ZefFrmEditor* /*iEditor*/) {
    return nullptr;
  }
  // Moves the viewer's viewpoint so that the set fills the view.
  virtual void Reframe(ZefHSO& /*iSet*/, Zef3DViewer* /*iViewer*/) {}

  // Shows a dialog until the user closes it; answers the button, 0 for the default. It must not
  // change the model. The duplicates of an assignment and the warnings of the update come here;
  // their texts come from the catalogs.
  virtual int ShowDialog(const DialogRequest& /*iRequest*/) { return 0; }

  // Only the update asks whether there is a catalog at all.
  virtual bool HasCatalog(const std::string& /*iCatalog*/) { return false; }
  // False when the catalog or the key is missing.
  virtual bool FindMessage(const std::string& /*iCatalog*/, const std::string& /*iKey*/,
                           std::string& /*oText*/) {
    return false;
  }

  // Null only when the variable is not set; valid until the next call. The update asks for
  // GORM_VIST_OUT: set to anything, it keeps the warnings from being shown.
  virtual const char* Environment(const char* iName);
  // User setting: 1 when fasteners may only be assigned where their parts are loaded. The
  // validation of fasteners reads it; a failure leaves what it asked with, 0.
  virtual HRESULT PartLoadConstraint(unsigned char&) { return E_FAIL; }
  // A new assembly in the document, or in the current editor's for null, with a reference for the
  // caller. TuvBIWServices::CreateProductOutput asks for one.
  virtual HRESULT CreateMfgAssembly(ZefDocument* /*iDocument*/, TuvIMfgAssembly** /*oAssembly*/) {
    return E_FAIL;
  }

  // The application that answers the entry points; never null. Installing null ends it. The
  // application is not owned and must outlive its installation.
  static void Install(HostApplication* iApplication);
  static HostApplication& Installed();
};
