#include "host/component/Callbacks.h"
#include "host/component/LiveObjects.h"
#include "host/document/Document.h"
#include "host/process/Process.h"
#include "host/product/Product.h"
#include "hostcheck/Bench.h"
#include "hostcheck/Check.h"

namespace hostcheck {

namespace {

constexpr char kRoot[] = "host/component/ZefBaseUnknown.h";

void Query(Bench& bench) {
  for (const auto& [name, object] : bench.Everything()) {
    for (const InterfaceInfo& asked : AllInterfaces()) {
      const unsigned before = CountOf(object);
      const ZefBaseUnknown_var answer = AskFor(object, asked.identifier);
      if (!answer) continue;
      bench.Require(CountOf(object) == before + 1,
                    name + " gives " + asked.name + " with one reference by identifier");
      const ZefBaseUnknown_var byName = Adopt(object->QueryInterface(asked.name));
      bench.Require(!byName || CountOf(object) == before + 2,
                    name + " gives " + asked.name + " with one reference by name");
    }
    const unsigned before = CountOf(object);
    const ZefBaseUnknown_var identity = AskFor(object, IID_ZefBaseUnknown);
    bench.Require(CountOf(object) == before + 1, name + " gives its identity with one reference");
  }
}

void FailedQuery(Bench& bench) {
  for (const auto& [name, object] : bench.Everything()) {
    const unsigned before = CountOf(object);
    for (const InterfaceInfo& asked : AllInterfaces()) {
      AskFor(object, asked.identifier);
      const auto byName = Adopt(object->QueryInterface(asked.name));
    }
    AskFor(object, NameIdentifier("an interface of nobody"));
    object->QueryInterface("an interface of nobody");
    bench.Expect(CountOf(object) == before, name + " has as many references after queries");
  }
}

void OneCount(Bench& bench) {
  for (const auto& [name, object] : bench.Everything()) {
    for (const InterfaceInfo& asked : AllInterfaces()) {
      const ZefBaseUnknown_var answer = AskFor(object, asked.identifier);
      if (!answer) continue;
      const unsigned before = CountOf(object);
      const std::string what = name + "'s " + asked.name;
      bench.Expect(answer->AddRef() == before + 1, what + " answers the new count to AddRef");
      bench.Expect(CountOf(object) == before + 1, what + " counts on the object");
      bench.Expect(answer->Release() == before, what + " answers the new count to Release");
    }
  }
}

void OutHandles(Bench& bench) {
  const auto balanced = [&](const char* what, ZefBaseUnknown* object, const auto& call) {
    const unsigned before = CountOf(object);
    call();
    bench.Expect(CountOf(object) == before, std::string(what) + " leaves no reference behind");
  };
  balanced("GetParentActivity", bench.st10, [&] { bench.Parent(bench.op10); });
  balanced("GetNextActivities", bench.st20, [&] { bench.Next(bench.st10); });
  balanced("GetPreviousActivities", bench.st10, [&] { bench.Previous(bench.st20); });
  if (bench.output) balanced("GetProductOutputs", bench.output, [&] { bench.Outputs(bench.st10); });
  if (const ZefISPPControlFlow_var flow = bench.flow) {
    balanced("GetTo and GetActivity", bench.st20, [&] {
      ZefISPPFlowEnd_var end;
      flow->GetTo(end);
      ZefISPPActivity_var activity;
      if (end) end->GetActivity(activity);
    });
  }
  if (const ZefIProduct_var product = bench.frame) {
    balanced("GetReferenceProduct", bench.frame, [&] {
      ZefIProduct_var reference;
      product->GetReferenceProduct(reference);
    });
  }
}

void Gestures(Bench& bench) {
  bench.Need(bench.output, "product outputs");
  bench.Need(bench.weld, "welds");
  const auto counts = [&] {
    std::string all;
    for (ZefBaseUnknown* const object :
         {bench.st20, bench.st30, bench.op20, bench.weld, bench.assembly}) {
      all += bench.NameOf(object) + " " + std::to_string(CountOf(object)) + " ";
    }
    return all;
  };
  const std::string before = counts();
  const long alive = CountLiveObjects();
  for (const int selector : {1, 2}) bench.Link(bench.op20, bench.weld, selector);
  bench.Remove(bench.op20, bench.weld, -1);
  bench.hooks.RemoveFlow(bench.Draw(bench.st20, bench.st30));
  bench.hooks.RemoveOutput(bench.st20, bench.AddOutput(bench.st20, bench.assembly));
  bench.Equal(counts(), before, "references after gestures that undo each other");
  bench.Expect(CountLiveObjects() <= alive + 1, "no object of these gestures stays alive");
}

// Asks every object for everything and changes something of every kind.
void Exercise(Bench& bench) {
  for (const auto& [name, object] : bench.Everything()) {
    for (const InterfaceInfo& asked : AllInterfaces()) AskFor(object, asked.identifier);
  }
  for (ZefBaseUnknown* const activity : bench.Activities()) {
    bench.Members(activity, "ZefISPPActivitySpecification");
    bench.Children(activity);
    bench.Next(activity);
  }
  if (const ZefInit_var init = bench.document) {
    const auto process =
        AdoptAs<ZefISPPProcessContainer>(init->GetRootContainer("ZefISPPProcessContainer"));
    if (process) process->GetProductRoots();
    if (process) process->GetProductRoots();
  }
  ZefBaseUnknown* const flow = bench.Draw(bench.st20, bench.st30);
  if (bench.weld) bench.Link(bench.op11, bench.weld, 2);
  if (bench.weld) bench.Remove(bench.op11, bench.weld, -1);
  if (bench.assembly) bench.AddOutput(bench.st20, bench.assembly);
  if (flow) bench.hooks.RemoveFlow(flow);
  bench.hooks.RemoveActivity(bench.st10);
}

void Ends(Bench& bench) {
  bench.Close();
  const long alive = CountLiveObjects();
  const int subscribed = CountCallbacks();
  bench.Open();
  Exercise(bench);
  bench.Close();
  bench.Expect(CountLiveObjects() <= alive,
               std::to_string(CountLiveObjects() - alive) + " objects stay alive, none expected");
  bench.Expect(CountCallbacks() == subscribed, "no subscription stays");
}

void Outlives(Bench& bench) {
  ZefISPPActivity_var kept = bench.Ask<ZefISPPActivity>(bench.op10);
  const ZefBaseUnknown_var above = bench.st10;
  ZefIContainer_var container;
  if (const ZefISpecObject_var feature = bench.op11) feature->GetFeatContainer(container);
  bench.Close();
  _SEQUENCE_ZefBaseUnknown_ptr members;
  if (container) container->ListMembersHere("ZefISPPActivitySpecification", members);
  bench.Expect(members.length() == 0, "a container lists nothing once its activity ended");
  container = nullptr;
  bench.Expect(CountOf(kept) == 1, "a held activity has one reference left after its document");
  bench.Expect(AskFor(kept, IID_ZefBaseUnknown) == kept, "it still answers its identity");
  ZefISPPAbstractActivity_var parent;
  kept->GetParentActivity(parent);
  bench.Expect(!parent, "it has no parent any more");
  if (const ZefISPPActivityModificationEvents_var events = kept) {
    bench.Expect(!events->GetDispatcher(), "it has no dispatcher without process");
  }
  const long alive = CountLiveObjects();
  kept = nullptr;
  bench.Expect(CountLiveObjects() < alive, "it ends with its last reference");
}

}  // namespace

std::vector<Check> CountingChecks() {
  return {
      {{"counting.query", kRoot, "A query that succeeds takes one reference."}, &Query},
      {{"counting.failed-query", kRoot, "A query that fails takes none."}, &FailedQuery},
      {{"counting.one-count", kRoot, "All interfaces of an object share one count."}, &OneCount},
      {{"counting.out-handles", kRoot, "What fills a handle leaves no further reference behind."},
       &OutHandles},
      {{"counting.gestures", kRoot, "What gestures take they give back when they are undone."},
       &Gestures},
      {{"counting.end", kRoot, "All objects and subscriptions end with document and application."},
       &Ends},
      {{"counting.outlives", kRoot, "An object lives as long as anyone holds it."}, &Outlives},
  };
}

}  // namespace hostcheck
