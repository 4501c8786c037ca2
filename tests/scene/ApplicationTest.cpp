#include <cstdlib>
#include <gtest/gtest.h>

#include "host/dialog/Dialog.h"
#include "host/fastening/TuvEMfgAssemblyFactory.h"
#include "host/fastening/TuvKelBIWSettingsServices.h"
#include "tests/dialog/CatalogFolder.h"
#include "tests/scene/ApplicationAudit.h"

namespace {

using namespace embedded;

class ApplicationTest : public tests::ApplicationAudit {};

// Whether each entry point leads to something.
std::string EntryPoints() {
  ZefFrmEditor* const editor = ZefFrmEditor::GetCurrentEditor();
  ZefApplicationFrame* const frame = ZefApplicationFrame::GetFrame();
  ZefFrmLayout* const layout = ZefFrmLayout::GetCurrentLayout();
  ZefFrmWindow* const window = layout ? layout->GetCurrentWindow() : nullptr;
  std::string answers;
  const auto note = [&](const char* name, const void* answer) {
    if (answer) answers.append(answers.empty() ? "" : " ").append(name);
  };
  note("editor", editor);
  note("document", editor ? editor->GetDocument() : nullptr);
  note("highlighted", editor ? editor->GetHSO() : nullptr);
  note("main window", frame ? frame->GetMainWindow() : nullptr);
  note("window", window);
  note("viewer", window ? window->GetViewer() : nullptr);
  note("visualisation", ZefVisManager::GetVisManager());
  return answers;
}

TEST_F(ApplicationTest, AnswersTheEntryPointsWhileItLives) {
  EXPECT_EQ(EntryPoints(), "editor document highlighted main window window viewer visualisation");
  EXPECT_EQ(ZefFrmEditor::GetCurrentEditor()->GetDocument(), plant->Document().Get());
  EXPECT_EQ(application->CurrentEditor()->GetISO(3), nullptr);
  application->SetWindowless(true);
  EXPECT_EQ(EntryPoints(), "editor document highlighted visualisation");
  application->SetCurrentEditor(nullptr);
  EXPECT_EQ(EntryPoints(), "visualisation");
  application.reset();
  EXPECT_EQ(EntryPoints(), "");
}

TEST_F(ApplicationTest, AnOlderApplicationDoesNotUninstallAYoungerOne) {
  Application younger(dialogs);
  application.reset();
  EXPECT_EQ(&HostApplication::Installed(), &younger);
}

TEST_F(ApplicationTest, TheSceneEndsWithItsTimeInTheEditorEvenIfTheDocumentLivesOn) {
  SpotWeld& weld = plant->Weld("SW-1");
  const auto label = Label("SW-1");
  const auto further = Label("SW-1");
  dynamic_cast<Zef3DBagRep*>(weld.MainRep())->AddChild(label.Get());
  const Handle<Zef3DRep> second = weld.FurtherRep();
  dynamic_cast<Zef3DBagRep*>(second.Get())->AddChild(further.Get());
  Editor& editor = *application->CurrentEditor();
  editor.GetHSO()->AddElement(weld.Identity());
  editor.GetPSO()->AddElement(weld.Identity());
  editor.GetISO(1)->AddElement(weld.Identity());
  ZefVisManager::GetVisManager()->AttachTo(
      label.Get(), application->MainViewer().GetMain3DViewpoint(), nullptr, 0, 0, 0);
  ZefReframeOn(*editor.GetHSO(), &application->MainViewer());

  tests::Plant next;
  next.Weld("SW-9");
  application->Edit(next.Document());
  EXPECT_EQ(application->Edited(), next.Document().Get());
  EXPECT_EQ(Scene(), "spot weld \"SW-9\" at 0 0 0 mm, colour 213 94 0\n");
  EXPECT_EQ(label->ReferenceCount() + further->ReferenceCount(), 2u);
  editor.GetHSO()->AddElement(next.Document()->FindFeature("SW-9"));
  EXPECT_NE(Scene().find("highlighted"), std::string::npos) << "the sets are shown again";
  const ZefDocument_var kept = next.Document()->Identity();
  application->Edit({});
  EXPECT_EQ(application->Edited(), nullptr);
  EXPECT_EQ(EntryPoints(), "editor highlighted main window window viewer visualisation");
  EXPECT_EQ(kept->ReferenceCount(), 2u);
}

class ClosedWindow : public ZefFrmWindow {
 public:
  explicit ClosedWindow(int& closings) : closings_(closings) {
    AddNotificationCallback(this, GetMDICloseNotification(), &ClosedWindow::OnClose, nullptr);
  }
  void OnClose(ZefCommand*, ZefNotification*, void*) { ++closings_; }

