#pragma once

#include <deque>

#include "Activity.h"

namespace workshop {

class FlowEnd : public ComponentObject<ZefISPPFlowEnd> {
 public:
  explicit FlowEnd(Activity& activity) : activity_(&activity) {}
  ZefMetaClass* GetMetaObject() const override { return ClassNamed("FlowEnd"); }
  HRESULT GetActivity(ZefISPPActivity_var& oActivity) override {
    return Give(oActivity, activity_->Identity());
  }

 private:
  Ref<Activity> activity_;
};

class ControlFlow : public ComponentObject<ZefISPPControlFlow> {
 public:
  ControlFlow(Activity& iFrom, Activity& iTo) : from(&iFrom), to(&iTo) {}
  ZefMetaClass* GetMetaObject() const override { return ClassNamed("ControlFlow"); }
  HRESULT GetFrom(ZefISPPFlowEnd_var& oEnd) override {
    return Give(oEnd, Ref<FlowEnd>::Make(*from)->Identity());
  }
  HRESULT GetTo(ZefISPPFlowEnd_var& oEnd) override {
    return Give(oEnd, Ref<FlowEnd>::Make(*to)->Identity());
  }

  // Held, because a removed flow still names them.
  const Ref<Activity> from, to;
};

// The container of the activities, and that of the containers.
class RootContainer : public ComponentObject<ZefIContainer, ZefISPPProcessContainer> {
 public:
  explicit RootContainer(Home home) : home_(std::move(home)) {}
  ZefMetaClass* GetMetaObject() const override { return ClassNamed("RootContainer"); }
  HRESULT ListMembersHere(const char* iType, _SEQUENCE_ZefBaseUnknown_ptr& ioMembers) override;
  List* GetProcessRoots() override;
  List* GetProductRoots() override;

 private:
  Home home_;
  List productRoots_;
};

// A process document. It owns everything that is added to it.
class Process : public ComponentObject<ZefDocument, ZefInit> {
 public:
  Process();
  ~Process() override;
  ZefMetaClass* GetMetaObject() const override { return ClassNamed("ZefProcess"); }
  // Nothing but the process has a container, and no database manages it.
  ZefBaseUnknown_var GetCompoundContainer() override { return nullptr; }
  HRESULT GetDocEnvironment(ZefBaseUnknown*&) override { return E_FAIL; }
  ZefBaseUnknown* GetRootContainer(const char* iInterfaceName) override {
    return container_->QueryInterface(iInterfaceName);
  }

  // Building notifies nobody. Activities and parts stand below others, items stand for themselves.
  template <class T = Activity>
  T& AddActivity(Activity& parent, const std::string& name, Role role) {
    const auto made = Ref<T>::Make(home_, name, role);
    activities_.push_back(made);
    parent.AddChild(*made);
    return *made;
  }
  template <class T, class... Arguments>
  T& AddItem(Arguments&&... arguments) {
    const auto made = Ref<T>::Make(home_, std::forward<Arguments>(arguments)...);
    items_.push_back(made->Identity());
    return *made;
  }

  // Gestures of a planner, each told to whoever follows the process.
  ControlFlow& DrawFlow(Activity& from, Activity& to);
  void RemoveFlow(ControlFlow& flow);
  void RemoveActivity(Activity& activity);
  void RemoveOutput(Activity& activity, Output& output);

  // Delivers a change, after those that are being delivered. All of them hold father and son.
  virtual void Tell(int kind, ZefBaseUnknown* father, ZefBaseUnknown* son);

  // For the other objects of this host.
  Activity& Root() const { return *activities_.front(); }
  const std::vector<Ref<Activity>>& Activities() const { return activities_; }
  Part& Products() const { return *products_; }
  ZefBaseUnknown* Containers() const { return container_->Identity(); }
  ZefSPPActivityNotificationDispatcher* Dispatcher() const { return dispatcher_; }
  // Each once, in the order in which the flows were drawn.
  List Neighbours(const Activity& activity, bool next, const char* type) const;
  // Of several with the product the one that got it first; null when there is none.
  ZefBaseUnknown* OutputElsewhere(const Activity& activity,
                                  const ZefBaseUnknown_var& product) const;

 protected:
  Home home_ = std::make_shared<Process*>(this);
  std::vector<Ref<Activity>> activities_;  // the root comes first

 private:
  std::vector<Ref<ControlFlow>> flows_;
  std::vector<ZefBaseUnknown_var> items_;
  Ref<Part> products_ = Ref<Part>::Make(home_, "Products");
  Ref<RootContainer> container_ = Ref<RootContainer>::Make(home_);
  Handle<ZefSPPActivityNotificationDispatcher> dispatcher_ =
      Make<ZefSPPActivityNotificationDispatcher>();
  std::deque<Handle<ZefSPPActivityNotification>> waiting_;
  bool delivering_ = false;
};

}  // namespace workshop
