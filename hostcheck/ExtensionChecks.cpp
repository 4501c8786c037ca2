#include "host/component/Dictionary.h"
#include "host/component/Interface.h"
#include "hostcheck/Bench.h"
#include "hostcheck/Check.h"

namespace hostcheck {

namespace {

constexpr char kExtensions[] = "host/component/Extensions.h";

// An interface that hosts cannot know, which activities answer through an extension.
class Probe : public Interface<Probe> {
 public:
  static constexpr char Name[] = "HostCheckProbe";
};

int made = 0;
int ended = 0;

class ProbeExtension : public Probe {
 public:
  ProbeExtension() { ++made; }
  ~ProbeExtension() override { ++ended; }
  static ZefMetaClass* Describe() {
    static ZefMetaClass* const meta =
        fct_RetrieveMetaObject("HostCheckProbeExtension", TypeExtension, Probe::MetaObject(),
                               "Activity", nullptr, sizeof(ProbeExtension));
    return meta;
  }
  ZefMetaClass* GetMetaObject() const override { return Describe(); }
};

ZefBaseUnknown* CreateProbe() { return new ProbeExtension; }

ZefBaseUnknown* ExtendByProbe(ZefBaseUnknown* extended, ZefBaseUnknown* outer) {
  return ToCreateBOA(extended, outer, ProbeExtension::Describe(), Probe::InterfaceId(),
                     &CreateProbe);
}

Handle<Probe> ProbeOf(Bench& bench, ZefBaseUnknown* activity) {
  static const ZefFillDictionary entry(ProbeExtension::Describe(), Probe::MetaObject(),
                                       &ExtendByProbe, nullptr, 1);
  Handle<Probe> probe = activity;
  bench.Require(
      static_cast<bool>(probe),
      bench.NameOf(activity) + " answers an interface that extends the class \"Activity\"");
  return probe;
}

void Once(Bench& bench) {
  const Handle<Probe> first = ProbeOf(bench, bench.op10);
  bench.Expect(made == 1, "the first query creates one extension");
  for (const InterfaceInfo& asked : AllInterfaces()) {
    const ZefBaseUnknown_var answer = AskFor(bench.op10, asked.identifier);
    if (!answer) continue;
    bench.Expect(AskFor(answer, Probe::InterfaceId()).Get() == first.Get(),
                 std::string("OP10's ") + asked.name + " answers the same extension");
  }
  bench.Expect(made == 1, "later queries create no other one");
  bench.Expect(ProbeOf(bench, bench.op20).Get() != first.Get(),
               "another activity has an extension of its own");
}

void SharedIdentity(Bench& bench) {
  const Handle<Probe> probe = ProbeOf(bench, bench.op10);
  const ZefBaseUnknown_var identity = AskFor(bench.op10, IID_ZefBaseUnknown);
  bench.Expect(AskFor(probe, IID_ZefBaseUnknown).Get() == identity.Get(),
               "an extension answers the object's identity");
  bench.Expect(probe->GetImpl(0) == identity.Get(), "its implementation is the object");
  bench.Expect(probe->IsEqual(bench.op10) && bench.op10->IsEqual(probe),
               "it equals the object, and the object equals it");
  for (const InterfaceInfo& asked : AllInterfaces()) {
    bench.Expect(
        AskFor(probe, asked.identifier).Get() == AskFor(bench.op10, asked.identifier).Get(),
        std::string("an extension answers the object's ") + asked.name);
  }
}

void SharedCount(Bench& bench) {
  const Handle<Probe> probe = ProbeOf(bench, bench.op10);
  const unsigned before = CountOf(bench.op10);
  bench.Expect(CountOf(probe) == before, "an extension counts on the object");
  probe->AddRef();
  bench.Expect(CountOf(bench.op10) == before + 1, "a reference on it is one on the object");
  probe->Release();
}

void ByName(Bench& bench) {
  const Handle<Probe> probe = ProbeOf(bench, bench.op10);
  bench.Expect(Adopt(bench.op10->QueryInterface(Probe::Name)).Get() == probe.Get(),
               "an extension is found by the name of its interface");
  bench.Expect(FindMetaClass(bench.op10->IsA()) == bench.op10->GetMetaObject(),
               "a class is found by its name");
}

void Ends(Bench& bench) {
  ProbeOf(bench, bench.op11);
  ProbeOf(bench, bench.op10);
  bench.hooks.RemoveActivity(bench.op11);
  bench.Expect(ended == 1, "the extension ends with the removed activity that nobody holds");
  const Handle<Probe> kept = ProbeOf(bench, bench.op10);
  bench.hooks.RemoveActivity(bench.op10);
  bench.Expect(ended == 1, "who holds the extension holds the activity");
  bench.Expect(AskFor(kept, Probe::InterfaceId()).Get() == kept.Get(), "which still answers it");
}

}  // namespace

std::vector<Check> ExtensionChecks() {
  return {
      {{"extensions.once", kExtensions, "An object has one extension of a kind, made when asked."},
       &Once},
      {{"extensions.identity", kExtensions, "An extension shares the identity of its object."},
       &SharedIdentity},
      {{"extensions.count", kExtensions, "An extension counts on its object."}, &SharedCount},
      {{"extensions.by-name", "host/component/Dictionary.h",
        "Extensions and classes are found by name."},
       &ByName},
      {{"extensions.end", kExtensions, "An extension ends with its object, and not before."},
       &Ends},
  };
}

}  // namespace hostcheck
