#include "host/document/Document.h"
#include "host/fastening/Fastening.h"
#include "host/process/Process.h"
#include "host/product/Product.h"
#include "hostcheck/Bench.h"
#include "hostcheck/Check.h"

namespace hostcheck {

namespace {

void Plain(Bench& bench) {
  bench.Need(bench.weld, "welds");
  const auto items = bench.Ask<ZefISPPItemMgt>(bench.op20);
  ZefBaseUnknown_var held;
  bench.Expect(Succeeded(items->AddItem(bench.weld, held)), "AddItem of a weld succeeds");
  bench.Expect(held == bench.weld, "AddItem answers the item");
  bench.Equal(bench.Items(bench.op20, 0), "SW-1", "all items of OP20 after AddItem");
  bench.Equal(bench.Items(bench.op20, 2), "", "its first-assigned items");
}

void Doubled(Bench& bench) {
  bench.Need(bench.weld, "welds");
  for (const int selector : {1, 2, 2}) bench.Link(bench.op20, bench.weld, selector);
  bench.Equal(bench.Items(bench.op20, 0), "SW-1 SW-1 SW-1",
              "all items of OP20, linked three times");
  bench.Equal(bench.Items(bench.op20, 2), "SW-1 SW-1", "its first-assigned items, linked twice so");
}

void RemovedBySelector(Bench& bench) {
  bench.Need(bench.weld, "welds");
  const auto expect = [&](int selector, const char* all, const char* first) {
    const std::string what = " after links of selector " + std::to_string(selector) + " went";
    const HRESULT result = bench.Remove(bench.op20, bench.weld, selector);
    bench.Expect(Succeeded(result), "RemoveItem succeeds when it removes links");
    bench.Equal(Sorted(bench.Items(bench.op20, 0)), all, "all items" + what);
    bench.Equal(Sorted(bench.Items(bench.op20, 2)), first, "first-assigned items" + what);
  };
  const auto link = [&] {
    for (const int selector : {1, 2, 2, 1}) bench.Link(bench.op20, bench.weld, selector);
  };
  bench.Link(bench.op20, bench.loose, 2);
  link();
  expect(2, "SW-1 SW-1 SW-2", "SW-2");
  expect(1, "SW-2", "SW-2");
  link();
  expect(1, "SW-1 SW-1 SW-2", "SW-1 SW-1 SW-2");
  link();
  expect(-1, "SW-2", "SW-2");
  bench.Equal(bench.Items(bench.op10, 0), "SW-1", "the items of another activity");
}

void RemovedInVain(Bench& bench) {
  bench.Need(bench.weld, "welds");
  bench.Link(bench.op20, bench.weld, 1);
  bench.Expect(Failed(bench.Remove(bench.op20, bench.weld, 2)),
               "RemoveItem fails when no link has the selector");
  bench.Expect(Failed(bench.Remove(bench.op20, bench.loose, -1)),
               "RemoveItem fails for an item that is not linked");
  bench.Equal(bench.Items(bench.op20, 0), "SW-1", "the items after removals that failed");
}

void Features(Bench& bench) {
  const auto items = bench.Ask<ZefISPPItemMgt>(bench.op20);
  ZefBaseUnknown_var link;
  const auto weld = bench.Ask<ZefISPPItem>(bench.weld);
  bench.Expect(Succeeded(items->AddItemLink(link.Put(), weld, nullptr, "", 1, 2)),
               "AddItemLink succeeds");
  bench.Require(static_cast<bool>(link), "AddItemLink hands the link back");
  ZefBaseUnknown_var item;
  const auto linkInfo = bench.Ask<ZefISPPActivitySpecification>(link);
  bench.Expect(Succeeded(linkInfo->GetSpecifiedItem(item)), "a link tells its item");
  bench.Equal(bench.NameOf(item.Get()), "SW-1", "the item of the link");
  bench.Equal(bench.NameOf(Adopt(bench.Ask<ZefISpecObject>(link)->GetFather()).Get()), "OP20",
              "the father of the link");
}

// The activities of the links that point at the item, oldest first.
std::string PointingAt(Bench& bench, ZefBaseUnknown* item) {
  const auto holder = Adopt(bench.Ask<ZefILinkableObject>(item)->GetPointingHolder());
  if (!holder) return "none";
  ZefListValZefBaseUnknown_var links;
  holder->ListPointingObjects(links);
  std::string names;
  for (int i = 1; i <= links.Size(); ++i) {
    const ZefISpecObject_var link = links[i];
    names += (link ? bench.NameOf(Adopt(link->GetFather()).Get()) : "no link") + " ";
  }
  return names;
}

void Pointing(Bench& bench) {
  bench.Equal(PointingAt(bench, bench.Need(bench.loose, "welds")), "none", "what points at SW-2");
  for (ZefBaseUnknown* const activity : {bench.op20, bench.op20, bench.op11}) {
    bench.Link(activity, bench.loose, 1);
  }
  bench.Equal(PointingAt(bench, bench.loose), "OP20 OP20 OP11 ",
              "the activities of the links that point at SW-2, oldest first");
  const auto holder = Adopt(bench.Ask<ZefILinkableObject>(bench.loose)->GetPointingHolder());
  ZefListValZefBaseUnknown_var list;
  list.Append(bench.root);
  holder->ListPointingObjects(list);
  bench.Expect(list.Size() == 4 && list[1] == bench.root, "links are appended to the list");
  bench.Remove(bench.op20, bench.loose, -1);
  bench.Equal(PointingAt(bench, bench.loose), "OP11 ", "the same after OP20's links went");
  bench.Remove(bench.op11, bench.loose, -1);
  bench.Equal(PointingAt(bench, bench.loose), "none", "the same after the last link went");
}

void Kinds(Bench& bench) {
  for (ZefBaseUnknown* const object : {bench.frame, bench.weld, bench.assembly}) {
    if (!object) continue;
    bench.Expect(static_cast<bool>(ZefISPPItem_var(object)), bench.NameOf(object) + " is an item");
    bench.Expect(static_cast<bool>(ZefILinkableObject_var(object)),
                 bench.NameOf(object) + " tells what points at it");
  }
  bench.Need(bench.assembly, "assemblies");
  bench.Expect(static_cast<bool>(ZefIProduct_var(bench.assembly)), "an assembly is a product");
  bench.Expect(static_cast<bool>(ZefINavigateObject_var(bench.assembly)),
               "an assembly stands in the tree of products");
}

void Blocked(Bench& bench) {
  const auto subscriber = bench.Ask<TuvIRabBltCBSubscriber>(bench.op20);
  const auto pending = bench.Ask<TuvIRabBltMgr>(bench.op20);
  bench.Expect(Succeeded(subscriber->SetCallbacksBlocked(1)), "callbacks can be suspended");
  bench.Expect(Succeeded(subscriber->SetCallbacksBlocked(1)), "suspending again is harmless");
  bench.Expect(Succeeded(bench.Link(bench.op20, bench.Need(bench.weld, "welds"), 2)),
               "items are linked while callbacks are suspended");
  bench.Equal(bench.Items(bench.op20, 2), "SW-1", "the items meanwhile");
  bench.Expect(Succeeded(subscriber->SetCallbacksBlocked(0)), "callbacks are resumed");
  bench.Expect(Succeeded(pending->ProcessPendingUpdates()), "what was suspended can be run");
  bench.Expect(Succeeded(pending->ProcessPendingUpdates()), "running it again is harmless");
  bench.Equal(bench.Items(bench.op20, 0), "SW-1", "the items afterwards");
}

}  // namespace

std::vector<Check> ItemChecks() {
  static constexpr char kItems[] = "host/process/ZefISPPItemMgt.h";
  return {
      {{"items.plain", kItems, "AddItem links an item plainly and answers it."}, &Plain},
      {{"items.doubled", kItems, "A link that is made twice is kept and listed twice."}, &Doubled},
      {{"items.removed", kItems,
        "RemoveItem removes all links of its selector at once, no others."},
       &RemovedBySelector},
      {{"items.removed-in-vain", kItems, "RemoveItem fails when there is no link to remove."},
       &RemovedInVain},
      {{"items.features", "host/process/ZefISPPActivitySpecification.h",
        "An item link designates its item and has the activity as father."},
       &Features},
      {{"items.pointing", "host/document/ZefIPointingHolder.h",
        "From an item its links are found, one each, oldest first."},
       &Pointing},
      {{"items.kinds", "host/fastening/TuvIMfgAssembly.h",
        "Parts, welds and assemblies are items; assemblies are products, too."},
       &Kinds},
      {{"items.blocked", "host/fastening/TuvIRabBltCBSubscriber.h",
        "Suspended callbacks hinder no link; calls do not nest."},
       &Blocked},
  };
}

}  // namespace hostcheck
