#include "host/dialog/Dialog.h"
#include "host/document/Document.h"
#include "host/visu/Visu.h"
#include "tests/host/InterfacePins.h"

namespace {

using tests::PinOrder;
using tests::TextOf;

TEST(InterfaceTest, TheRootHasSeventeenOperations) {
  using Root = ZefBaseUnknown;
  PinOrder("counting", 0,
           static_cast<HRESULT (Root::*)(const _GUID&, void**)>(&Root::QueryInterface),
           &Root::AddRef, &Root::Release, &Root::GetTypeInfoCount, &Root::GetTypeInfo,
           &Root::GetIDsOfNames, &Root::Invoke);
  // The destructor stands between.
  PinOrder("description", 9, &Root::GetMetaObject, &Root::IsA, &Root::IsAKindOf, &Root::GetImpl,
           &Root::SetImpl, &Root::IsNull, &Root::IsEqual,
           static_cast<Root* (Root::*)(const char*)>(&Root::QueryInterface),
           &Root::ChangeComponentState);
  EXPECT_EQ(TextOf(IID_IUnknown), "D9591140-AC8B-8746-B4BEF37912E76AE5");
  EXPECT_EQ(TextOf(IID_ZefBaseUnknown), "026DBFCC-FED0-841F-9C76869F980EC2C3");
  EXPECT_EQ(TextOf(CLSID_ZefMetaClass), "821A6307-F9BA-8BB9-9C4CA88AABEDB521");
}

TEST(InterfaceTest, OperationsKeepTheirPlacesAndInterfacesTheirIdentifiers) {
  tests::PinInterfaces();
}

TEST(InterfaceTest, TheClassesThatAnApplicationImplementsKeepTheirPlaces) {
  using Manager = ZefVisManager;
  using Path = ZefPathElement;
  using Point = Zef3DViewpoint;
  using Ids = ZefListValIID;
  const int first = tests::kFirstOwnPlace;
  PinOrder("ZefFrmEditor", first, &ZefFrmEditor::GetDocument, &ZefFrmEditor::GetHSO,
           &ZefFrmEditor::GetISO, &ZefFrmEditor::GetPSO);
  PinOrder("ZefApplicationFrame", first, &ZefApplicationFrame::GetMainWindow);
  PinOrder("ZefFrmLayout", first, &ZefFrmLayout::GetCurrentWindow);
  PinOrder("Zef3DViewer", first, &Zef3DViewer::Draw, &Zef3DViewer::GetMain3DViewpoint,
           &Zef3DViewer::RemoveRep);
  PinOrder("ZefVisManager", first, &Manager::AttachPSOTo, &Manager::AttachHSOTo,
           &Manager::DetachPSOFrom, &Manager::DetachHSOFrom,
           static_cast<void (Manager::*)(Point*, int)>(&Manager::DetachFrom),
           static_cast<void (Manager::*)(Zef3DRep*, Point*, Zef3DViewer*, int, int, int)>(
               &Manager::AttachTo),
           static_cast<void (Manager::*)(Path*, Point*, const Ids&, Zef3DViewer*, int, int, int,
                                         int, int)>(&Manager::AttachTo),
           static_cast<void (Manager::*)(Path*, Point*, const Ids&, int)>(&Manager::DetachFrom));
}

}  // namespace
