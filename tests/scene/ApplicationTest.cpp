#include <cstdlib>
#include <gtest/gtest.h>

#include "host/dialog/Dialog.h"
#include "host/fastening/TuvEMfgAssemblyFactory.h"
#include "host/fastening/TuvKelBIWSettingsServices.h"
#include "tests/scene/ApplicationAudit.h"
#include "tests/support/ScratchFolder.h"

namespace {

using namespace embedded;

class ApplicationTest : public tests::ApplicationAudit {};

// The static entry points that lead to something.
std::string EntryPoints() {
  std::string answers;
  if (ZefFrmEditor::GetCurrentEditor()) answers += "editor ";
  if (ZefApplicationFrame* const frame = ZefApplicationFrame::GetFrame()) {
    answers += frame->GetMainWindow() ? "frame " : "bare frame ";
  }
  if (ZefFrmLayout* const layout = ZefFrmLayout::GetCurrentLayout()) {
    answers += layout->GetCurrentWindow()->GetViewer() ? "viewer " : "layout ";
  }
  if (ZefVisManager::GetVisManager()) answers += "visualisation";
  return answers;
}

TEST_F(ApplicationTest, AnswersTheEntryPointsWhileItLives) {
  EXPECT_EQ(EntryPoints(), "editor frame viewer visualisation");
  EXPECT_EQ(ZefFrmEditor::GetCurrentEditor()->GetDocument(), plant->Document().Get());
  EXPECT_EQ(ZefFrmEditor::GetCurrentEditor()->GetISO(3), nullptr);
  application->SetWindowless(true);
  EXPECT_EQ(EntryPoints(), "editor visualisation");
  application->SetCurrentEditor(nullptr);
  EXPECT_EQ(EntryPoints(), "visualisation");
  {
    const Application younger(dialogs);
    application.reset();
    EXPECT_EQ(&HostApplication::Installed(), &younger);
  }
  EXPECT_EQ(EntryPoints(), "");
}

TEST_F(ApplicationTest, TheSceneEndsWithItsTimeInTheEditorEvenIfTheDocumentLivesOn) {
  SpotWeld& weld = plant->Weld("SW-1");
  const auto label = Label("SW-1");
  dynamic_cast<Zef3DBagRep*>(weld.MainRep())->AddChild(label);
  const Handle<Zef3DRep> further = weld.FurtherRep();
  dynamic_cast<Zef3DBagRep&>(*further).AddChild(label);
  Editor& editor = *application->CurrentEditor();
  Viewer& viewer = application->MainViewer();
  editor.GetHSO()->AddElement(weld.Identity());
  editor.GetPSO()->AddElement(weld.Identity());
  editor.GetISO(1)->AddElement(weld.Identity());
  ZefVisManager::GetVisManager()->AttachTo(label, viewer.GetMain3DViewpoint(), &viewer, 0, 0, 0);
  ZefReframeOn(*editor.GetHSO(), &viewer);

  tests::Plant next;
  ZefBaseUnknown* const shown = next.Weld("SW-9").Identity();
  application->Edit(next.Document());
  EXPECT_EQ(application->Edited(), next.Document().Get());
  EXPECT_EQ(Scene(), "spot weld \"SW-9\" at 0 0 0 mm, colour 213 94 0\n");
  EXPECT_EQ(label->ReferenceCount(), 1u);
  editor.GetHSO()->AddElement(shown);
  EXPECT_NE(Scene().find("highlighted"), std::string::npos) << "the sets are shown again";
  application->Edit({});
  EXPECT_EQ(application->Edited(), nullptr);
  EXPECT_EQ(editor.GetDocument(), nullptr);
  EXPECT_EQ(Scene(), "");
  EXPECT_EQ(next.Document()->Identity()->ReferenceCount(), 1u);
}

class ToldWindow : public ZefFrmWindow {
 public:
  explicit ToldWindow(int& closings) : closings_(closings) {
    AddNotificationCallback(this, GetMDICloseNotification(), &ToldWindow::OnClose, nullptr);
  }
  void OnClose(ZefCommand*, ZefNotification*, void*) { ++closings_; }