 private:
  int& closings_;
};

TEST_F(ApplicationTest, FurtherWindowsAreActivatedAndToldWhenTheyAreClosed) {
  WindowFrame& windows = application->Windows();
  int closings = 0;
  auto* const first = new ClosedWindow(closings);
  windows.Open(first);
  windows.Open(new ClosedWindow(closings));
  windows.Open(nullptr);
  EXPECT_EQ(ZefFrmLayout::GetCurrentLayout()->GetCurrentWindow(), &windows.Main());
  windows.Activate(first);
  EXPECT_EQ(ZefFrmLayout::GetCurrentLayout()->GetCurrentWindow(), first);
  const auto stranger = Make<ClosedWindow>(closings);
  windows.Activate(stranger.Get());
  windows.Close(stranger.Get());
  EXPECT_EQ(closings, 0);
  windows.Close(first);
  EXPECT_EQ(closings, 1);
  EXPECT_EQ(ZefFrmLayout::GetCurrentLayout()->GetCurrentWindow(), &windows.Main());
  application->Edit({});
  EXPECT_EQ(closings, 2);
  EXPECT_TRUE(windows.FurtherWindows().empty());
}

TEST_F(ApplicationTest, FreesTheDialogsThatWereClosed) {
  const long before = CountLiveObjects();
  auto* const open = new ZefDlgNotify(&application->Windows().Main(), "open", 0);
  auto* const shown = new ZefDlgNotify(&application->Windows().Main(), "shown", 7);
  auto* const requested = new ZefDlgNotify(nullptr, "parentless", 0);
  dialogs.SetAnswer([](const DialogRequest&) { return 2; });
  EXPECT_EQ(shown->DisplayBlocked("message", "title"), 2);
  EXPECT_EQ(dialogs.Shown().at(0).name + dialogs.Shown().at(0).message, "shownmessage");
  requested->RequestDelayedDestruction();
  requested->RequestDelayedDestruction();
  EXPECT_EQ(CountLiveObjects() - before, 3);
  application->Idle();
  EXPECT_EQ(CountLiveObjects() - before, 1);
  open->RequestDelayedDestruction();
  application->Idle();
  EXPECT_EQ(CountLiveObjects(), before);
}

TEST_F(ApplicationTest, SettingsCatalogsAndEnvironmentAreTheApplications) {
  unsigned char on = 9;
  EXPECT_EQ(TuvKelBIWSettingsServices::GetPartLoadConstraint(on), S_OK);
  EXPECT_EQ(on, 0);
  application->SetPartLoadConstraint(true);
  EXPECT_EQ(TuvKelBIWSettingsServices::GetPartLoadConstraint(on), S_OK);
  EXPECT_EQ(on, 1);
  application->SetPartLoadConstraint({});
  EXPECT_EQ(TuvKelBIWSettingsServices::GetPartLoadConstraint(on), E_FAIL);

  EXPECT_STREQ(ZefGetEnv("PATH"), std::getenv("PATH"));
  EXPECT_EQ(ZefGetEnv(nullptr), nullptr);
  application->SetEnvironment("PATH", {});
  EXPECT_EQ(ZefGetEnv("PATH"), nullptr);
  application->SetEnvironment("TUV_UNKNOWN", "");
  EXPECT_STREQ(ZefGetEnv("TUV_UNKNOWN"), "");

  const CatalogFolder folder;
  folder.Write("Cmd.en.txt", "Sum = %1 and %2 of %3, %10");
  ZefMsgCatalog catalog;
  EXPECT_EQ(catalog.LoadMsgCatalog("Cmd", 0), 0);
  application->Catalogs().AddFolder(folder.Path());
  EXPECT_EQ(catalog.LoadMsgCatalog("Cmd", 0), 1);
  const ZefUnicodeString values[] = {"a", "b"};
  EXPECT_EQ(ZefMsgCatalog::BuildMessage("Cmd", "Sum", values, 2, "x"), "a and b of %3, a0");
  EXPECT_EQ(ZefMsgCatalog::BuildMessage("Cmd", "None", values, 2, "%2"), "b");
}

TEST_F(ApplicationTest, AssembliesAreMadeInTheDocumentThatIsMeant) {
  tests::Plant other;
  Handle<TuvIMfgAssembly> here, there, nowhere;
  EXPECT_EQ(TuvEMfgAssemblyFactory(nullptr).CreateMfgAssembly(&here.Put()), S_OK);
  EXPECT_EQ(TuvEMfgAssemblyFactory(other.Document().Get()).CreateMfgAssembly(&there.Put()), S_OK);
  EXPECT_EQ(here, plant->Document()->Assemblies().at(0)->Identity());
  EXPECT_EQ(there, other.Document()->Assemblies().at(0)->Identity());
  application->Edit({});
  EXPECT_EQ(TuvEMfgAssemblyFactory(nullptr).CreateMfgAssembly(&nowhere.Put()), E_FAIL);
  EXPECT_EQ(nowhere, nullptr);
}

}  // namespace
