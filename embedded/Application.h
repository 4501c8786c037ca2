#pragma once

#include <map>
#include <optional>
#include <string>

#include "embedded/dialog/CatalogStore.h"
#include "embedded/dialog/DialogPresenter.h"
#include "embedded/model/Document.h"
#include "embedded/scene/Editor.h"
#include "embedded/scene/VisManager.h"
#include "embedded/scene/Windows.h"
#include "host/HostApplication.h"

namespace embedded {

// An application with one editor and a main window. It answers the platform's static entry points
// while it lives; afterwards the one does that was installed before. A host application of another
// class must live on as long.
// Of message catalogs it knows those that were installed with the library.
class Application : public HostApplication {
 public:
  // The presenter outlives the application.
  explicit Application(DialogPresenter& iDialogs);
  ~Application() override;
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  // Makes it the document of the editor and of the main viewer; a null owner leaves none. The scene
  // of the former document ends: further windows are closed, sets emptied, and whatever was hung
  // under its objects is taken away, also when the document itself lives on.
  void Edit(Owned<Document> iDocument);
  // Null while no document is edited.
  Document* Edited() const { return edited_.Get(); }

  Viewer& MainViewer() const { return frame_->Main().OwnViewer(); }
  WindowFrame& Windows() const { return *frame_; }
  CatalogStore& Catalogs() { return catalogs_; }

  // Unset: the setting cannot be read. Off in the beginning.
  void SetPartLoadConstraint(std::optional<bool> iOn) { partLoadConstraint_ = iOn; }
  // Overrides the variable of the process's environment; without a value it counts as not set.
  void SetEnvironment(const std::string& iName, std::optional<std::string> iValue);
  // An application without windows, as in batch use, has neither frame nor layout to offer.
  void SetWindowless(bool iWindowless) { windowless_ = iWindowless; }
  // Makes another editor the current one, also none; the document and the viewers stay with the
  // application's own.
  void SetCurrentEditor(Editor* iEditor) { current_ = iEditor; }

  // Frees the dialogs that were closed; for the time between two commands.
  void Idle() { frame_->FreeClosedDialogs(); }

  Editor* CurrentEditor() override;
  ZefApplicationFrame* Frame() override;
  ZefFrmLayout* CurrentLayout() override;
  ZefVisManager* VisManager() override;
  Zef3DViewer* CreateViewer(ZefFrmWindow* iWindow, ZefFrmEditor* iEditor) override;
  void Reframe(ZefHSO& iSet, Zef3DViewer* iViewer) override;
  int ShowDialog(const DialogRequest& iRequest) override;
  bool HasCatalog(const std::string& iCatalog) override;
  bool FindMessage(const std::string& iCatalog, const std::string& iKey,
                   std::string& oText) override;
  const char* Environment(const char* iName) override;
  HRESULT PartLoadConstraint(unsigned char& oOn) override;
  HRESULT CreateMfgAssembly(ZefDocument* iDocument, TuvIMfgAssembly** oAssembly) override;

 private:
  void EndScene();

  DialogPresenter& dialogs_;
  HostApplication* former_ = &Installed();
  CatalogStore catalogs_;
  Owned<Document> edited_;
  Handle<Editor> editor_;
  Handle<Editor> current_;
  Handle<WindowFrame> frame_;
  Handle<Layout> layout_;
  Handle<embedded::VisManager> visManager_;
  std::map<std::string, std::optional<std::string>, std::less<>> environment_;
  std::optional<bool> partLoadConstraint_ = false;
  bool windowless_ = false;
};

}  // namespace embedded
