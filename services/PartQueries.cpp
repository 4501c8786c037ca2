#include <memory>

#include "frame/Trace.h"
#include "host/process/ZefISPPFlowMgt.h"
#include "host/process/ZefISPPItemMgt.h"
#include "host/process/ZefISPPProductIO.h"
#include "host/product/ZefINavigateObject.h"
#include "host/values/Each.h"
#include "services/ActivityTree.h"
#include "services/DepthFirst.h"
#include "services/TuvBIWServices.h"
#include "services/WalkBack.h"

namespace {

using NewList = std::unique_ptr<ZefListValZefBaseUnknown_var>;

constexpr char kChildPartsEntry[] = "TuvBIWServices::GetChildParts -- IN";
constexpr char kChildPartsExit[] = "TuvBIWServices::GetChildParts -- OUT";

NewList ChildProducts(const ZefIProduct_var& product) {
  const ZefINavigateObject_var node = product;
  return NewList(node ? node->GetChildren() : nullptr);
}

void AppendOthers(const ZefListValZefBaseUnknown_var& children, int position,
                  ZefListValZefBaseUnknown_var& ioParts) {
  for (int i = 1; i <= children.Size(); ++i) {
    const ZefIProduct_var sibling = children[i];
    if (i != position && sibling) ioParts.Append(sibling);
  }
}

// What an activity has of its own and what it makes.
void AppendPartsOf(const ZefISPPActivity_var& activity, ZefListValZefBaseUnknown_var*& ioParts) {
  TuvBIWServices::GetAssignedParts(activity, ioParts);
  TuvBIWServices::GetProductOutputsFromActivity(activity, ioParts);
}

}  // namespace

unsigned char GetSiblingPartsFromProduct(ZefIProduct_var iRoot, ZefIProduct_var iProduct,
                                         ZefListValZefBaseUnknown_var*& ioParts) {
  if (!iRoot || !iProduct) return 0;
  const ZefUnicodeString number = iProduct->GetPartNumber();
  const auto meet = [&](const ZefIProduct_var& child, const ZefListValZefBaseUnknown_var& children,
                        int position) {
    if (!(child->GetPartNumber() == number)) return Onward::Below;
    if (ioParts) AppendOthers(children, position, *ioParts);
    return Onward::Stop;
  };
  return WalkDepthFirst<OnceGuard>(iRoot, ChildProducts, meet) ? 0 : 1;
}

int TuvBIWServices::GetLoadedParts(const ZefISPPActivity_var& iActivity,
                                   ZefListValZefBaseUnknown_var*& ioParts) {
  if (!iActivity || !ioParts) return 0;
  GetPartsFromPreviousActs(iActivity, ioParts);
  GetAssignedParts(iActivity, ioParts);
  GetPartsFromChildrenActs(iActivity, ioParts);
  return 0;
}

void TuvBIWServices::GetAssignedParts(ZefISPPActivity_var iActivity,
                                      ZefListValZefBaseUnknown_var*& ioParts) {
  // The exit line stands at the entry, too.
  TuvKelBIWUtilsTrace.TraPutLN("TuvBIWServices::GetAssignedParts -- OUT");
  if (!iActivity) return;
  const TraceScope trace("TuvBIWServices::GetAssignedParts -- OUT");
  const ZefISPPItemMgt_var management = iActivity;
  const NewList items(management ? management->GetItems("Item", 0) : nullptr);
  for (const auto& product : Each<ZefIProduct>(items)) {
    if (!ioParts || ioParts->Locate(product, 1) != 0) continue;
    ioParts->Append(product);
    if (product->GetChildrenCount() != 0) GetAllChildParts(product, ioParts);
  }
}

void TuvBIWServices::GetChildParts(ZefIProduct_var iProduct,
                                   ZefListValZefBaseUnknown_var*& ioParts) {
  const TraceScope trace(kChildPartsEntry, kChildPartsExit);
  if (!ioParts) return;
  for (const auto& child : Each<ZefIProduct>(ChildProducts(iProduct))) ioParts->Append(child);
}

void TuvBIWServices::GetAllChildParts(ZefIProduct_var iProduct,
                                      ZefListValZefBaseUnknown_var*& ioParts) {
  // Without a list nothing is looked at; the lines are those of a product without children.
  const auto children = [&](const ZefIProduct_var& product) {
    return ioParts ? ChildProducts(product) : nullptr;
  };
  const auto append = [&](const ZefIProduct_var& child, const auto&, int) {
    if (ioParts->Locate(child, 1) != 0) return Onward::Past;
    ioParts->Append(child);
    return child->GetChildrenCount() != 0 ? Onward::Below : Onward::Past;
  };
  // What is listed is not entered again, so rings end.
  WalkDepthFirst<NoGuard>(
      iProduct, children, append, [] { TuvKelBIWUtilsTrace.TraPutLN(kChildPartsEntry); },
      [] { TuvKelBIWUtilsTrace.TraPutLN(kChildPartsExit); });
}

