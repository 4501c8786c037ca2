#include <cstdint>
#include <cstring>
#include <dlfcn.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iomanip>
#include <map>
#include <sstream>
#include <vector>

#include "host/dialog/Dialog.h"
#include "host/document/Document.h"
#include "host/fastening/Fastening.h"
#include "host/process/Process.h"
#include "host/processdb/ProcessDb.h"
#include "host/product/Product.h"
#include "host/visu/Visu.h"
#include "manufassly/TuvIUpdateManufAssly.h"

namespace {

// Place of a virtual operation in the table of its class, as compilers of the common C++ ABI store
// it in a pointer to the member; -1 for an operation that is not virtual. The first operation has
// 0; a destructor has two places.
template <class Member>
int Slot(Member operation) {
  std::uintptr_t words[2];
  static_assert(sizeof operation == sizeof words);
  std::memcpy(words, &operation, sizeof words);
  if (((words[0] | words[1]) & 1u) == 0) return -1;
  return static_cast<int>((words[0] & ~std::uintptr_t{1}) / sizeof(void*));
}

std::vector<int> CountedFrom(int first, std::size_t count) {
  std::vector<int> slots(count);
  for (int& slot : slots) slot = first++;
  return slots;
}

constexpr int kFirstOwn = 18;

std::string TextOf(const _GUID& id) {
  std::ostringstream text;
  text << std::hex << std::uppercase << std::setfill('0') << std::setw(8) << id.Data1 << '-'
       << std::setw(4) << id.Data2 << '-' << std::setw(4) << id.Data3 << '-';
  for (const unsigned byte : id.Data4) text << std::setw(2) << byte;
  return text.str();
}

// "name identifier" lines, in any order.
std::map<std::string, std::string> PinnedIdentifiers() {
  std::ifstream file(TUV_SOURCE_DIR "/tests/host/identifiers.txt");
  std::map<std::string, std::string> pinned;
  for (std::string name, id; file >> name >> id;) pinned[name] = id;
  return pinned;
}

class InterfaceTest : public testing::Test {
 protected:
  // The operations take consecutive places after those that the interface inherits, in the order
  // given, and the interface has the identifier that is written down.
  template <class I, class... Members>
  void Pin(Members... operations) {
    using Base = typename I::BaseInterface;
    const int first = std::is_same_v<Base, ZefBaseUnknown> ? kFirstOwn : kFirstOwn + 2;
    Order(I::ClassName(), first, operations...);
    EXPECT_EQ(TextOf(I::InterfaceId()), pinned[I::ClassName()]) << I::ClassName();
    const std::string symbol = std::string("IID_") + I::ClassName();
    const auto* const exported = static_cast<const _GUID*>(dlsym(RTLD_DEFAULT, symbol.c_str()));
    EXPECT_TRUE(exported && *exported == I::InterfaceId()) << symbol;
    EXPECT_EQ(I::MetaObject()->GetKind(), TypeInterface);
    EXPECT_EQ(FindInterface(I::InterfaceId()), I::MetaObject());
    EXPECT_EQ(FindInterface(I::ClassName()), I::MetaObject());
    ++seen;
  }
  template <class... Members>
  void Order(const char* name, int first, Members... operations) {
    EXPECT_EQ((std::vector<int>{Slot(operations)...}), CountedFrom(first, sizeof...(operations)))
        << name;
  }

