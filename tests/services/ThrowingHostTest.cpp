#include <stdexcept>

#include "embedded/model/ObjectClass.h"
#include "host/HostApplication.h"
#include "host/dialog/ZefApplicationFrame.h"
#include "host/dialog/ZefDlgNotify.h"
#include "host/fastening/TuvIRabBltCBSubscriber.h"
#include "manufassly/TuvEUpdateManufAssly.h"
#include "services/Received.h"
#include "services/TuvBIWServices.h"
#include "tests/support/PlantTest.h"

namespace {

using namespace tests;
using Services = TuvBIWServices;
using List = ZefListValZefBaseUnknown_var;

using ThrowingHostTest = PlantTest;

template <class Call>
std::string WhatIsRaisedBy(const Call& call) {
  try {
    call();
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "nothing";
}

// Raises when it is asked whether it is a fastener.
class Thorn : public ComponentObject<ZefISPPItem> {
 public:
  ZefMetaClass* GetMetaObject() const override { return embedded::ObjectClass<Thorn>("Thorn"); }
  HRESULT QueryInterface(const _GUID& iIID, void** oPtr) override {
    if (iIID == TuvIBIWFastener::InterfaceId()) throw std::runtime_error("thorn");
    return ComponentObject::QueryInterface(iIID, oPtr);
  }
  using ComponentObject::QueryInterface;
};

TEST_F(ThrowingHostTest, MembersThatWereNotReachedAreGivenBack) {
  const auto thorn = embedded::MakeOwned<Thorn>();
  auto& operation = plant.Operation("OP10");
  const auto& weld = plant.Weld("SW-1");
  operation.Link(weld.Identity(), embedded::ItemLink::Plain);
  operation.Link(thorn->Identity(), embedded::ItemLink::Plain);
  operation.Link(weld.Identity(), embedded::ItemLink::Plain);
  ReferenceSnapshot before{operation.Identity(), weld.Identity(), thorn->Identity()};
  operation.Links().ForEach([&](const embedded::ItemLink& link) { before.Add(link.Identity()); });
  Received<List> welds;
  EXPECT_EQ(WhatIsRaisedBy([&] { Services::GetListOfKoraAssignedWeld(&operation, welds.Out()); }),
            "thorn");
  EXPECT_EQ(Names(*welds), Strings{"SW-1"}) << "what was found before stays";
  welds->RemoveAll();
  EXPECT_EQ(before.Differences(), "");
}

// An activity that raises when an item is added, when its callbacks are resumed, or at both.
class Stubborn : public ComponentObject<ZefISPPActivity, ZefISPPItemMgt, TuvIRabBltCBSubscriber> {
 public:
  ZefMetaClass* GetMetaObject() const override {
    return embedded::ObjectClass<Stubborn>("Stubborn");
  }
  HRESULT GetParentActivity(ZefISPPAbstractActivity_var&) override { return E_FAIL; }
  ZefUnicodeString GetLabel() override { return "stubborn"; }
  HRESULT AddItem(const ZefBaseUnknown_var&, ZefBaseUnknown_var&) override {
    if (raisesOnAdding) throw std::runtime_error("adding");
    return S_OK;
  }
  HRESULT RemoveItem(const ZefBaseUnknown_var&, int) override { return E_FAIL; }
  List* GetItems(const ZefUnicodeString&, int) override { return nullptr; }
  HRESULT AddItemLink(ZefBaseUnknown*&, const ZefISPPItem_var&, ZefBaseUnknown*,
                      const ZefUnicodeString&, int, int) override {
    return E_FAIL;
  }
  HRESULT SetCallbacksBlocked(int iBlocked) override {
    blocked.push_back(iBlocked);
    if (raisesOnResuming && !iBlocked) throw std::runtime_error("resuming");
    return S_OK;
  }
  bool raisesOnAdding = false;
  bool raisesOnResuming = false;
  std::vector<int> blocked;
};

TEST_F(ThrowingHostTest, CallbacksAreResumedAndTheFirstExceptionPasses) {
  struct {
    bool onAdding, onResuming;
    const char* passes;
  } const cases[] = {{false, false, "nothing"},
                     {true, false, "adding"},
                     {false, true, "resuming"},
                     {true, true, "adding"}};
  const auto& weld = plant.Weld("SW-1");
  List welds = ListOf(weld);
  for (const auto& [onAdding, onResuming, passes] : cases) {
    const auto activity = embedded::MakeOwned<Stubborn>();
    activity->raisesOnAdding = onAdding;
    activity->raisesOnResuming = onResuming;
    const ReferenceSnapshot before{activity->Identity(), weld.Identity()};
    EXPECT_EQ(
        WhatIsRaisedBy([&] { Services::AssignListOfWelds(&welds, activity.Get(), nullptr, 0); }),
        passes);
    EXPECT_EQ(activity->blocked, (std::vector{1, 0}));
    EXPECT_EQ(before.Differences(), "");
  }
}

// A frame without main window in an application whose dialogs cannot be shown.
class Mute : public HostApplication {
 public:
  Mute() { Install(this); }
  ~Mute() override { Install(nullptr); }
  ZefApplicationFrame* Frame() override { return frame_; }
  bool HasCatalog(const std::string&) override { return true; }
  int ShowDialog(const DialogRequest&) override { throw std::runtime_error("mute"); }

 private:
  class Windowless : public ZefApplicationFrame {
   public:
    ZefFrmWindow* GetMainWindow() override { return nullptr; }
  };
  Handle<Windowless> frame_ = Make<Windowless>();
};

TEST_F(ThrowingHostTest, ADialogThatCannotBeShownIsDestroyed) {
  const auto update = Make<TuvEUpdateManufAssly>();
  const Mute mute;
  const long alive = CountLiveObjects();
  ZefUnicodeString names = "A", message = "MultipleActsInFlow";
  EXPECT_EQ(WhatIsRaisedBy([&] { update->DisplayWarningWindow(names, message); }), "mute");
  ZefDlgNotify::DestroyRequested();
  EXPECT_EQ(CountLiveObjects(), alive);
}

}  // namespace