 private:
  int& closings_;
};

TEST_F(ApplicationTest, FurtherWindowsAreActivatedAndToldWhenTheyAreClosed) {
  WindowFrame& windows = application->Windows();
  const auto current = [] { return ZefFrmLayout::GetCurrentLayout()->GetCurrentWindow(); };
  int closings = 0;
  auto* const first = new ToldWindow(closings);
  windows.Open(first);
  windows.Open(new ToldWindow(closings));
  EXPECT_EQ(current(), &windows.Main());
  windows.Activate(first);
  const auto stranger = Make<ToldWindow>(closings);
  windows.Activate(stranger);
  EXPECT_EQ(current(), first);
  windows.Close(stranger);
  EXPECT_EQ(closings, 0);
  windows.Close(first);
  EXPECT_EQ(current(), &windows.Main());
  application->Edit({});
  EXPECT_EQ(closings, 2);
}

TEST_F(ApplicationTest, FreesTheDialogsThatWereClosed) {
  const long before = CountLiveObjects();
  ZefFrmWindow* const window = &application->Windows().Main();
  auto* const open = new ZefDlgNotify(window, "open", 0);
  (new ZefDlgNotify(window, "shown", 7))->DisplayBlocked("message", "title");
  auto* const requested = new ZefDlgNotify(nullptr, "parentless", 0);
  for (int twice = 0; twice < 2; ++twice) requested->RequestDelayedDestruction();
  EXPECT_EQ(CountLiveObjects() - before, 3);
  application->Idle();
  EXPECT_EQ(CountLiveObjects() - before, 1);
  open->RequestDelayedDestruction();
  application->Idle();
  EXPECT_EQ(CountLiveObjects(), before);
}

TEST_F(ApplicationTest, SettingsMessagesAndEnvironmentAreTheApplications) {
  for (const std::optional<bool> setting : {std::optional(true), {false}, {}}) {
    application->SetPartLoadConstraint(setting);
    unsigned char on = 9;
    EXPECT_EQ(TuvKelBIWSettingsServices::GetPartLoadConstraint(on), setting ? S_OK : E_FAIL);
    EXPECT_EQ(on, setting ? *setting : 9);
  }
  EXPECT_STREQ(ZefGetEnv("PATH"), std::getenv("PATH"));
  application->SetEnvironment("PATH", {});
  EXPECT_EQ(ZefGetEnv("PATH"), nullptr);
  application->SetEnvironment("PATH", "");
  EXPECT_STREQ(ZefGetEnv("PATH"), "");
  const tests::ScratchFolder folder;
  folder.Write("Cmd.en.txt", "Sum = %1 and %2 of %3, %10");
  ZefMsgCatalog catalog;
  EXPECT_EQ(catalog.LoadMsgCatalog("Cmd", 0), 0);
  application->Catalogs().AddFolder(folder.Path());
  EXPECT_EQ(catalog.LoadMsgCatalog("Cmd", 0), 1);
  const ZefUnicodeString values[] = {"a", "b"};
  EXPECT_EQ(ZefMsgCatalog::BuildMessage("Cmd", "Sum", values, 2, "x"), "a and b of %3, a0");
  EXPECT_EQ(ZefMsgCatalog::BuildMessage("Cmd", "None", values, 2, "%2"), "b");
}

TEST_F(ApplicationTest, BringsItsCatalogsAndGivesBackToTheApplicationBeforeIt) {
  EXPECT_TRUE(application->HasCatalog("TuvBIWUpdateManufAssemblyCmd"));
  {
    embedded::RecordedDialogs others;
    embedded::Application second(others);
    EXPECT_EQ(&HostApplication::Installed(), &second);
  }
  EXPECT_EQ(&HostApplication::Installed(), application.get());
}

TEST_F(ApplicationTest, AssembliesAreMadeInTheDocumentThatIsMeant) {
  tests::Plant other;
  Handle<TuvIMfgAssembly> made;
  EXPECT_EQ(TuvEMfgAssemblyFactory(nullptr).CreateMfgAssembly(&made.Put()), S_OK);
  EXPECT_EQ(made, plant->Document()->Assemblies().at(0)->Identity());
  EXPECT_EQ(TuvEMfgAssemblyFactory(other.Document().Get()).CreateMfgAssembly(&made.Put()), S_OK);
  EXPECT_EQ(made, other.Document()->Assemblies().at(0)->Identity());
  application->Edit({});
  EXPECT_EQ(TuvEMfgAssemblyFactory(nullptr).CreateMfgAssembly(&made.Put()), S_OK);
  EXPECT_EQ(ZefILinkableObject_var(made)->GetDocument(), nullptr);
  EXPECT_EQ(plant->Document()->Assemblies().size(), 1u);
}

}  // namespace