  std::map<std::string, std::string> pinned = PinnedIdentifiers();
  std::size_t seen = 0;
};

TEST_F(InterfaceTest, TheRootHasSeventeenOperations) {
  using Root = ZefBaseUnknown;
  Order("counting", 0, static_cast<HRESULT (Root::*)(const _GUID&, void**)>(&Root::QueryInterface),
        &Root::AddRef, &Root::Release, &Root::GetTypeInfoCount, &Root::GetTypeInfo,
        &Root::GetIDsOfNames, &Root::Invoke);
  // The destructor is the eighth operation.
  Order("description", 9, &Root::GetMetaObject, &Root::IsA, &Root::IsAKindOf, &Root::GetImpl,
        &Root::SetImpl, &Root::IsNull, &Root::IsEqual,
        static_cast<Root* (Root::*)(const char*)>(&Root::QueryInterface),
        &Root::ChangeComponentState);
  Order("interface", 0, &IUnknown::QueryInterface, &IUnknown::AddRef, &IUnknown::Release);
  EXPECT_EQ(TextOf(IID_IUnknown), pinned["IUnknown"]);
  EXPECT_EQ(TextOf(IID_ZefBaseUnknown), pinned["ZefBaseUnknown"]);
  EXPECT_EQ(TextOf(CLSID_ZefMetaClass), pinned["ZefMetaClass"]);
}

TEST_F(InterfaceTest, OperationsKeepTheirPlacesAndInterfacesTheirIdentifiers) {
  Pin<ZefDocument>(&ZefDocument::GetCompoundContainer, &ZefDocument::GetDocEnvironment);
  Pin<ZefInit>(&ZefInit::GetRootContainer);
  Pin<ZefICompoundContainer>(&ZefICompoundContainer::GetContainer);
  Pin<ZefIContainer>(&ZefIContainer::ListMembersHere);
  Pin<ZefILinkableObject>(&ZefILinkableObject::GetPointingHolder, &ZefILinkableObject::GetDocument);
  Pin<ZefIPointingHolder>(&ZefIPointingHolder::ListPointingObjects);
  Pin<ZefISpecObject>(&ZefISpecObject::GetFather, &ZefISpecObject::GetFeatContainer);
  Pin<ZefIRedrawEvent>(&ZefIRedrawEvent::Redraw, &ZefIRedrawEvent::RedrawNode);
  Pin<ZefIAlias>(&ZefIAlias::GetAlias);

  Pin<ZefISPPProcessContainer>(&ZefISPPProcessContainer::GetProcessRoots,
                               &ZefISPPProcessContainer::GetProductRoots);
  Pin<ZefISPPActivityRoot>();
  Pin<ZefISPPAbstractActivity>(&ZefISPPAbstractActivity::GetParentActivity,
                               &ZefISPPAbstractActivity::GetLabel);
  Pin<ZefISPPActivity>();
  Pin<ZefISPPFlowMgt>(&ZefISPPFlowMgt::GetPreviousActivities, &ZefISPPFlowMgt::GetProductOutputs,
                      &ZefISPPFlowMgt::GetNextActivities, &ZefISPPFlowMgt::GetItemSource,
                      &ZefISPPFlowMgt::AddProductOutput);
  Pin<ZefISPPProductIO>(&ZefISPPProductIO::GetProduct, &ZefISPPProductIO::SetProduct);
  Pin<ZefISPPChildManagement>(&ZefISPPChildManagement::GetChildren);
  Pin<ZefISPPItemMgt>(&ZefISPPItemMgt::AddItem, &ZefISPPItemMgt::RemoveItem,
                      &ZefISPPItemMgt::GetItems, &ZefISPPItemMgt::AddItemLink);
  Pin<ZefISPPActivitySpecification>(&ZefISPPActivitySpecification::GetSpecifiedItem);
  Pin<ZefISPPItem>();
  Pin<ZefISPPControlFlow>(&ZefISPPControlFlow::GetFrom, &ZefISPPControlFlow::GetTo);
  Pin<ZefISPPFlowEnd>(&ZefISPPFlowEnd::GetActivity);
  Pin<ZefISPPActivityModificationEvents>(&ZefISPPActivityModificationEvents::GetDispatcher);

  Pin<ZefIProduct>(&ZefIProduct::GetReferenceProduct, &ZefIProduct::GetChildrenCount,
                   &ZefIProduct::GetAllChildren, &ZefIProduct::GetProductText,
                   &ZefIProduct::GetPartNumber);
  Pin<ZefINavigateObject>(&ZefINavigateObject::GetChildren);
  Pin<ZefIMovable>(&ZefIMovable::GetAbsPosition);
  Pin<ZefIAsmGraphicProperties>(&ZefIAsmGraphicProperties::GetColor);

  Pin<TuvIBIWFastener>(&TuvIBIWFastener::GetRepresentedObject, &TuvIBIWFastener::SetDisplayStatus,
                       &TuvIBIWFastener::GetJointedParts, &TuvIBIWFastener::GetFastenerType);
  Pin<TuvIBIWPointFastener>();
  Pin<TuvIBIWCurveFastener>(&TuvIBIWCurveFastener::GetPoint);
  Pin<TuvIBIWLocatingPoint>();
  Pin<TuvIBIWClampingPoint>();
  Pin<TuvIBIWFeature>();
  Pin<TuvIBIWFeatureContainer>(&TuvIBIWFeatureContainer::ListProcessVersionIDs,
                               &TuvIBIWFeatureContainer::ListPaskAssignmentIDs);
  Pin<TuvIBIWItemInfo>(&TuvIBIWItemInfo::GetProductOutputs, &TuvIBIWItemInfo::GetOutputs,
                       &TuvIBIWItemInfo::GetOutputProductIOs, &TuvIBIWItemInfo::GetInputItems,
                       &TuvIBIWItemInfo::GetFirstAssignedInputs);
  Pin<TuvISpotWeld>(&TuvISpotWeld::GetPositionAndOrientation, &TuvISpotWeld::IsAssignedInPask,
                    &TuvISpotWeld::GetX, &TuvISpotWeld::GetY, &TuvISpotWeld::GetZ,
                    &TuvISpotWeld::GetCarrier);
  Pin<TuvIBIWActivity>(&TuvIBIWActivity::IsValidFastener);
  Pin<TuvIBIWActivityWelding>(&TuvIBIWActivityWelding::UpdateCycleTime);
  Pin<TuvIBIWActivityCurveFastening>(&TuvIBIWActivityCurveFastening::UpdateCycleTime);
  Pin<TuvIRabBltCBSubscriber>(&TuvIRabBltCBSubscriber::SetCallbacksBlocked);
  Pin<TuvIRabBltMgr>(&TuvIRabBltMgr::ProcessPendingUpdates);
  Pin<TuvIMfgAssembly>(&TuvIMfgAssembly::SetName, &TuvIMfgAssembly::GetName,
                       &TuvIMfgAssembly::GetChildren, &TuvIMfgAssembly::AddChild,
                       &TuvIMfgAssembly::RemoveChild);
  Pin<TuvIUpdateManufAssly>(&TuvIUpdateManufAssly::AddUpdateCallback,
                            &TuvIUpdateManufAssly::RemoveUpdateCallback,
                            &TuvIUpdateManufAssly::AddWeldColorUpdateCallback,
                            &TuvIUpdateManufAssly::ReturnZefCallbackStatus);

  Pin<ZefIIPDAdapter>(&ZefIIPDAdapter::GetIPDObject, &ZefIIPDAdapter::GetObjectFromID,
                      &ZefIIPDAdapter::GetObjectID, &ZefIIPDAdapter::GetBaseProcess,
                      &ZefIIPDAdapter::GetIDString);
  Pin<ZefIIPDDataMgt>(&ZefIIPDDataMgt::ListParents);
  Pin<ZefIIPDVersionMgt>(&ZefIIPDVersionMgt::ListRelatedVersions);

  Pin<ZefI3DGeoVisu>(&ZefI3DGeoVisu::GetRep);
  Pin<ZefIVisu>(&ZefIVisu::GetRep);
  Pin<ZefIModelEvents>(&ZefIModelEvents::Dispatch);
  Pin<ZefIVisProperties>(&ZefIVisProperties::GetPropertiesAtt);
  // Besides: IUnknown, ZefBaseUnknown, ZefMetaClass.
  EXPECT_EQ(seen + 3, pinned.size());
}

TEST_F(InterfaceTest, TheClassesThatAnApplicationImplementsKeepTheirPlaces) {
  using Manager = ZefVisManager;
  using Path = ZefPathElement;
  using Point = Zef3DViewpoint;
  using Ids = ZefListValIID;
  Order("ZefFrmEditor", kFirstOwn, &ZefFrmEditor::GetDocument, &ZefFrmEditor::GetHSO,
        &ZefFrmEditor::GetISO, &ZefFrmEditor::GetPSO);
  Order("ZefApplicationFrame", kFirstOwn, &ZefApplicationFrame::GetMainWindow);
  Order("ZefFrmLayout", kFirstOwn, &ZefFrmLayout::GetCurrentWindow);
  Order("Zef3DViewer", kFirstOwn, &Zef3DViewer::Draw, &Zef3DViewer::GetMain3DViewpoint,
        &Zef3DViewer::RemoveRep);
  Order("ZefVisManager", kFirstOwn, &Manager::AttachPSOTo, &Manager::AttachHSOTo,
        &Manager::DetachPSOFrom, &Manager::DetachHSOFrom,
        static_cast<void (Manager::*)(Point*, int)>(&Manager::DetachFrom),
        static_cast<void (Manager::*)(Zef3DRep*, Point*, Zef3DViewer*, int, int, int)>(
            &Manager::AttachTo),
        static_cast<void (Manager::*)(Path*, Point*, const Ids&, Zef3DViewer*, int, int, int, int,
                                      int)>(&Manager::AttachTo),
        static_cast<void (Manager::*)(Path*, Point*, const Ids&, int)>(&Manager::DetachFrom));
}

}  // namespace
