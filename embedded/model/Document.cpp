#include "embedded/model/Document.h"

#include <algorithm>
#include <utility>

#include "embedded/Error.h"
#include "embedded/events/Notifications.h"
#include "embedded/model/ObjectClass.h"
#include "embedded/processdb/ProcessDatabase.h"

namespace embedded {

namespace {

// The environment of a document: a process database manages it or does not.
class Environment : public ComponentObject<ZefIAlias> {
 public:
  explicit Environment(bool managed) : managed_(managed) {}
  ZefMetaClass* GetMetaObject() const override {
    struct Managed {};
    struct Plain {};
    return managed_ ? ObjectClass<Managed>("IPDDocEnv") : ObjectClass<Plain>("DocEnv");
  }
  ZefUnicodeString GetAlias() override { return managed_ ? "process database" : "files"; }

 private:
  bool managed_;
};

template <class Object>
void RequireNewKey(const KeyIndex<Object>& index, const std::string& key, const char* what) {
  if (key.empty()) throw InputError("An identifier is missing for " + std::string(what) + ".");
  if (index.Find(key)) {
    throw InputError("There is already " + std::string(what) + " \"" + key +
                     "\"; choose another identifier.");
  }
}

ZefMetaClass* MetaObjectOf(Document::Kind kind) {
  struct Process {};
  struct Product {};
  struct Neither {};
  switch (kind) {
    case Document::Kind::Process:
      return ObjectClass<Process>("ZefProcess");
    case Document::Kind::Product:
      return ObjectClass<Product>("ZefProduct");
    case Document::Kind::Neither:
      return ObjectClass<Neither>("ZefDrawing");
    case Document::Kind::Both:
      break;
  }
  static ZefMetaClass both(nullptr, "ZefProcessWithProduct", ObjectClass<Process>("ZefProcess"),
                           ObjectClass<Product>("ZefProduct"), Implementation);
  return &both;
}

// The activity and all below it, each behind those below it.
std::vector<Owned<Activity>> FromBelow(Activity& activity) {
  std::vector<Owned<Activity>> found;
  std::vector<Activity*> open{&activity};
  while (!open.empty()) {
    found.emplace_back(open.back());
    open.pop_back();
    open.insert(open.end(), found.back()->Children().begin(), found.back()->Children().end());
  }
  std::reverse(found.begin(), found.end());
  return found;
}

}  // namespace

Document::Document(Kind iKind, const std::string& iRootKey)
    : kind_(iKind), membership_(std::make_shared<Membership>()) {
  membership_->document = this;
  root_ = MakeOwned<RootContainer>(membership_);
  featureContainer_ = MakeOwned<FeatureContainer>(membership_);
  compound_ = MakeOwned<CompoundContainer>(membership_);
  environment_ = MakeOwned<Environment>(false)->Identity();
  dispatcher_ = Make<ZefSPPActivityNotificationDispatcher>();
  products_.push_back(MakeOwned<Product>(ProductData{.key = "Products"}, nullptr, membership_));
  keys_.products.Add(RootProduct().Key(), &RootProduct());
  productRoots_ = {products_.front().Get()};
  const bool hasProcess = iKind == Kind::Process || iKind == Kind::Both;
  root_->AnswerInterface(IID_ZefISPPProcessContainer, hasProcess);
  if (!hasProcess) return;
  const ActivityData data{.key = iRootKey, .role = ActivityData::Role::Step};
  activities_.push_back(MakeOwned<Activity>(data, true, membership_));
  keys_.activities.Add(Root()->Key(), Root());
}

Document::~Document() {
  membership_->document = nullptr;
  // Whole lists at once: taking out link by link would take long where there are many of one item.
  for (const Owned<Activity>& activity : activities_) {
    activity->parent_ = nullptr;
    activity->children_.clear();
    activity->LeaveFlows();
    activity->links_.ForEach([](ItemLink& link) {
      if (link.Target()) link.Target()->DropEndedLinks();
    });
    activity->links_.Clear();
  }
  for (const Owned<Product>& product : products_) {
    product->parent_ = nullptr;
    product->reference_ = nullptr;
    product->children_.clear();
  }
  for (const Owned<MfgAssembly>& assembly : assemblies_) {
    assembly->DropChildren();
    assembly->DropEndedProducers();
  }
}

ZefMetaClass* Document::GetMetaObject() const { return MetaObjectOf(kind_); }

ZefBaseUnknown_var Document::GetCompoundContainer() {
  return FaultPoint::Strikes() ? nullptr : ZefBaseUnknown_var(compound_->Identity());
}

HRESULT Document::GetDocEnvironment(ZefBaseUnknown*& oEnvironment) {
  if (FaultPoint::Strikes()) return E_FAIL;
  oEnvironment = ZefBaseUnknown_var(environment_).Detach();
  return S_OK;
}

ZefBaseUnknown* Document::GetRootContainer(const char* iInterfaceName) {
  return FaultPoint::Strikes() ? nullptr : root_->QueryInterface(iInterfaceName);
}

Activity& Document::AddActivity(Activity& iParent, const ActivityData& iData) {
  RequireOwn(iParent);
  RequireNewKey(keys_.activities, iData.key, "an activity");
  activities_.push_back(MakeOwned<Activity>(iData, false, membership_));
  Activity& activity = *activities_.back();
  iParent.AddChild(activity);
  keys_.activities.Add(activity.Key(), &activity);
  return activity;
}

void Document::RemoveActivity(Activity& iActivity) {
  RequireOwn(iActivity);
  if (iActivity.IsRoot()) throw InputError("The root activity cannot be removed.");
  const Owned<Activity> kept(&iActivity);
  // Whoever is told may remove activities, too.
  for (const Owned<Activity>& activity : FromBelow(iActivity)) {
    if (!activity->parent_) continue;
    Notify(Dispatcher(), ZefSPPActivityNotification::LinkRemoved, activity->parent_->Identity(),
           activity->Identity());
  }
  if (!iActivity.parent_) return;
  const std::vector<Owned<Activity>> removed = FromBelow(iActivity);
  for (const Owned<Activity>& activity : removed) {
    while (!activity->previous_.empty()) RemoveFlow(*activity->previousFlows_.front());
    while (!activity->next_.empty()) RemoveFlow(*activity->nextFlows_.front());
  }
  auto& siblings = iActivity.parent_->children_;
  siblings.erase(std::find(siblings.begin(), siblings.end(), &iActivity));
  for (const Owned<Activity>& activity : removed) DetachActivity(*activity);
}

void Document::DetachActivity(Activity& iActivity) {
  LeaveActivities(iActivity);
  iActivity.parent_ = nullptr;
  iActivity.children_.clear();
  iActivity.links_.Clear();
  for (const Owned<ProductOutput>& output : iActivity.outputs_) output->Leave();
  iActivity.outputs_.clear();
  keys_.activities.Remove(iActivity.Key());
  std::erase_if(activities_, [&](const auto& activity) { return activity.Get() == &iActivity; });
}

Activity* Document::FindActivity(const std::string& iKey) const {
  return keys_.activities.Find(iKey);
}

ControlFlow& Document::AddFlow(Activity& iFrom, Activity& iTo, bool iQuietly) {
  RequireOwn(iFrom);
  RequireOwn(iTo);
  const Owned<ControlFlow> flow = MakeOwned<ControlFlow>(iFrom, iTo);
  flows_.push_back(flow);
  flow->Connect();
  if (!iQuietly) {
    Notify(Dispatcher(), ZefSPPActivityNotification::FlowCreated, nullptr, flow->Identity());
  }
  return *flow;
}

void Document::RemoveFlow(ControlFlow& iFlow) {
  const Owned<ControlFlow> kept(&iFlow);
  const auto removed =
      std::erase_if(flows_, [&](const auto& flow) { return flow.Get() == &iFlow; });
  if (removed == 0) throw InputError("The control flow is not part of this document.");
  iFlow.Disconnect();
  Notify(Dispatcher(), ZefSPPActivityNotification::LinkRemoved, nullptr, iFlow.Identity());
}

void Document::RemoveOutput(Activity& iActivity, ProductOutput& iOutput) {
  RequireOwn(iActivity);
  const Owned<ProductOutput> kept(&iOutput);
  auto& outputs = iActivity.outputs_;
  const auto found = std::find_if(outputs.begin(), outputs.end(),
                                  [&](const auto& output) { return output.Get() == &iOutput; });
  if (found == outputs.end()) {
    throw InputError("Activity \"" + iActivity.Key() + "\" does not have this output.");
  }
  Notify(Dispatcher(), ZefSPPActivityNotification::ItemRemoved, iActivity.Identity(),
         iOutput.Identity());
  std::erase_if(outputs, [&](const auto& output) { return output.Get() == &iOutput; });
  iOutput.Leave();
  Notify(Dispatcher(), ZefSPPActivityNotification::LinkRemoved, iActivity.Identity(),
         iOutput.Identity());
}

Product& Document::AddProduct(Product& iParent, const ProductData& iData, Product* iReference) {
  RequireNewKey(keys_.products, iData.key, "a product");
  if (iParent.Reference()) {
    throw InputError("Product \"" + iParent.Key() + "\" is an instance; add \"" + iData.key +
                     "\" to its reference \"" + iParent.Reference()->Key() + "\".");
  }
  if (iReference && iReference->LeadsTo(iParent)) {
    throw InputError("Product \"" + iReference->Key() + "\" cannot stand below itself.");
  }
  return PlaceProduct(iParent, iData, iReference);
}

Product& Document::PlaceProduct(Product& iParent, const ProductData& iData, Product* iReference) {
  products_.push_back(MakeOwned<Product>(iData, iReference, membership_));
  Product& product = *products_.back();
  product.parent_ = &iParent;
  iParent.children_.push_back(&product);
  keys_.products.Add(product.Key(), &product);
  return product;
}

Product* Document::FindProduct(const std::string& iKey) const { return keys_.products.Find(iKey); }

MfgAssembly& Document::AddAssembly(const std::string& iKey) {
  std::string key = iKey;
  for (std::size_t next = assemblies_.size() + 1; key.empty(); ++next) {
    const std::string free = "MA-" + std::to_string(next);
    if (!keys_.assemblies.Find(free)) key = free;
  }
  RequireNewKey(keys_.assemblies, key, "a manufacturing assembly");
  assemblies_.push_back(MakeOwned<MfgAssembly>(key, membership_));
  keys_.assemblies.Add(assemblies_.back()->Key(), assemblies_.back().Get());
  return *assemblies_.back();
}

MfgAssembly* Document::FindAssembly(const std::string& iKey) const {
  return keys_.assemblies.Find(iKey);
}

SpotWeld& Document::AddSpotWeld(const SpotWeldData& iData) {
  RequireNewKey(keys_.features, iData.key, "a fastener");
  const Owned<SpotWeld> weld = MakeOwned<SpotWeld>(iData, membership_);
  AddFeature(weld->Key(), weld->Identity());
  return *weld;
}

CurveFastener& Document::AddCurveFastener(const CurveFastenerData& iData) {
  RequireNewKey(keys_.features, iData.key, "a fastener");
  const Owned<CurveFastener> curve = MakeOwned<CurveFastener>(iData, membership_);
  AddFeature(curve->Key(), curve->Identity());
  return *curve;
}

PointFeature& Document::AddPointFeature(const PointFeatureData& iData) {
  RequireNewKey(keys_.features, iData.key, "a feature");
  const Owned<PointFeature> point = MakeOwned<PointFeature>(iData, membership_);
  AddFeature(point->Key(), point->Identity());
  return *point;
}

void Document::AddFeature(const std::string& iKey, const ZefBaseUnknown_var& iFeature) {
  features_.push_back(iFeature);
  keys_.features.Add(iKey, iFeature.Get());
}

void Document::RemoveFeature(ZefBaseUnknown* iFeature) {
  const ZefBaseUnknown_var feature = iFeature;
  if (std::erase(features_, feature) == 0) {
    throw InputError("The feature is not part of this document.");
  }
  keys_.features.Remove(ObjectAs<Aliased>(iFeature)->Key());
  LeaveActivities(*ObjectAs<Linkable>(iFeature));
}

// Nothing that stays may name what has left.
void Document::LeaveActivities(Linkable& iItem) {
  iItem.LeaveDocument();
  const std::vector<ItemLink*> links = iItem.Links();
  for (ItemLink* const link : links) link->OwnActivity()->links_.Remove(link);
}

ZefBaseUnknown* Document::FindFeature(const std::string& iKey) const {
  return keys_.features.Find(iKey);
}

void Document::AttachDatabase(std::unique_ptr<ProcessDatabase> iDatabase) {
  database_ = std::move(iDatabase);
  lost_.reset();
  environment_ = MakeOwned<Environment>(database_ != nullptr)->Identity();
}

void Document::LoseDatabase(LostDatabase iDatabase) {
  database_.reset();
  lost_ = std::move(iDatabase);
  environment_ = MakeOwned<Environment>(true)->Identity();
}

void Document::RequireOwn(const Activity& iActivity) const {
  if (iActivity.OwnDocument() == this && FindActivity(iActivity.Key()) == &iActivity) return;
  throw InputError("Activity \"" + iActivity.Key() + "\" is not part of this document.");
}

}  // namespace embedded
