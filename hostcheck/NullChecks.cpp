#include <memory>

#include "host/HostApplication.h"
#include "host/document/Document.h"
#include "host/fastening/Fastening.h"
#include "host/process/Process.h"
#include "host/processdb/ProcessDb.h"
#include "host/product/Product.h"
#include "hostcheck/Bench.h"
#include "hostcheck/Check.h"

namespace hostcheck {

namespace {

constexpr const char* kNoName = nullptr;

void Names(Bench& bench) {
  for (const auto& [name, object] : bench.Everything()) {
    bench.Expect(!Adopt(object->QueryInterface(kNoName)), name + " answers null for no name");
    bench.Expect(object->IsAKindOf(nullptr) == 0, name + " is of no kind without a name");
  }
  if (const ZefInit_var init = bench.document) {
    bench.Expect(!Adopt(init->GetRootContainer(nullptr)), "no root container without a name");
    _SEQUENCE_ZefBaseUnknown_ptr members;
    const auto container = AdoptAs<ZefIContainer>(init->GetRootContainer("ZefIContainer"));
    if (container) container->ListMembersHere(nullptr, members);
    bench.Expect(members.length() == 0, "no members without a name");
  }
  if (const ZefISPPFlowMgt_var flow = bench.st10) {
    flow->GetNextActivities(kNoName);
    flow->GetPreviousActivities(kNoName);
  }
  if (const ZefISPPItemMgt_var items = bench.op10) {
    const std::unique_ptr<ZefListValZefBaseUnknown_var> all(items->GetItems(kNoName, 0));
  }
  bench.Expect(!HostApplication::Installed().Environment(nullptr), "no variable without a name");
  if (const ZefIProduct_var product = bench.frame) {
    const std::unique_ptr<ZefListValZefBaseUnknown_var> all(product->GetAllChildren(nullptr));
    bench.Expect(!all || all->Size() == 0, "no children without a name");
  }
}

void Items(Bench& bench) {
  const auto items = bench.Ask<ZefISPPItemMgt>(bench.op20);
  const std::string before = bench.State();
  ZefBaseUnknown_var held;
  bench.Expect(Failed(items->AddItem(nullptr, held)) && !held, "AddItem of null fails");
  bench.Expect(Failed(items->RemoveItem(nullptr, -1)), "RemoveItem of null fails");
  ZefBaseUnknown_var link;
  bench.Expect(Failed(items->AddItemLink(link.Put(), nullptr, nullptr, "", 1, 2)) && !link,
               "AddItemLink of null fails");
  bench.Equal(bench.State(), before, "the process afterwards");
}

void Flow(Bench& bench) {
  const auto flow = bench.Ask<ZefISPPFlowMgt>(bench.st20);
  ZefBaseUnknown* source = nullptr;
  bench.Expect(Succeeded(flow->GetItemSource(source, nullptr)) && !source,
               "null has no source, which is no failure");
  ZefISPPProductIO_var output;
  bench.Expect(Succeeded(flow->AddProductOutput(output.Put(), nullptr)) && output,
               "an output without product can be added");
  if (!output) return;
  output->SetProduct(nullptr);
  ZefBaseUnknown_var product;
  output->GetProduct(product.Put());
  bench.Expect(!product, "an output that was given null has no product");
}

void Assemblies(Bench& bench) {
  const auto assembly = bench.Ask<TuvIMfgAssembly>(bench.assembly);
  bench.Expect(Failed(assembly->AddChild(nullptr)), "AddChild of null fails");
  bench.Expect(Failed(assembly->RemoveChild(nullptr)), "RemoveChild of null fails");
  bench.Expect(Succeeded(assembly->SetName(kNoName)), "no name is the empty name");
  bench.Equal(assembly->GetName().ConvertToChar(), "", "the name");
}

void Database(Bench& bench) {
  const auto database = bench.Ask<ZefIIPDAdapter>(bench.document);
  bench.hooks.AddProcess("LINE", nullptr, bench.op10);
  Handle<IUnknown> found;
  bench.Expect(Failed(database->GetIPDObject(nullptr, found.Put())) && !found,
               "no object belongs to a null activity");
  bench.Expect(Failed(database->GetObjectFromID(kNoName, found.Put())) && !found,
               "no object has no identifier");
  bench.Expect(Failed(database->GetBaseProcess(nullptr, found.Put())) && !found,
               "null is no base process");
  ZefUnicodeString identifier;
  bench.Expect(Failed(database->GetObjectID(nullptr, identifier)), "null has no identifier");
  ZefUnicodeString* text = nullptr;
  bench.Expect(Failed(database->GetIDString(nullptr, text)) && !text,
               "null has no text of its identifier");
}

}  // namespace

std::vector<Check> NullChecks() {
  return {
      {{"null.names", "host/component/ZefBaseUnknown.h", "Without a name nothing is answered."},
       &Names},
      {{"null.items", "host/process/ZefISPPItemMgt.h", "A null item is refused."}, &Items},
      {{"null.flow", "host/process/ZefISPPFlowMgt.h",
        "A null item has no source, and an output may be without product."},
       &Flow},
      {{"null.assemblies", "host/fastening/TuvIMfgAssembly.h", "A null child is refused."},
       &Assemblies},
      {{"null.database", "host/processdb/ZefIIPDAdapter.h", "The database knows nothing of null."},
       &Database},
  };
}

}  // namespace hostcheck