void TuvBIWServices::GetSiblingParts(ZefIProduct_var iProduct,
                                     ZefListValZefBaseUnknown_var*& ioParts) {
  const TraceScope trace("TuvBIWServices::GetSiblingParts -- IN",
                         "TuvBIWServices::GetSiblingParts -- OUT");
  if (!iProduct) return;
  const ZefISPPProcessContainer_var container = GetRootProcessContainer(nullptr);
  // The container keeps the list of its product roots.
  const ZefListValZefBaseUnknown_var* const roots =
      container ? container->GetProductRoots() : nullptr;
  for (const auto& root : Each<ZefIProduct>(roots)) {
    if (GetSiblingPartsFromProduct(root, iProduct, ioParts)) return;
  }
}

void TuvBIWServices::GetPartsFromPreviousActs(const ZefISPPActivity_var& iActivity,
                                              ZefListValZefBaseUnknown_var*& ioParts) {
  if (!iActivity || !ioParts) return;
  WalkBack<PathGuard>().Run(iActivity, [&](const ZefISPPActivity_var& previous) {
    AppendPartsOf(previous, ioParts);
    GetPartsFromChildrenActs(previous, ioParts);
  });
}

void TuvBIWServices::GetPartsFromChildrenActs(const ZefISPPActivity_var& iActivity,
                                              ZefListValZefBaseUnknown_var*& ioParts) {
  if (!iActivity || !ioParts) return;
  WalkDepthFirst(iActivity, ChildActivities,
                 [&](const ZefISPPActivity_var& child, const auto&, int) {
                   AppendPartsOf(child, ioParts);
                   return Onward::Below;
                 });
}

void TuvBIWServices::GetProductOutputsFromActivity(const ZefISPPActivity_var& iActivity,
                                                   ZefListValZefBaseUnknown_var*& ioParts) {
  const ZefISPPFlowMgt_var flow = iActivity;
  if (!flow) return;
  ZefISPPItem_var unused;
  for (const auto& output : Each<ZefISPPProductIO>(flow->GetProductOutputs(unused))) {
    ZefBaseUnknown_var made;
    output->GetProduct(made.Put());
    const ZefIProduct_var product = made;
    if (!product) continue;
    if (!ioParts) ioParts = new ZefListValZefBaseUnknown_var;
    // The answer is not needed; a host may load the product when it is asked.
    ZefUnicodeString text;
    product->GetProductText(text);
    ioParts->Append(product);
  }
}

int TuvBIWServices::IsPartInList(ZefUnicodeString& iPartNumber,
                                 ZefListValZefBaseUnknown_var* iParts) {
  TuvKelBIWUtilsTrace.TraPutLN("TuvBIWServices::IsPartInList -- in");
  if (!iParts) return 0;
  for (const auto& part : Each<ZefIProduct>(*iParts)) {
    if (part->GetPartNumber() == iPartNumber) return 1;
  }
  TuvKelBIWUtilsTrace.TraPutLN("TuvBIWServices::IsPartInList -- out");
  return 0;
}

int TuvBIWServices::ArePartsLoaded(ZefBaseUnknown* iWeld, ZefListValZefBaseUnknown_var* iParts) {
  TuvKelBIWUtilsTrace.TraPutLN("TuvBIWServices::ArePartsLoaded -- in");
  const TuvIBIWFastener_var weld = iWeld;
  if (weld && Succeeded(KoraWeldJointedPartsInList(weld, iParts))) return 1;
  TuvKelBIWUtilsTrace.TraPutLN("TuvBIWServices::ArePartsLoaded -- out");
  return 0;
}

int TuvBIWServices::CompareTwoLists(const ZefListValZefBaseUnknown_var& iReference,
                                    const ZefListValZefBaseUnknown_var& iCandidates, int iMode) {
  constexpr int kContainment = 1;
  constexpr int kOverlap = 2;
  if (iCandidates.Size() == 0 || iReference.Size() == 0) return 0;
  if (iMode != kContainment && iMode != kOverlap) return 1;
  // The first candidate that is found or missing decides; the last one does for all that agree.
  const bool deciding = iMode == kOverlap;
  for (int i = 1; i <= iCandidates.Size(); ++i) {
    const bool found = iReference.Locate(iCandidates[i], 1) != 0;
    if (found == deciding) return deciding;
  }
  return !deciding;
}
