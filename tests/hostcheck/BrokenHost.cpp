#include "tests/hostcheck/BrokenHost.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "examples/host/check/Hooks.h"
#include "host/component/Callbacks.h"
#include "tests/hostcheck/BrokenObjects.h"

namespace tests {

namespace {

using namespace workshop;

std::string committed;

struct Told {
  int kind;
  ZefBaseUnknown_var father, son;
};

class BrokenProcess : public Process {
 public:
  BrokenProcess() { activities_.front() = Ref<BrokenActivity>::Make(home_, "Process", Role::Root); }
  ZefMetaClass* GetMetaObject() const override {
    return Commits("is a drawing") ? ClassNamed("Drawing") : Process::GetMetaObject();
  }
  ZefBaseUnknown* GetRootContainer(const char* iName) override {
    ZefBaseUnknown* const container = Process::GetRootContainer(iName);
    if (Commits("root container comes as anything") && !container) {
      return WithReference(Containers());
    }
    if (Commits("root container is borrowed") && container) container->Release();
    if (!BrokenContainer::IsAsked() || !container) return container;
    container->Release();
    if (!container_) container_ = Ref<BrokenContainer>::Make(*this);
    return container_->QueryInterface(iName);
  }
  ZefBaseUnknown_var GetCompoundContainer() override {
    return Ref<BrokenFasteners>::Make(welds)->Identity();
  }
  HRESULT GetDocEnvironment(ZefBaseUnknown*& oEnvironment) override {
    oEnvironment = WithReference(environment_->Identity());
    if (Commits("environments are borrowed")) oEnvironment->Release();
    return S_OK;
  }
  void Tell(int kind, ZefBaseUnknown* father, ZefBaseUnknown* son) override {
    const bool output = static_cast<bool>(ZefISPPProductIO_var(son));
    if (mute) return;
    if (collects) return collected.push_back({kind, father, son});
    if (Commits("removed outputs are told once") && output && kind == 18) return;
    if (Commits("other kind") && kind == 39) kind = 38;
    if (Commits("father and son swapped")) std::swap(father, son);
    if (Commits("told while blocked: nothing") && BrokenActivity::blocked) return;
    if (Commits("told within a delivery")) {
      const auto change = Make<ZefSPPActivityNotification>(father, son, kind);
      return Deliver(Dispatcher(), Dispatcher()->GetSPPViewsChange(), change);
    }
    if (Commits("queue without references")) return TellRaw(kind, father, son);
    if (Commits("newest first")) return TellNewestFirst(kind, father, son);
    BrokenActivity::telling = true;
    Process::Tell(kind, father, son);
    BrokenActivity::telling = false;
    if (Commits("told twice")) Process::Tell(kind, father, son);
  }

  bool mute = false;
  bool collects = false;
  bool delivers = false;
  std::vector<Told> collected;
  ZefListValZefBaseUnknown_var welds;

 private:
  struct Raw {
    int kind;
    ZefBaseUnknown* father;
    ZefBaseUnknown* son;
  };
  void DeliverNow(int kind, ZefBaseUnknown* father, ZefBaseUnknown* son) {
    const auto change = Make<ZefSPPActivityNotification>(father, son, kind);
    Deliver(Dispatcher(), Dispatcher()->GetSPPViewsChange(), change);
  }
  void TellRaw(int kind, ZefBaseUnknown* father, ZefBaseUnknown* son) {
    raw_.push_back({kind, father, son});
    if (delivers) return;
    delivers = true;
    for (std::size_t i = 0; i < raw_.size(); ++i) {
      const Raw next = raw_[i];
      DeliverNow(next.kind, next.father, next.son);
    }
    raw_.clear();
    delivers = false;
  }
  void TellNewestFirst(int kind, ZefBaseUnknown* father, ZefBaseUnknown* son) {
    collected.push_back({kind, father, son});
    if (delivers) return;
    delivers = true;
    while (!collected.empty()) {
      const Told next = collected.back();
      collected.pop_back();
      DeliverNow(next.kind, next.father.Get(), next.son.Get());
    }
    delivers = false;
  }

