#include <functional>

#include "host/HostApplication.h"
#include "host/component/Callbacks.h"
#include "host/component/LiveObjects.h"
#include "host/document/Document.h"
#include "host/fastening/Fastening.h"
#include "host/process/Process.h"
#include "host/product/Product.h"
#include "hostcheck/Bench.h"
#include "hostcheck/Check.h"

namespace hostcheck {

namespace {

constexpr char kRoot[] = "host/component/ZefBaseUnknown.h";

// Runs the call twice, expects each time so many more references on the object, and gives back what
// was handed over.
void ExpectReferences(Bench& bench, const std::string& what, ZefBaseUnknown* object, unsigned more,
                      const std::function<ZefBaseUnknown*()>& call) {
  for (int time = 0; time < 2; ++time) {
    const unsigned before = CountOf(object);
    ZefBaseUnknown* const result = call();
    bench.Require(result && result->IsEqual(object), what + " gives " + bench.NameOf(object));
    const unsigned after = CountOf(object);
    bench.Require(after == before + more,
                  what + (more ? " comes with one reference" : " comes without reference"));
    if (more) result->Release();
  }
}

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

void Fathers(Bench& bench) {
  const auto feature = bench.Ask<ZefISpecObject>(bench.op10);
  ExpectReferences(bench, "GetFather of OP10", bench.st10, 1, [&] { return feature->GetFather(); });
  const auto items = bench.Ask<ZefISPPItemMgt>(bench.op20);
  ZefBaseUnknown_var link;
  items->AddItemLink(link.Put(), bench.Ask<ZefISPPItem>(bench.weld), nullptr, "", 0, 1);
  const auto linkFeature = bench.Ask<ZefISpecObject>(link);
  ExpectReferences(bench, "GetFather of an item link", bench.op20, 1,
                   [&] { return linkFeature->GetFather(); });
}

void Containers(Bench& bench) {
  const auto init = bench.Ask<ZefInit>(bench.document);
  const auto root = Adopt(init->GetRootContainer("ZefIContainer"));
  bench.Require(static_cast<bool>(root), "there is a root container");
  ExpectReferences(bench, "GetRootContainer", root, 1,
                   [&] { return init->GetRootContainer("ZefIContainer"); });
  const ZefICompoundContainer_var compound =
      bench.Ask<ZefDocument>(bench.document)->GetCompoundContainer();
  const auto features = compound ? Adopt(compound->GetContainer("TuvFPPContainer")) : nullptr;
  bench.Need(features, "container of fasteners");
  ExpectReferences(bench, "GetContainer", features, 1,
                   [&] { return compound->GetContainer("TuvFPPContainer"); });
}

void Products(Bench& bench) {
  const auto output = bench.Ask<ZefISPPProductIO>(bench.output);
  ExpectReferences(bench, "GetProduct", bench.assembly, 1, [&] {
    ZefBaseUnknown* product = nullptr;
    output->GetProduct(product);
    return product;
  });
}

void Sources(Bench& bench) {
  const auto flow = bench.Ask<ZefISPPFlowMgt>(bench.st20);
  const auto item = bench.Ask<ZefISPPItem>(bench.assembly);
  ExpectReferences(bench, "GetItemSource", bench.Need(bench.output, "outputs"), 1, [&] {
    ZefBaseUnknown* source = nullptr;
    flow->GetItemSource(source, item);
    return source;
  });
}

void Environments(Bench& bench) {
  const auto document = bench.Ask<ZefDocument>(bench.document);
  ZefBaseUnknown* environment = nullptr;
  document->GetDocEnvironment(environment);
  const auto first = Adopt(bench.Need(environment, "document environment"));
  ExpectReferences(bench, "GetDocEnvironment", first, 1, [&] {
    document->GetDocEnvironment(environment);
    return environment;
  });
}

// What the host drops lives on while the caller's reference does.
void ExpectKept(Bench& bench, const std::string& what, ZefBaseUnknown* made,
                const std::function<void()>& drop) {
  bench.Require(made != nullptr, what + " is handed back");
  const long alive = CountLiveObjects();
  drop();
  bench.Require(CountLiveObjects() == alive, what + " comes with a reference of the caller's own");
  made->Release();
}

void MadeLinks(Bench& bench) {
  const auto items = bench.Ask<ZefISPPItemMgt>(bench.op20);
  ZefBaseUnknown* link = nullptr;
  items->AddItemLink(link, bench.Ask<ZefISPPItem>(bench.weld), nullptr, "", 0, 1);
  ExpectKept(bench, "the item link", link, [&] { items->RemoveItem(bench.weld, -1); });
}

void MadeOutputs(Bench& bench) {
  const auto flow = bench.Ask<ZefISPPFlowMgt>(bench.st20);
  ZefISPPProductIO* output = nullptr;
  flow->AddProductOutput(output, bench.Ask<ZefISPPItem>(bench.assembly));
  ExpectKept(bench, "the output", output, [&] { bench.hooks.RemoveOutput(bench.st20, output); });
}

void MadeAssemblies(Bench& bench) {
  bench.Close();
  const long alive = CountLiveObjects();
  bench.Open();
  TuvIMfgAssembly* made = nullptr;
  {
    const ZefDocument_var document = bench.document;
    HostApplication::Installed().CreateMfgAssembly(document, &made);
  }
  bench.Need(made, "assemblies made on demand");
  bench.Close();
  bench.Require(CountLiveObjects() > alive, "who made the assembly holds it, whatever ends");
  bench.Expect(made->Release() == 0, "it ends with that reference");
}

void Holders(Bench& bench) {
  const auto linked = bench.Ask<ZefILinkableObject>(bench.weld);
  const long alive = CountLiveObjects();
  ZefIPointingHolder* const first = linked->GetPointingHolder();
  ZefIPointingHolder* const second = linked->GetPointingHolder();
  bench.Require(first && second, "SW-1 has a holder of what points at it");
  bench.Require(first != second || CountOf(first) >= 2, "each holder comes with a reference");
  first->Release();
  second->Release();
  bench.Expect(CountLiveObjects() <= alive + 1, "holders end when they are given back");
}

void Borrowed(Bench& bench) {
  ZefBaseUnknown* const document = bench.document;
  const auto unchanged = [&](const std::string& what, ZefBaseUnknown* object,
                             const std::function<ZefBaseUnknown*()>& call) {
    if (object) ExpectReferences(bench, what, object, 0, call);
  };
  if (const ZefILinkableObject_var linked = bench.weld) {
    unchanged("GetDocument of an item", document, [&] { return linked->GetDocument(); });
  }
  const ZefISPPActivityModificationEvents_var events = bench.op10;
  if (events) {
    unchanged("GetDispatcher", events->GetDispatcher(), [&] { return events->GetDispatcher(); });
  }
  if (ZefFrmEditor* const editor = ZefFrmEditor::GetCurrentEditor()) {
    unchanged("GetCurrentEditor", editor, [] { return ZefFrmEditor::GetCurrentEditor(); });
    unchanged("GetDocument of the editor", document, [&] { return editor->GetDocument(); });
  }
  const auto asked = [&](const char* what, const auto& ask) {
    ZefBaseUnknown* result = nullptr;
    ask(result);
    unchanged(what, result, [&] {
      ask(result);
      return result;
    });
  };
  if (const TuvIBIWFastener_var fastener = bench.weld) {
    asked("GetRepresentedObject",
          [&](ZefBaseUnknown*& object) { fastener->GetRepresentedObject(object); });
  }
  if (const TuvISpotWeld_var spot = bench.weld) {
    asked("GetCarrier", [&](ZefBaseUnknown*& object) { spot->GetCarrier(object); });
  }
}

void Members(Bench& bench) {
  const auto init = bench.Ask<ZefInit>(bench.document);
  const ZefIContainer_var container = Adopt(init->GetRootContainer("ZefIContainer"));
  bench.Need(container, "root container");
  const unsigned before = CountOf(bench.op10);
  _SEQUENCE_ZefBaseUnknown_ptr members;
  container->ListMembersHere("ZefISPPActivity", members);
  bench.Require(CountOf(bench.op10) == before + 1, "each member comes with one reference");
  for (int i = 0; i < members.length(); ++i) members[i]->Release();
  bench.Expect(CountOf(bench.op10) == before, "no other reference is taken");
}

using ListCall = std::function<ZefListValZefBaseUnknown_var*()>;

void ExpectNewList(Bench& bench, const std::string& what, ZefBaseUnknown* element,
                   const ListCall& call) {
  if (!element) return;
  const unsigned before = CountOf(element);
  ZefListValZefBaseUnknown_var* const list = call();
  ZefListValZefBaseUnknown_var* const other = call();
  bench.Require(list && other && list->Locate(element) > 0,
                what + " lists " + bench.NameOf(element));
  bench.Require(list != other, what + " makes a new list each time");
  std::unique_ptr<ZefListValZefBaseUnknown_var> first(list), second(other);
  first.reset();
  bench.Expect(second->Locate(element) > 0, what + " does not change with an earlier list");
  second.reset();
  bench.Expect(CountOf(element) == before, what + " takes no reference but those of the list");
}

void ProcessLists(Bench& bench) {
  const auto children = bench.Ask<ZefISPPChildManagement>(bench.root);
  ExpectNewList(bench, "GetChildren of an activity", bench.st10,
                [&] { return children->GetChildren(""); });
  const auto below = bench.Ask<ZefISPPChildManagement>(bench.st10);
  ExpectNewList(bench, "GetChildren of a station", bench.op10,
                [&] { return below->GetChildren(""); });
  const auto init = bench.Ask<ZefInit>(bench.document);
  const auto process =
      AdoptAs<ZefISPPProcessContainer>(init->GetRootContainer("ZefISPPProcessContainer"));
  if (process) {
    ExpectNewList(bench, "GetProcessRoots", bench.root, [&] { return process->GetProcessRoots(); });
  }
}

void ItemLists(Bench& bench) {
  const auto items = bench.Ask<ZefISPPItemMgt>(bench.op10);
  ExpectNewList(bench, "GetItems", bench.weld, [&] { return items->GetItems("Item", 0); });
}

void ProductLists(Bench& bench) {
  bench.Need(bench.frame, "parts");
  if (const ZefINavigateObject_var tree = bench.frame) {
    ExpectNewList(bench, "GetChildren of a product", bench.bolt,
                  [&] { return tree->GetChildren(); });
  }
  const auto product = bench.Ask<ZefIProduct>(bench.frame);
  ExpectNewList(bench, "GetAllChildren", bench.bolt,
                [&] { return product->GetAllChildren("ZefIProduct"); });
}

void AssemblyLists(Bench& bench) {
  const auto assembly = bench.Ask<TuvIMfgAssembly>(bench.assembly);
  assembly->AddChild(bench.Need(bench.door, "parts"));
  ExpectNewList(bench, "GetChildren of an assembly", bench.door, [&] {
    ZefListValZefBaseUnknown_var* list = nullptr;
    assembly->GetChildren(list);
    return list;
  });
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
  bench.Close();
  bench.Expect(CountOf(kept) == 1, "a held activity has one reference left after its document");
  bench.Expect(AskFor(kept, IID_ZefBaseUnknown) == kept, "it still answers its identity");
  ZefISPPAbstractActivity_var parent;
  kept->GetParentActivity(parent);
  bench.Expect(!parent, "it has no parent any more");
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
      {{"counting.fathers", "host/document/ZefISpecObject.h",
        "GetFather gives the owner with a reference."},
       &Fathers},
      {{"counting.containers", "host/document/ZefInit.h",
        "Containers come with a reference for the caller."},
       &Containers},
      {{"counting.products", "host/process/ZefISPPProductIO.h",
        "GetProduct gives the product with a reference."},
       &Products},
      {{"counting.sources", "host/process/ZefISPPFlowMgt.h",
        "GetItemSource gives the output with a reference."},
       &Sources},
      {{"counting.made-links", "host/process/ZefISPPItemMgt.h",
        "AddItemLink hands the link back with a reference."},
       &MadeLinks},
      {{"counting.made-outputs", "host/process/ZefISPPFlowMgt.h",
        "AddProductOutput hands the output back with a reference."},
       &MadeOutputs},
      {{"counting.made-assemblies", "host/HostApplication.h",
        "CreateMfgAssembly hands a new assembly back with a reference."},
       &MadeAssemblies},
      {{"counting.holders", "host/document/ZefILinkableObject.h",
        "GetPointingHolder gives the holder with a reference."},
       &Holders},
      {{"counting.borrowed", "host/document/ZefILinkableObject.h",
        "Documents, dispatchers, editors and represented objects come without reference."},
       &Borrowed},
      {{"counting.members", "host/document/ZefIContainer.h",
        "Each member of a container comes with one reference."},
       &Members},
      {{"counting.process-lists", "host/process/ZefISPPChildManagement.h",
        "Lists of children and of process roots are new ones for the caller."},
       &ProcessLists},
      {{"counting.item-lists", "host/process/ZefISPPItemMgt.h",
        "A list of items is a new one for the caller."},
       &ItemLists},
      {{"counting.product-lists", "host/product/ZefIProduct.h",
        "Lists of products are new ones for the caller."},
       &ProductLists},
      {{"counting.assembly-lists", "host/fastening/TuvIMfgAssembly.h",
        "A list of an assembly's children is a new one for the caller."},
       &AssemblyLists},
      {{"counting.out-handles", kRoot, "What fills a handle leaves no further reference behind."},
       &OutHandles},
      {{"counting.environments", "host/document/ZefDocument.h",
        "GetDocEnvironment gives the environment with a reference."},
       &Environments},
      {{"counting.gestures", kRoot, "What gestures take they give back when they are undone."},
       &Gestures},
      {{"counting.end", kRoot, "All objects and subscriptions end with document and application."},
       &Ends},
      {{"counting.outlives", kRoot, "An object lives as long as anyone holds it."}, &Outlives},
  };
}

}  // namespace hostcheck
