#include "host/document/Document.h"
#include "host/process/Process.h"
#include "hostcheck/Bench.h"
#include "hostcheck/Check.h"

namespace hostcheck {

namespace {

constexpr char kChange[] = "host/process/ZefSPPActivityNotification.h";

void Order(Bench& bench) {
  ZefBaseUnknown* const inner =
      bench.hooks.AddActivity(bench.op11, "INNER", ActivityRole::Operation);
  bench.Call(inner, "INNER");
  const ZefBaseUnknown_var station = bench.st10, operation = bench.op10, nested = inner;
  Witness witness(bench);
  bench.hooks.RemoveFlow(bench.flow);
  witness.Take();
  bench.hooks.RemoveActivity(bench.st10);
  bench.Equal(witness.Take(), "29 ST10>OP10, 29 OP11>INNER, 29 ST10>OP11, 29 ROOT>ST10",
              "changes when a subtree was removed, from below up");
}

void Flows(Bench& bench) {
  bench.Draw(bench.op10, bench.op11);
  bench.Draw(bench.op20, bench.op10);
  bench.Draw(bench.st30, bench.st10);
  const ZefBaseUnknown_var station = bench.st10, operation = bench.op10;
  Witness witness(bench);
  witness.see = [&](ZefSPPActivityNotification& change) -> std::string {
    if (!ZefISPPControlFlow_var(change.GetSon())) return "";
    return bench.Next(bench.op20).empty() ? "" : " late";
  };
  bench.hooks.RemoveActivity(bench.st10);
  bench.Equal(witness.Take(),
              "29 ST10>OP10, 29 ST10>OP11, 29 ROOT>ST10, "
              "29 OP20-OP10, 29 OP10-OP11, 29 ST30-ST10, 29 ST10-ST20",
              "changes when activities with flows were removed, incoming flows first");
  bench.Equal(bench.Previous(bench.st20) + bench.Next(bench.st30), "",
              "the neighbours that are left");
}

void Whole(Bench& bench) {
  bench.Need(bench.weld, "welds");
  const ZefBaseUnknown_var station = bench.st10, operation = bench.op10;
  const std::string before = bench.State();
  Witness witness(bench);
  bool whole = true;
  witness.see = [&](ZefSPPActivityNotification& change) -> std::string {
    if (!ZefISPPControlFlow_var(change.GetSon())) whole = whole && bench.State() == before;
    return "";
  };
  bench.hooks.RemoveActivity(bench.st10);
  bench.Expect(!witness.Take().empty(), "the removal is told");
  bench.Expect(whole, "everything stands as before while a removal is told");
}

void Bare(Bench& bench) {
  const ZefBaseUnknown_var station = bench.st10, operation = bench.op10;
  const auto events = bench.Ask<ZefISPPActivityModificationEvents>(bench.st10);
  bench.hooks.RemoveActivity(bench.st10);
  bench.Equal(bench.Parent(bench.st10), "null", "the parent of a removed activity");
  bench.Equal(bench.Parent(bench.op10), "null", "the parent of an activity that went with it");
  bench.Equal(bench.Children(bench.st10), "", "the children of a removed activity");
  bench.Equal(bench.Next(bench.st10), "", "what comes after it");
  bench.Equal(bench.Outputs(bench.st10), "", "its outputs");
  bench.Equal(bench.Items(bench.op10, 0), "", "the items of an activity that went with it");
  bench.Equal(bench.Children(bench.root), bench.wait ? "ST20 WAIT ST30" : "ST20 ST30",
              "the children of the root activity");
  bench.Expect(events->GetDispatcher() != nullptr &&
                   events->GetDispatcher() ==
                       bench.Ask<ZefISPPActivityModificationEvents>(bench.root)->GetDispatcher(),
               "a removed activity keeps answering the dispatcher");
  if (bench.weld) {
    const auto holder = Adopt(bench.Ask<ZefILinkableObject>(bench.weld)->GetPointingHolder());
    ZefListValZefBaseUnknown_var links;
    if (holder) holder->ListPointingObjects(links);
    bench.Expect(links.Size() == 0, "nothing of a removed activity points at an item");
  }
}

void Outputs(Bench& bench) {
  const ZefISPPProductIO_var output = bench.Need(bench.output, "product outputs");
  bench.hooks.RemoveOutput(bench.st10, bench.output);
  bench.Equal(bench.Outputs(bench.st10), "", "the outputs of ST10");
  ZefBaseUnknown_var product;
  output->GetProduct(product.Put());
  bench.Equal(bench.NameOf(product.Get()), "MA", "the product of a removed output");
}

void WithinHandler(Bench& bench) {
  bench.Need(bench.weld, "welds");
  const ZefBaseUnknown_var station = bench.st20;
  Witness witness(bench);
  witness.see = [&](ZefSPPActivityNotification& change) -> std::string {
    if (change.GetNotificationKind() == ZefSPPActivityNotification::ItemFirstAssigned) {
      bench.hooks.RemoveActivity(bench.st20);
    }
    return "";
  };
  bench.Link(bench.op20, bench.weld, 2);
  bench.Equal(witness.Take(), "17 OP20>SW-1, 29 ST20>OP20, 29 ROOT>ST20, 29 ST10-ST20",
              "changes when a handler removed the activity that it heard of");
  bench.Equal(bench.Children(bench.root), bench.wait ? "ST10 WAIT ST30" : "ST10 ST30",
              "the children of the root activity");
}

}  // namespace

std::vector<Check> RemovalChecks() {
  return {
      {{"removal.order", kChange, "A subtree's removal is told from its lowest activities up."},
       &Order},
      {{"removal.flows", kChange, "Then its flows are told, of each activity incoming ones first."},
       &Flows},
      {{"removal.whole", kChange, "Everything stands as before while activities are told."},
       &Whole},
      {{"removal.bare", kChange, "At last an activity loses its place, flows, items and outputs."},
       &Bare},
      {{"removal.outputs", "host/process/ZefISPPProductIO.h",
        "A removed output is listed no more and keeps its product."},
       &Outputs},
      {{"removal.within-handler", "host/component/Callbacks.h",
        "A handler may remove what the change that it hears of is about."},
       &WithinHandler},
  };
}

}  // namespace hostcheck