  std::vector<Raw> raw_;
  Ref<BrokenContainer> container_;
  Ref<BrokenFasteners> environment_ = Ref<BrokenFasteners>::Make(welds);
};

class BrokenApplication : public workshop::Application {
 public:
  explicit BrokenApplication(BrokenProcess& process) : Application(process), process_(process) {}
  ZefFrmEditor* CurrentEditor() override {
    if (!Commits("an editor each time")) return Application::CurrentEditor();
    editors_.push_back(Make<Editor>(process_));
    return editors_.back().Get();
  }
  ZefApplicationFrame* Frame() override {
    if (Commits("frame with a reference")) Application::Frame()->AddRef();
    return Application::Frame();
  }
  int ShowDialog(const DialogRequest&) override {
    if (!Commits("a dialog changes the model")) return 0;
    ZefBaseUnknown_var held;
    return process_.Root().AddItem(process_.welds[1], held);
  }
  bool HasCatalog(const std::string& iName) override {
    return Commits("every catalog") ||
           (Commits("catalog lacks a message") && iName == "TuvBIWUpdateManufAssemblyCmd");
  }
  bool FindMessage(const std::string&, const std::string& iKey, std::string& oText) override {
    oText = "text";
    return Commits("every catalog") || (Commits("catalog lacks a message") && iKey != "MAIsChild" &&
                                        iKey != "KeyOfNobody" && iKey != "Key");
  }
  HRESULT PartLoadConstraint(unsigned char& oOn) override {
    oOn = Commits("part load is 255") ? 255 : 1;
    return S_OK;
  }
  const char* Environment(const char* iName) override {
    const char* const value = Application::Environment(iName);
    return Commits("empty variables are not set") && value && !*value ? nullptr : value;
  }
  HRESULT CreateMfgAssembly(ZefDocument* iDocument, TuvIMfgAssembly** oAssembly) override {
    if (Commits("one assembly for all") && made_) {
      *oAssembly = TuvIMfgAssembly_var(made_).Detach();
      return S_OK;
    }
    const HRESULT result = Application::CreateMfgAssembly(iDocument, oAssembly);
    if (Commits("one assembly for all")) made_ = *oAssembly;
    if (Commits("made assembly is borrowed")) (*oAssembly)->Release();
    return result;
  }

 private:
  BrokenProcess& process_;
  std::vector<Handle<Editor>> editors_;
  TuvIMfgAssembly_var made_;
};

class Muted {
 public:
  explicit Muted(bool& mute) : mute_(mute) { mute_ = true; }
  ~Muted() { mute_ = false; }
  Muted(const Muted&) = delete;
  Muted& operator=(const Muted&) = delete;

