#pragma once

#include <memory>

#include "../Application.h"
#include "hostcheck/HostCheck.h"

namespace workshop {

// Lets the checks build and change a process of this host.
class Hooks : public hostcheck::HostHooks {
 public:
  void SetUp() override {
    process = Ref<Process>::Make();
    application = std::make_unique<workshop::Application>(*process);
  }
  void TearDown() override {
    application.reset();
    process = {};
  }
  HostApplication* Application() override { return application.get(); }
  ZefBaseUnknown* Document() override { return process->Identity(); }
  ZefBaseUnknown* Root() override { return process->Root().Identity(); }
  ZefBaseUnknown* AddActivity(ZefBaseUnknown* iParent, const char* iName,
                              hostcheck::ActivityRole iRole) override {
    return process->AddActivity(Of<Activity>(iParent), iName, RoleFor(iRole)).Identity();
  }
  ZefBaseUnknown* AddPart(ZefBaseUnknown* iParent, const char* iName) override {
    return Below(iParent, process->AddItem<Part>(iName).Identity());
  }
  ZefBaseUnknown* AddWeld(const char* iName, const std::array<double, 3>& iAt,
                          ZefBaseUnknown* iPart, ZefBaseUnknown* iOther) override {
    Weld& weld = process->AddItem<Weld>(iName, iAt);
    for (ZefBaseUnknown* const part : {iPart, iOther}) {
      if (part) weld.Join(part);
    }
    return weld.Identity();
  }
  ZefBaseUnknown* AddAssembly(const char*) override {
    return process->AddItem<Assembly>().Identity();
  }
  ZefBaseUnknown* DrawFlow(ZefBaseUnknown* iFrom, ZefBaseUnknown* iTo) override {
    return process->DrawFlow(Of<Activity>(iFrom), Of<Activity>(iTo)).Identity();
  }
  void RemoveFlow(ZefBaseUnknown* iFlow) override { process->RemoveFlow(Of<ControlFlow>(iFlow)); }
  void RemoveActivity(ZefBaseUnknown* iActivity) override {
    process->RemoveActivity(Of<Activity>(iActivity));
  }
  void RemoveOutput(ZefBaseUnknown* iActivity, ZefBaseUnknown* iOutput) override {
    process->RemoveOutput(Of<Activity>(iActivity), Of<Output>(iOutput));
  }

 protected:
  template <class T>
  static T& Of(ZefBaseUnknown* object) {
    return *ObjectAs<T>(object);
  }
  static Role RoleFor(hostcheck::ActivityRole role) {
    if (role == hostcheck::ActivityRole::Station) return Role::Station;
    return role == hostcheck::ActivityRole::Operation ? Role::Operation : Role::Logical;
  }
  ZefBaseUnknown* Below(ZefBaseUnknown* parent, ZefBaseUnknown* part) {
    (parent ? Of<Part>(parent) : process->Products()).Add(part);
    return part;
  }

  Ref<Process> process;
  std::unique_ptr<workshop::Application> application;
};

}  // namespace workshop
