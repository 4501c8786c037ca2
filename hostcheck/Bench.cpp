#include "hostcheck/Bench.h"

#include <memory>
#include <set>
#include <sstream>

#include "host/document/Document.h"
#include "host/fastening/TuvIMfgAssembly.h"
#include "host/process/Process.h"

namespace hostcheck {

namespace {

// More tell no more.
constexpr int kMostFindings = 3;

void AddWord(std::string& words, const std::string& word) {
  if (!words.empty()) words += " ";
  words += word;
}

}  // namespace

void Bench::Open() {
  hooks.SetUp();
  isOpen_ = true;
  document = &There(hooks.Document(), "SetUp opens a document");
  Call(document, "the document");
  root = Call(&There(hooks.Root(), "the document has a root activity"), "ROOT");
  BuildProcess();
  BuildProducts();
}

void Bench::Close() {
  if (!isOpen_) return;
  isOpen_ = false;
  names_.clear();
  hooks.TearDown();
}

void Bench::BuildProcess() {
  st10 = Activity(root, "ST10", ActivityRole::Station);
  op10 = Activity(st10, "OP10", ActivityRole::Operation);
  op11 = Activity(st10, "OP11", ActivityRole::Operation);
  st20 = Activity(root, "ST20", ActivityRole::Station);
  op20 = Activity(st20, "OP20", ActivityRole::Operation);
  wait = Call(hooks.AddActivity(root, "WAIT", ActivityRole::Logical), "WAIT");
  st30 = Activity(root, "ST30", ActivityRole::Station);
  flow = Draw(st10, st20);
}

void Bench::BuildProducts() {
  frame = Call(hooks.AddPart(nullptr, "FRAME"), "FRAME");
  if (frame) bolt = Call(hooks.AddPart(frame, "BOLT"), "BOLT");
  door = Call(hooks.AddPart(nullptr, "DOOR"), "DOOR");
  weld = Call(hooks.AddWeld("SW-1", {100, -20.5, 3}, frame, door), "SW-1");
  loose = Call(hooks.AddWeld("SW-2", {140, -20.5, 3}, frame, nullptr), "SW-2");
  assembly = Call(hooks.AddAssembly("MA"), "MA");
  sub = Call(hooks.AddAssembly("SUB"), "SUB");
  if (weld && ZefISPPItemMgt_var(op10)) Link(op10, weld, 1);
  output = nullptr;
  if (assembly && ZefISPPFlowMgt_var(st10)) output = AddOutput(st10, assembly);
}

ZefBaseUnknown* Bench::Activity(ZefBaseUnknown* parent, const char* name, ActivityRole role) {
  ZefBaseUnknown* const made = hooks.AddActivity(parent, name, role);
  return Call(&There(made, std::string("AddActivity makes ") + name), name);
}

void Bench::Expect(bool iHolds, const std::string& iWhat) {
  if (!iHolds && ++findings_ <= kMostFindings) say_("fail " + iWhat);
}

void Bench::Equal(const std::string& iFound, const std::string& iWanted, const std::string& iWhat) {
  if (iFound == iWanted) return;
  Expect(false, iWhat + ": \"" + iWanted + "\" expected, \"" + iFound + "\" found");
}

void Bench::Require(bool iHolds, const std::string& iWhat) {
  if (!iHolds) throw Broken(iWhat);
}

ZefBaseUnknown* Bench::Call(ZefBaseUnknown* iObject, const std::string& iName) {
  if (iObject) names_[IdentityOf(iObject)] = iName;
  return iObject;
}

std::string Bench::NameOf(const ZefBaseUnknown* iObject) const {
  if (!iObject) return "null";
  const auto found = names_.find(IdentityOf(iObject));
  return found == names_.end() ? "?" : found->second;
}

std::string Bench::Names(const ZefListValZefBaseUnknown_var& iList) const {
  std::string names;
  for (int i = 1; i <= iList.Size(); ++i) AddWord(names, NameOf(iList[i].Get()));
  return names;
}

std::string Bench::TakeNames(ZefListValZefBaseUnknown_var* iList) const {
  const std::unique_ptr<ZefListValZefBaseUnknown_var> list(iList);
  return list ? Names(*list) : "null";
}

std::string Bench::Members(ZefBaseUnknown* iFeature, const char* iType) {
  ZefIContainer_var container;
  Ask<ZefISpecObject>(iFeature)->GetFeatContainer(container);
  return container ? MembersOf(container, iType) : "null";
}

std::string Bench::MembersOf(const ZefIContainer_var& iContainer, const char* iType) {
  _SEQUENCE_ZefBaseUnknown_ptr members;
  iContainer->ListMembersHere(iType, members);
  std::string names;
  for (int i = 0; i < members.length(); ++i) AddWord(names, NameOf(Adopt(members[i]).Get()));
  return names;
}

HRESULT Bench::Link(ZefBaseUnknown* iActivity, ZefBaseUnknown* iItem, int iSelector) {
  ZefBaseUnknown_var link;
  const auto item = Ask<ZefISPPItem>(iItem);
  return Ask<ZefISPPItemMgt>(iActivity)->AddItemLink(link.Put(), item, nullptr, "", 1, iSelector);
}

HRESULT Bench::Remove(ZefBaseUnknown* iActivity, ZefBaseUnknown* iItem, int iSelector) {
  return Ask<ZefISPPItemMgt>(iActivity)->RemoveItem(iItem, iSelector);
}

std::string Bench::Items(ZefBaseUnknown* iActivity, int iSelector) {
  return TakeNames(Ask<ZefISPPItemMgt>(iActivity)->GetItems("Item", iSelector));
}

ZefBaseUnknown* Bench::AddOutput(ZefBaseUnknown* iActivity, ZefBaseUnknown* iItem) {
  const auto place = Ask<ZefISPPFlowMgt>(iActivity);
  ZefISPPItem_var first;
  const int number = place->GetProductOutputs(first).Size() + 1;
  ZefISPPProductIO_var made;
  place->AddProductOutput(made.Put(), ZefISPPItem_var(iItem));
  return Call(made.Get(), NameOf(iActivity) + "." + std::to_string(number));
}

std::string Bench::Outputs(ZefBaseUnknown* iActivity) {
  ZefISPPItem_var first;
  return Names(Ask<ZefISPPFlowMgt>(iActivity)->GetProductOutputs(first));
}

ZefBaseUnknown* Bench::Draw(ZefBaseUnknown* iFrom, ZefBaseUnknown* iTo) {
  return Call(hooks.DrawFlow(iFrom, iTo), NameOf(iFrom) + "-" + NameOf(iTo));
}

std::string Bench::Next(ZefBaseUnknown* iActivity, const char* iType) {
  return Names(Ask<ZefISPPFlowMgt>(iActivity)->GetNextActivities(iType));
}

std::string Bench::Previous(ZefBaseUnknown* iActivity, const char* iType) {
  return Names(Ask<ZefISPPFlowMgt>(iActivity)->GetPreviousActivities(iType));
}

std::string Bench::Children(ZefBaseUnknown* iActivity, const char* iType) {
  return TakeNames(Ask<ZefISPPChildManagement>(iActivity)->GetChildren(iType));
}

std::string Bench::Parent(ZefBaseUnknown* iActivity) {
  ZefISPPAbstractActivity_var parent;
  Ask<ZefISPPAbstractActivity>(iActivity)->GetParentActivity(parent);
  return NameOf(parent.Get());
}

std::string Bench::State() {
  std::string state;
  for (ZefBaseUnknown* const activity : Activities()) {
    state += NameOf(activity) + " in " + Parent(activity) + " above " + Children(activity);
    if (ZefISPPFlowMgt_var(activity)) {
      state += " after " + Previous(activity) + " before " + Next(activity) + " makes " +
               Outputs(activity);
    }
    if (ZefISPPItemMgt_var(activity)) state += " has " + Items(activity, 0);
    state += "\n";
  }
  return state;
}

std::string Bench::AssemblyChildren(ZefBaseUnknown* iAssembly) {
  ZefListValZefBaseUnknown_var* children = nullptr;
  Ask<TuvIMfgAssembly>(iAssembly)->GetChildren(children);
  const std::unique_ptr<ZefListValZefBaseUnknown_var> list(children);
  return list ? Names(*list) : "";
}

std::vector<ZefBaseUnknown*> Bench::Activities() const {
  std::vector<ZefBaseUnknown*> all{root, st10, op10, op11, st20, op20};
  if (wait) all.push_back(wait);
  all.push_back(st30);
  return all;
}

std::vector<Specimen> Bench::Everything() {
  std::vector<Specimen> all;
  const auto add = [&](const std::string& name, const ZefBaseUnknown_var& object) {
    if (object) all.push_back({name, object});
  };
  for (ZefBaseUnknown* const object :
       {document, root, st10, op10, wait, frame, door, weld, assembly, flow, output}) {
    if (object) add(NameOf(object), object);
  }
  if (const ZefInit_var init = document) {
    add("the root container", Adopt(init->GetRootContainer("ZefIContainer")));
  }
  if (const ZefDocument_var asked = document) {
    add("the compound container", asked->GetCompoundContainer());
  }
  ZefIContainer_var own;
  if (const ZefISpecObject_var feature = op10) feature->GetFeatContainer(own);
  add("OP10's container", own);
  const ZefISPPItemMgt_var items = op20;
  const ZefISPPItem_var item = weld;
  ZefBaseUnknown_var link;
  if (items && item) items->AddItemLink(link.Put(), item, nullptr, "", 0, 2);
  add("an item link", link);
  if (const ZefILinkableObject_var linked = weld) {
    add("SW-1's holder", Adopt(linked->GetPointingHolder()));
  }
  ZefISPPFlowEnd_var end;
  if (const ZefISPPControlFlow_var drawn = flow) drawn->GetFrom(end);
  add("the flow's end", end);
  if (const ZefISPPActivityModificationEvents_var events = root) {
    add("the dispatcher", events->GetDispatcher());
  }
  return all;
}

std::string EndsOf(const Bench& iBench, const ZefISPPControlFlow_var& iFlow) {
  const auto name = [&](HRESULT (ZefISPPControlFlow::*give)(ZefISPPFlowEnd_var&)) {
    ZefISPPFlowEnd_var end;
    ((*iFlow).*give)(end);
    ZefISPPActivity_var activity;
    if (end) end->GetActivity(activity);
    return iBench.NameOf(activity.Get());
  };
  return name(&ZefISPPControlFlow::GetFrom) + "-" + name(&ZefISPPControlFlow::GetTo);
}

std::string Sorted(const std::string& iWords) {
  std::istringstream stream(iWords);
  std::multiset<std::string> words;
  for (std::string word; stream >> word;) words.insert(word);
  std::string sorted;
  for (const std::string& word : words) AddWord(sorted, word);
  return sorted;
}

unsigned int CountOf(ZefBaseUnknown* iObject) {
  iObject->AddRef();
  return iObject->Release();
}

ZefBaseUnknown_var AskFor(ZefBaseUnknown* iObject, const _GUID& iIdentifier) {
  void* answer = nullptr;
  iObject->QueryInterface(iIdentifier, &answer);
  return Adopt(static_cast<ZefBaseUnknown*>(answer));
}

}  // namespace hostcheck
