#include <functional>
#include <memory>

#include "host/document/Document.h"
#include "host/fastening/Fastening.h"
#include "host/process/Process.h"
#include "host/product/Product.h"
#include "hostcheck/Bench.h"
#include "hostcheck/Check.h"

namespace hostcheck {

namespace {

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

}  // namespace

std::vector<Check> OwnedListChecks() {
  return {
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
  };
}

}  // namespace hostcheck
