#include <functional>

#include "host/HostApplication.h"
#include "host/component/LiveObjects.h"
#include "host/document/Document.h"
#include "host/fastening/Fastening.h"
#include "host/process/Process.h"
#include "hostcheck/Bench.h"
#include "hostcheck/Check.h"

namespace hostcheck {

namespace {

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

}  // namespace

std::vector<Check> ReferenceChecks() {
  return {
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
      {{"counting.environments", "host/document/ZefDocument.h",
        "GetDocEnvironment gives the environment with a reference."},
       &Environments},
  };
}

}  // namespace hostcheck
