#include "Process.h"

#include "host/component/Callbacks.h"

namespace workshop {

namespace {

// The activity and all below it, each after those below it.
void CollectFromBelow(Activity& activity, std::vector<Ref<Activity>>& all) {
  for (Activity* const child : activity.Children()) CollectFromBelow(*child, all);
  all.emplace_back(&activity);
}

template <class T>
void Erase(std::vector<Ref<T>>& from, const T& object) {
  std::erase_if(from, [&](const Ref<T>& own) { return own.Get() == &object; });
}

}  // namespace

ZefDocument* Linkable::GetDocument() { return *home_; }

HRESULT Output::SetProduct(const ZefISPPItem_var& iItem) {
  static long turns = 0;
  if (!iItem) return E_FAIL;
  product = iItem;
  turn = ++turns;
  if (activity) activity->Tell(ZefSPPActivityNotification::OutputCreated, Identity());
  return S_OK;
}

HRESULT Activity::GetFeatContainer(ZefIContainer_var& oContainer) {
  if (role_ == Role::Root) {
    if (!*home_) return E_FAIL;
    oContainer = (*home_)->Containers();
    return S_OK;
  }
  if (!container_) container_ = Ref<LinkContainer>::Make(links_);
  oContainer = container_->Identity();
  return S_OK;
}

List Activity::GetPreviousActivities(const ZefUnicodeString& iType) {
  return *home_ ? (*home_)->Neighbours(*this, false, iType) : List();
}

List Activity::GetNextActivities(const ZefUnicodeString& iType) {
  return *home_ ? (*home_)->Neighbours(*this, true, iType) : List();
}

HRESULT Activity::GetItemSource(ZefBaseUnknown*& oSource, const ZefISPPItem_var& iItem) {
  const bool isAssembly = static_cast<bool>(TuvIMfgAssembly_var(iItem));
  oSource = *home_ && isAssembly ? WithReference((*home_)->OutputElsewhere(*this, iItem)) : nullptr;
  return S_OK;
}

ZefSPPActivityNotificationDispatcher* Activity::GetDispatcher() {
  return *home_ ? (*home_)->Dispatcher() : nullptr;
}

void Activity::Tell(int kind, ZefBaseUnknown* son) {
  if (*home_) (*home_)->Tell(kind, Identity(), son);
}

HRESULT RootContainer::ListMembersHere(const char* iType, _SEQUENCE_ZefBaseUnknown_ptr& ioMembers) {
  if (!*home_) return E_FAIL;
  const auto& activities = (*home_)->Activities();
  for (const auto& activity : activities) AppendAs(iType, activity->Identity(), ioMembers);
  const Links& links = (*home_)->Root().OwnLinks();
  for (const auto& link : links) AppendAs(iType, link->Identity(), ioMembers);
  return S_OK;
}

List* RootContainer::GetProcessRoots() {
  List roots;
  if (*home_) roots.Append((*home_)->Root().Identity());
  return NewList(roots);
}

List* RootContainer::GetProductRoots() {
  productRoots_.RemoveAll();
  if (*home_) productRoots_.Append((*home_)->Products().Identity());
  return &productRoots_;
}

Process::Process() : activities_{Ref<Activity>::Make(home_, "Process", Role::Root)} {}

Process::~Process() {
  *home_ = nullptr;
  for (const auto& activity : activities_) activity->Bare();
}

ControlFlow& Process::DrawFlow(Activity& from, Activity& to) {
  const auto flow = Ref<ControlFlow>::Make(from, to);
  flows_.push_back(flow);
  Tell(ZefSPPActivityNotification::FlowCreated, nullptr, flow->Identity());
  return *flow;
}

void Process::RemoveFlow(ControlFlow& flow) {
  const Ref<ControlFlow> kept(&flow);
  Erase(flows_, flow);
  Tell(ZefSPPActivityNotification::LinkRemoved, nullptr, kept->Identity());
}

void Process::RemoveActivity(Activity& activity) {
  std::vector<Ref<Activity>> removed;
  CollectFromBelow(activity, removed);
  for (const auto& each : removed) {
    if (each->Parent())
      each->Parent()->Tell(ZefSPPActivityNotification::LinkRemoved, each->Identity());
  }
  if (!activity.Parent()) return;  // whoever was told removed it already
  for (const auto& each : removed) {
    for (const auto end : {&ControlFlow::to, &ControlFlow::from}) {
      const auto flows = flows_;
      for (const auto& flow : flows) {
        if (((*flow).*end).Get() == each.Get()) RemoveFlow(*flow);
      }
    }
  }
  activity.Parent()->RemoveChild(activity);
  for (const auto& each : removed) {
    each->Bare();
    Erase(activities_, *each);
  }
}

void Process::RemoveOutput(Activity& activity, Output& output) {
  const Ref<Output> kept(&output);
  activity.Tell(ZefSPPActivityNotification::ItemRemoved, kept->Identity());
  activity.RemoveOutput(output);
  activity.Tell(ZefSPPActivityNotification::LinkRemoved, kept->Identity());
}

void Process::Tell(int kind, ZefBaseUnknown* father, ZefBaseUnknown* son) {
  waiting_.push_back(Make<ZefSPPActivityNotification>(father, son, kind));
  if (delivering_) return;
  delivering_ = true;
  const std::shared_ptr<void> end(nullptr, [this](void*) { delivering_ = false; });
  while (!waiting_.empty()) {
    const auto next = std::move(waiting_.front());
    waiting_.pop_front();
    Deliver(dispatcher_, dispatcher_->GetSPPViewsChange(), next);
  }
}

List Process::Neighbours(const Activity& activity, bool next, const char* type) const {
  List list;
  for (const auto& flow : flows_) {
    if ((next ? flow->from : flow->to).Get() != &activity) continue;
    Activity& other = next ? *flow->to : *flow->from;
    const ZefBaseUnknown_var found = other.Identity();
    if (other.GetMetaObject()->IsAKindOf(type) && list.Locate(found) == 0) list.Append(found);
  }
  return list;
}

ZefBaseUnknown* Process::OutputElsewhere(const Activity& activity,
                                         const ZefBaseUnknown_var& product) const {
  Output* first = nullptr;
  for (const auto& other : activities_) {
    if (other.Get() == &activity) continue;
    for (const auto& output : other->Outputs()) {
      const bool isEarlier = !first || output->turn < first->turn;
      if (output->product == product && isEarlier) first = output.Get();
    }
  }
  return first ? first->Identity() : nullptr;
}

}  // namespace workshop
