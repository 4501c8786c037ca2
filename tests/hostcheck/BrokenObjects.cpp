#include "tests/hostcheck/BrokenObjects.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "host/component/Extensions.h"

namespace tests {

namespace {

using namespace workshop;

List Reversed(const List& list) {
  List reversed;
  for (int i = list.Size(); i >= 1; --i) reversed.Append(list[i]);
  return reversed;
}

// Always the same list, which the host also deletes at its end.
List* Shared(std::unique_ptr<List>& shared, List* list) {
  if (!shared) shared.reset(list);
  if (shared.get() != list) delete list;
  return shared.get();
}

template <class T>
void GiveBack(T* object) {
  if (object) object->Release();
}

}  // namespace

HRESULT BrokenActivity::QueryInterface(const _GUID& iIID, void** oPtr) {
  const bool isRoot = iIID == IID_ZefBaseUnknown;
  const bool known = FindInterface(iIID) != nullptr;
  if (known && !isRoot && Commits("each tenth query fails") && ++queries_ % 10 == 0) {
    *oPtr = nullptr;
    return E_FAIL;
  }
  const HRESULT result = Activity::QueryInterface(iIID, oPtr);
  if (!oPtr) return result;
  const bool isExtension = *oPtr && ExtendedObject(static_cast<ZefBaseUnknown*>(*oPtr));
  if (isExtension && Commits("knows no extensions")) {
    GiveBack(static_cast<ZefBaseUnknown*>(std::exchange(*oPtr, nullptr)));
    return E_FAIL;
  }
  if (Succeeded(result) && Commits("queries without reference")) Release();
  if (Succeeded(result) && Commits("queries with two references")) AddRef();
  if (Failed(result) && Commits("failed queries take a reference")) AddRef();
  if (Failed(result) && Commits("failed queries leave the pointer")) *oPtr = Identity();
  if (Failed(result) && Commits("failed queries say success")) return S_OK;
  if (isRoot && Commits("two identities") && ++queries_ % 2) {
    *oPtr = static_cast<ZefISPPItemMgt*>(this);
  }
  if (iIID == IID_ZefISPPItemMgt && Commits("an interface as another one")) *oPtr = Identity();
  return result;
}

ZefBaseUnknown* BrokenActivity::QueryInterface(const char* iName) {
  if (Commits("no name is any name") && !iName) return WithReference(Identity());
  ZefBaseUnknown* const answer = Activity::QueryInterface(iName);
  if (!answer || !Commits("by name the identity comes")) return answer;
  answer->Release();
  return WithReference(Identity());
}

HRESULT BrokenActivity::GetParentActivity(ZefISPPAbstractActivity_var& oParent) {
  if (Commits("parents are left as they were") && !Parent()) return S_OK;
  if (Commits("the parent is the topmost one") && Parent() && Parent()->Parent()) {
    return Give(oParent, Parent()->Parent()->Identity());
  }
  if (Commits("parents leak") && Parent()) Parent()->AddRef();
  return Activity::GetParentActivity(oParent);
}

List* BrokenActivity::GetChildren(const ZefUnicodeString& iType) {
  if (Commits("children of every kind")) return Activity::GetChildren("");
  List* const children = Activity::GetChildren(iType);
  if (Commits("grandchildren are children")) {
    for (workshop::Activity* const child : Children()) {
      children->Append(*std::unique_ptr<List>(child->GetChildren(iType)));
    }
  }
  return Commits("a shared list of children") ? Shared(shared_, children) : children;
}

ZefBaseUnknown* BrokenActivity::GetFather() {
  if (Commits("nobody has a father")) return nullptr;
  ZefBaseUnknown* const father = Activity::GetFather();
  if (Commits("fathers are borrowed")) GiveBack(father);
  return father;
}

HRESULT BrokenActivity::GetFeatContainer(ZefIContainer_var& oContainer) {
  if (!Commits("one container for all")) return Activity::GetFeatContainer(oContainer);
  const auto top = [](workshop::Activity* activity) {
    while (activity->Parent()) activity = activity->Parent();
    return activity;
  };
  return top(this)->Activity::GetFeatContainer(oContainer);
}

List BrokenActivity::GetPreviousActivities(const ZefUnicodeString& iType) {
  if (Commits("neighbours of every kind")) return Activity::GetPreviousActivities("Activity");
  return Activity::GetPreviousActivities(iType);
}

List BrokenActivity::GetNextActivities(const ZefUnicodeString& iType) {
  List next = Activity::GetNextActivities(iType);
  if (Commits("neighbours are doubled")) next.Append(List(next));
  if (Commits("the newest neighbour comes first")) return Reversed(next);
  return next;
}

List BrokenActivity::GetProductOutputs(ZefISPPItem_var& oItem) {
  const List outputs = Activity::GetProductOutputs(oItem);
  if (Commits("the last output's product") && outputs.Size()) oItem = Outputs().back()->product;
  return Commits("the newest output comes first") ? Reversed(outputs) : outputs;
}

HRESULT BrokenActivity::GetItemSource(ZefBaseUnknown*& oSource, const ZefISPPItem_var& iItem) {
  if (Commits("no source is a failure") && !iItem) return E_FAIL;
  if (Commits("own outputs are sources")) {
    for (const auto& output : Outputs()) {
      if (output->product == iItem) return Give(oSource, WithReference(output->Identity()));
    }
  }
  ZefBaseUnknown* const before = oSource;
  const HRESULT result = Activity::GetItemSource(oSource, iItem);
  if (Commits("no source leaves the pointer") && !oSource) oSource = before;
  if (Commits("sources are borrowed")) GiveBack(oSource);
  return result;
}

HRESULT BrokenActivity::AddProductOutput(ZefISPPProductIO*& oOutput, const ZefISPPItem_var& iItem) {
  const auto made = Ref<BrokenOutput>::Make(*this);
  outputs_.push_back(made);
  oOutput = ZefISPPProductIO_var(made->Identity()).Detach();
  if (iItem && Commits("outputs told before their product")) {
    Tell(39, made->Identity());
    made->product = iItem;
  } else if (iItem) {
    made->SetProduct(iItem);
  }
  if (!iItem && Commits("outputs told without product")) Tell(39, made->Identity());
  if (Commits("made outputs are borrowed")) GiveBack(oOutput);
  return S_OK;
}

ZefSPPActivityNotificationDispatcher* BrokenActivity::GetDispatcher() {
  if (!Commits("a dispatcher for each")) return Activity::GetDispatcher();
  if (!own_) own_ = Make<ZefSPPActivityNotificationDispatcher>();
  return own_.Get();
}

HRESULT BrokenActivity::AddItem(const ZefBaseUnknown_var& iItem, ZefBaseUnknown_var& oItem) {
  if (Commits("null can be added") && !iItem) return S_OK;
  ZefBaseUnknown_var link;
  if (Commits("added items are first assigned") && iItem) {
    oItem = iItem;
    return AddItemLink(link.Put(), ZefISPPItem_var(iItem), nullptr, "", 0, 2);
  }
  const HRESULT result = Activity::AddItem(iItem, oItem);
  if (Commits("added items notify")) Tell(17, iItem);
  return result;
}

HRESULT BrokenActivity::RemoveItem(const ZefBaseUnknown_var& iItem, int iSelector) {
  if (Commits("removed in vain with success") && iItem) {
    Activity::RemoveItem(iItem, iSelector);
    return S_OK;
  }
  if (Commits("removes whatever the selector")) return Activity::RemoveItem(iItem, -1);
  if (Commits("removes one link at a time")) {
    const auto found = std::find_if(links_.begin(), links_.end(), [&](const Ref<ItemLink>& link) {
      return link->item == iItem && (iSelector == -1 || link->selector == iSelector);
    });
    if (found == links_.end()) return E_FAIL;
    (*found)->Drop();
    links_.erase(found);
    Tell(18, iItem);
    return S_OK;
  }
  if (Commits("removal told before the links went")) Tell(18, iItem);
  return Activity::RemoveItem(iItem, iSelector);
}

List* BrokenActivity::GetItems(const ZefUnicodeString& iType, int iSelector) {
  List* const items = Activity::GetItems(iType, Commits("items of any selector") ? 0 : iSelector);
  if (Commits("the sixth item is lost") && items && items->Size() > 5) items->RemovePosition(6);
  return Commits("a shared list of items") ? Shared(shared_, items) : items;
}

HRESULT BrokenActivity::AddItemLink(ZefBaseUnknown*& oLink, const ZefISPPItem_var& iItem,
                                    ZefBaseUnknown* iSource, const ZefUnicodeString& iName,
                                    int iFixed, int iSelector) {
  const ZefBaseUnknown_var item = iItem;
  if (Commits("first assignment told before the link") && iSelector == 2) Tell(17, item);
  if (Commits("items are linked once")) {
    for (const auto& link : links_) {
      if (link->item == item) return Give(oLink, WithReference(link->Identity()));
    }
  }
  const HRESULT result = Activity::AddItemLink(oLink, iItem, iSource, iName, iFixed, iSelector);
  if (Failed(result)) return result;
  if (Commits("every link notifies")) Tell(17, item);
  if (Commits("made links are borrowed")) GiveBack(oLink);
  if (Commits("links are never given back")) oLink->AddRef();
  if (Commits("links without father")) {
    GiveBack(oLink);
    oLink = WithReference(Ref<ItemLink>::Make(nullptr, item.Get(), iSelector)->Identity());
  }
  return result;
}

HRESULT BrokenActivity::GetOutputs(List& ioList, int iMode) {
  if (!Commits("outputs without regard to the list")) return Activity::GetOutputs(ioList, iMode);
  for (const auto& output : Outputs()) {
    ioList.Append(iMode == 0 ? output->Identity() : output->product.Get());
  }
  return S_OK;
}

HRESULT BrokenActivity::GetInputItems(List& ioList) {
  return Commits("welds are inputs") ? GetFirstAssignedInputs(ioList)
                                     : Activity::GetInputItems(ioList);
}

int BrokenActivity::IsValidFastener(const TuvIBIWFastener_var& iFastener) {
  const int valid = Activity::IsValidFastener(iFastener);
  return Commits("validity in the second byte") ? valid << 8 : valid;
}

HRESULT BrokenActivity::SetCallbacksBlocked(int iBlocked) {
  if (Commits("suspended once") && blocked && iBlocked) return E_FAIL;
  blocked = iBlocked != 0;
  return S_OK;
}

HRESULT BrokenOutput::GetProduct(ZefBaseUnknown*& oProduct) {
  Output::GetProduct(oProduct);
  if (Commits("products are borrowed")) GiveBack(oProduct);
  return S_OK;
}

bool BrokenContainer::IsAsked() {
  return Commits("the root comes last") || Commits("members as identities") ||
         Commits("members are borrowed") || Commits("members replace the sequence") ||
         Commits("product roots are new lists") || Commits("process roots are shared");
}

HRESULT BrokenContainer::ListMembersHere(const char* iType,
                                         _SEQUENCE_ZefBaseUnknown_ptr& ioMembers) {
  std::vector<ZefBaseUnknown*> objects;
  for (const auto& activity : process_.Activities()) objects.push_back(activity->Identity());
  if (Commits("the root comes last"))
    std::rotate(objects.begin(), objects.begin() + 1, objects.end());
  if (Commits("members replace the sequence")) ioMembers = {};
  for (ZefBaseUnknown* const object : objects) {
    ZefBaseUnknown* const answer = object->QueryInterface(iType);
    if (!answer) continue;
    if (Commits("members are borrowed")) answer->Release();
    ioMembers.append(Commits("members as identities") ? object : answer);
  }
  return S_OK;
}

List* BrokenContainer::GetProcessRoots() {
  static List roots;
  roots.RemoveAll();
  roots.Append(process_.Root().Identity());
  return Commits("process roots are shared") ? &roots : NewList(roots);
}

List* BrokenContainer::GetProductRoots() {
  productRoots_.RemoveAll();
  productRoots_.Append(process_.Products().Identity());
  return Commits("product roots are new lists") ? NewList(productRoots_) : &productRoots_;
}

ZefIContainer* BrokenFasteners::GetContainer(const ZefUnicodeString& iIdentifier) {
  if (iIdentifier != "TuvFPPContainer" && !Commits("every container is there")) return nullptr;
  return ZefIContainer_var(Identity()).Detach();
}

HRESULT BrokenFasteners::ListMembersHere(const char* iType,
                                         _SEQUENCE_ZefBaseUnknown_ptr& ioMembers) {
  for (int i = 1; i <= welds_.Size(); ++i) AppendAs(iType, welds_[i].Get(), ioMembers);
  return S_OK;
}

HRESULT BrokenPart::GetReferenceProduct(ZefIProduct_var& oReference) {
  return Commits("no reference product") ? Give(oReference, nullptr)
                                         : Part::GetReferenceProduct(oReference);
}

int BrokenPart::GetChildrenCount() {
  if (!Commits("children counted at every depth")) return Part::GetChildrenCount();
  return std::unique_ptr<List>(Part::GetAllChildren("ZefIProduct"))->Size();
}

List* BrokenPart::GetAllChildren(const char* iType) {
  if (Commits("all children by level")) {
    List all(*std::unique_ptr<List>(GetChildren()));
    for (int i = 1; i <= all.Size(); ++i) {
      all.Append(*std::unique_ptr<List>(ZefINavigateObject_var(all[i])->GetChildren()));
    }
    return NewList(all);
  }
  if (Commits("all children of any interface")) return Part::GetAllChildren("ZefIProduct");
  List* const all = Part::GetAllChildren(iType);
  return Commits("a shared list of products") ? Shared(shared_, all) : all;
}

HRESULT BrokenAssembly::SetName(const ZefUnicodeString& iName) {
  return Commits("names are not kept") ? S_OK : Assembly::SetName(iName);
}

HRESULT BrokenAssembly::GetChildren(List*& oChildren) {
  const HRESULT result = Assembly::GetChildren(oChildren);
  if (Commits("a shared list of an assembly")) oChildren = Shared(shared_, oChildren);
  return result;
}

HRESULT BrokenAssembly::AddChild(const ZefBaseUnknown_var& iChild) {
  if (!iChild) return Commits("null can be a child") ? S_OK : E_FAIL;
  const bool adds = Commits("children are added twice") ||
                    (Commits("assemblies take rings") && ObjectAs<Assembly>(iChild.Get()) != this);
  if (!adds) return Assembly::AddChild(iChild);
  children_.Append(iChild);
  return S_OK;
}

HRESULT BrokenAssembly::RemoveChild(const ZefBaseUnknown_var& iChild) {
  const HRESULT result = Assembly::RemoveChild(iChild);
  return Commits("removed children are always there") ? S_OK : result;
}

ZefIPointingHolder* BrokenWeld::GetPointingHolder() {
  ZefIPointingHolder* const holder = Weld::GetPointingHolder();
  if (Commits("holders are never given back") && holder) holder->AddRef();
  if (Commits("links are forgotten") && holder) {
    GiveBack(holder);
    return new Holder({links_.front()});
  }
  if (Commits("the newest link comes first") && holder) {
    GiveBack(holder);
    return new Holder({links_.rbegin(), links_.rend()});
  }
  return holder;
}

ZefDocument* BrokenWeld::GetDocument() {
  ZefDocument* const document = Weld::GetDocument();
  if (Commits("documents with a reference")) document->AddRef();
  return Commits("welds belong to no document") ? nullptr : document;
}

double* BrokenWeld::GetPositionAndOrientation() {
  static double shared[6] = {100, -20.5, 3, 0, 0, 0};
  return Commits("a shared position") ? shared : Weld::GetPositionAndOrientation();
}

HRESULT BrokenWeld::GetJointedParts(List& oParts) {
  Weld::GetJointedParts(oParts);
  if (Commits("one part is enough") && oParts.Size() > 1) oParts.RemovePosition(2);
  return S_OK;
}

}  // namespace tests
