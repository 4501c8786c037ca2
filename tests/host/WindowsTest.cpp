#include <cstdlib>
#include <map>

#include "host/HostApplication.h"
#include "host/dialog/Dialog.h"
#include "host/document/ZefFrmEditor.h"
#include "host/fastening/Fastening.h"
#include "host/visu/Visu.h"
#include "tests/support/ReferenceAudit.h"

namespace {

class WindowsTest : public tests::ReferenceAudit {
 protected:
  void TearDown() override {
    window = nullptr;
    ReferenceAudit::TearDown();
  }
  Handle<ZefFrmWindow> window = Make<ZefFrmWindow>();
};

// Shows nothing and knows one catalog.
class Desk : public HostApplication {
 public:
  Desk() { Install(this); }
  ~Desk() override { Install(nullptr); }
  Desk(const Desk&) = delete;
  Desk& operator=(const Desk&) = delete;

  int ShowDialog(const DialogRequest& request) override {
    shown.push_back(request);
    return 7;
  }
  bool HasCatalog(const std::string& catalog) override { return catalog == "Catalog"; }
  bool FindMessage(const std::string& catalog, const std::string& key, std::string& text) override {
    const bool known = HasCatalog(catalog) && (key == "Key" || key == "Empty");
    if (known) text = key == "Key" ? "%2 before %1, %3%% %10 %" : "";
    return known;
  }

  std::vector<DialogRequest> shown;
};

TEST_F(WindowsTest, WithoutApplicationEveryEntryPointAnswersThatThereIsNothing) {
  EXPECT_EQ(ZefFrmEditor::GetCurrentEditor(), nullptr);
  EXPECT_EQ(ZefApplicationFrame::GetFrame(), nullptr);
  EXPECT_EQ(ZefFrmLayout::GetCurrentLayout(), nullptr);
  EXPECT_EQ(ZefVisManager::GetVisManager(), nullptr);
  unsigned char constraint = 9;
  EXPECT_EQ(TuvKelBIWSettingsServices::GetPartLoadConstraint(constraint), E_FAIL);
  TuvIMfgAssembly* assembly = nullptr;
  EXPECT_EQ(TuvEMfgAssemblyFactory(nullptr).CreateMfgAssembly(&assembly), E_FAIL);
  EXPECT_EQ(TuvEMfgAssemblyFactory(nullptr).CreateMfgAssembly(nullptr), E_FAIL);
  EXPECT_EQ(ZefMsgCatalog().LoadMsgCatalog("Catalog", 0), 0);
  EXPECT_EQ(Make<ZefDlgNotify>(nullptr, "name", 1u)->DisplayBlocked("message", "title"), 0);
  const auto preview = Make<ZefInventorySpaceWnd>(static_cast<ZefFrmEditor*>(nullptr));
  EXPECT_TRUE(!preview->GetViewer() && !preview->GetVisManager() && !window->DuplicateWindow());
  ZefReframeOn(*Make<ZefHSO>(), nullptr);
  ::setenv("TUV_TEST_VARIABLE", "", 1);
  EXPECT_STREQ(ZefGetEnv("TUV_TEST_VARIABLE"), "") << "set to nothing counts as set";
  ::unsetenv("TUV_TEST_VARIABLE");
  EXPECT_TRUE(!ZefGetEnv("TUV_TEST_VARIABLE") && !ZefGetEnv(nullptr));
}

TEST_F(WindowsTest, AMessageFallsBackToItsDefaultText) {
  const ZefUnicodeString parameters[] = {"first", "%1"};
  const auto build = [&](const char* catalog, const char* key, const char* text) {
    return ZefMsgCatalog::BuildMessage(catalog, key, parameters, 2, text);
  };
  EXPECT_EQ(build("Catalog", "Key", "no application: %1"), "no application: first");
  const Desk desk;
  EXPECT_EQ(build("Catalog", "Key", "unused"), "%1 before first, %3%% first0 %");
  EXPECT_EQ(build("Catalog", "Empty", "unused"), "");
  EXPECT_EQ(build("Catalog", "Missing", "%2 of %1"), "%1 of first");
  EXPECT_EQ(build("Missing", "Key", nullptr), "");
  EXPECT_EQ(build(nullptr, nullptr, "default"), "default");

  ZefMsgCatalog catalog;
  EXPECT_EQ(catalog.GetCatalogMsg("Key"), nullptr) << "not loaded yet";
  EXPECT_NE(catalog.LoadMsgCatalog("Catalog", 0), 0);
  EXPECT_EQ(catalog.LoadMsgCatalog("Missing", 0) + catalog.LoadMsgCatalog(nullptr, 0), 0);
  EXPECT_EQ(catalog.GetCatalogMsg("Key")->BuildMessage(), "%2 before %1, %3%% %10 %");
  EXPECT_EQ(catalog.GetCatalogMsg("None")->BuildMessage(), "");
}

TEST_F(WindowsTest, ADialogIsShownAsItWasAskedForAndFreedOnceClosed) {
  Desk desk;
  const long before = CountLiveObjects();
  EXPECT_EQ((new ZefDlgNotify(window, "Name", 0x04140200u))->DisplayBlocked("message", "title"), 7);
  const DialogRequest& shown = desk.shown.at(0);
  EXPECT_EQ(shown.name + "," + shown.message + "," + shown.title, "Name,message,title");
  EXPECT_TRUE(shown.parent == window.Get() && shown.style == 0x04140200u);
  auto* const open = new ZefDlgNotify(window, nullptr, 0);
  EXPECT_EQ(CountLiveObjects(), before + 1) << "the closed one went when the next was opened";
  auto* const orphan = new ZefDlgNotify(nullptr, "Name", 0);
  for (ZefDlgNotify* const dialog : {open, orphan, open, orphan}) {
    dialog->RequestDelayedDestruction();
    EXPECT_EQ(CountLiveObjects(), before + 2) << "not within the call";
  }
  for (int i = 0; i < 2; ++i) {
    window->FreeClosedDialogs();
    ZefDlgNotify::DestroyRequested();
  }
  EXPECT_EQ(CountLiveObjects(), before);
  (new ZefDlgNotify(window, "left open", 0))->SetVisibility(2);
}

class Reacting : public ZefFrmWindow {
 public:
  void OnClose(ZefCommand*, ZefNotification*, void* data) {
    ++*static_cast<int*>(data);
    if (last) *last = nullptr;
  }
  Handle<Reacting>* last = nullptr;
};

TEST_F(WindowsTest, AWindowReactsToItsOwnCloseAndMayEndThere) {
  int closed = 0;
  auto reacting = Make<Reacting>();
  reacting->SetFather(window);
  const auto react = [&](ZefFrmWindow& sender) {
    sender.AddNotificationCallback(reacting.Get(), sender.GetMDICloseNotification(),
                                   &Reacting::OnClose, &closed);
  };
  react(*reacting);
  react(*reacting);
  reacting->SendNotification(reacting->GetFather(), reacting->GetMDICloseNotification());
  reacting->SendNotification(nullptr, reacting->GetMDICloseNotification());
  EXPECT_EQ(closed, 0) << "sent to other windows";
  react(*window);
  reacting->last = &reacting;
  reacting->Close();
  EXPECT_EQ(closed, 2);
  EXPECT_FALSE(reacting);
  window->Close();
  EXPECT_EQ(closed, 2) << "a receiver that died hears no more";
}

}  // namespace