 private:
  bool& mute_;
};

class BrokenHooks : public Hooks {
 public:
  void SetUp() override {
    const auto made = Ref<BrokenProcess>::Make();
    broken_ = made.Get();
    process = made;
    application = std::make_unique<BrokenApplication>(*made);
    if (Commits("ends the process")) std::_Exit(3);
    if (Commits("kills itself")) std::raise(SIGKILL);
    while (Commits("never ends")) {
    }
  }
  void TearDown() override {
    if (Commits("throws at the end")) throw std::runtime_error("thrown");
    workshop::Application* const last = application.get();
    Hooks::TearDown();
    if (Commits("stays installed")) HostApplication::Install(last);
  }
  ZefBaseUnknown* AddActivity(ZefBaseUnknown* iParent, const char* iName,
                              hostcheck::ActivityRole iRole) override {
    auto& parent = Of<workshop::Activity>(iParent);
    auto& made = process->AddActivity<BrokenActivity>(parent, iName, RoleFor(iRole));
    made.AnswerAsBroken();
    if (Commits("activities are never given back")) made.Identity()->AddRef();
    if (Commits("building notifies")) process->Tell(17, iParent, made.Identity());
    return made.Identity();
  }
  ZefBaseUnknown* AddPart(ZefBaseUnknown* iParent, const char* iName) override {
    return Below(iParent, process->AddItem<BrokenPart>(iName).Identity());
  }
  ZefBaseUnknown* AddWeld(const char* iName, const std::array<double, 3>& iAt,
                          ZefBaseUnknown* iPart, ZefBaseUnknown* iOther) override {
    auto& weld = process->AddItem<BrokenWeld>(iName, iAt);
    for (ZefBaseUnknown* const part : {iPart, iOther}) {
      if (part) weld.Join(part);
    }
    broken_->welds.Append(weld.Identity());
    ExtendWeldsByBrokenViews();
    return weld.Identity();
  }
  ZefBaseUnknown* AddAssembly(const char*) override {
    auto& made = process->AddItem<BrokenAssembly>();
    if (Commits("assemblies cannot be pointed at")) {
      made.AnswerInterface(IID_ZefILinkableObject, false);
    }
    return made.Identity();
  }
  ZefBaseUnknown* DrawFlow(ZefBaseUnknown* iFrom, ZefBaseUnknown* iTo) override {
    if (Commits("flows lead back")) std::swap(iFrom, iTo);
    if (Commits("flows are never given back")) {
      ZefBaseUnknown* const flow = Hooks::DrawFlow(iFrom, iTo);
      flow->AddRef();
      return flow;
    }
    if (!Commits("flow told before it is listed")) return Hooks::DrawFlow(iFrom, iTo);
    auto& from = Of<workshop::Activity>(iFrom);
    const auto early = Ref<ControlFlow>::Make(from, Of<workshop::Activity>(iTo));
    process->Tell(30, nullptr, early->Identity());
    const Muted muted(broken_->mute);
    return Hooks::DrawFlow(iFrom, iTo);
  }
  void RemoveFlow(ZefBaseUnknown* iFlow) override {
    if (Commits("flows are not removed")) return;
    if (!Commits("flow told before it is gone")) return Hooks::RemoveFlow(iFlow);
    process->Tell(29, nullptr, iFlow);
    const Muted muted(broken_->mute);
    Hooks::RemoveFlow(iFlow);
  }
  void RemoveActivity(ZefBaseUnknown* iActivity) override {
    const ZefBaseUnknown_var kept = iActivity;
    if (Commits("no removal while telling") && BrokenActivity::telling) return;
    if (Commits("removal told at the end")) {
      Collected([&] { Hooks::RemoveActivity(iActivity); }, false);
    } else if (Commits("removal told in reverse")) {
      Collected([&] { Hooks::RemoveActivity(iActivity); }, true);
    } else {
      Hooks::RemoveActivity(iActivity);
    }
    if (!Commits("removed activities keep items")) return;
    ZefBaseUnknown_var held;
    Of<workshop::Activity>(iActivity).AddItem(broken_->welds[1], held);
  }
  void RemoveOutput(ZefBaseUnknown* iActivity, ZefBaseUnknown* iOutput) override {
    const ZefBaseUnknown_var kept = iOutput;
    if (!Commits("removed outputs stay listed")) Hooks::RemoveOutput(iActivity, iOutput);
    if (Commits("removed outputs forget")) Of<Output>(iOutput).product = nullptr;
  }

 private:
  template <class Gesture>
  void Collected(const Gesture& gesture, bool reversed) {
    broken_->collects = true;
    gesture();
    broken_->collects = false;
    auto told = std::exchange(broken_->collected, {});
    if (reversed) std::reverse(told.begin(), told.end());
    for (const Told& each : told) process->Tell(each.kind, each.father.Get(), each.son.Get());
  }

  BrokenProcess* broken_ = nullptr;
};

}  // namespace

bool Commits(std::string_view iBreach) { return committed == iBreach; }

void Commit(std::string_view iBreach) { committed = iBreach; }

std::unique_ptr<hostcheck::HostHooks> MakeBrokenHost(std::string_view iBreach) {
  Commit(iBreach);
  return std::make_unique<BrokenHooks>();
}

}  // namespace tests
