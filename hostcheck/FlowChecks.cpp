#include "host/fastening/Fastening.h"
#include "host/process/Process.h"
#include "hostcheck/Bench.h"
#include "hostcheck/Check.h"

namespace hostcheck {

namespace {

void Neighbours(Bench& bench) {
  bench.Draw(bench.st10, bench.st30);
  bench.Draw(bench.st10, bench.st20);
  bench.Draw(bench.st30, bench.st20);
  bench.Equal(bench.Next(bench.st10), "ST20 ST30",
              "the activities after ST10, as their flows were drawn, each once");
  bench.Equal(bench.Previous(bench.st20), "ST10 ST30", "the activities before ST20");
  bench.Equal(bench.Next(bench.st20), "", "the activities after ST20");
  bench.Equal(bench.Previous(bench.st10), "", "the activities before ST10");
}

void Kinds(Bench& bench) {
  bench.Need(bench.wait, "logical activities");
  bench.Draw(bench.st10, bench.wait);
  bench.Draw(bench.wait, bench.st20);
  const auto expect = [&](const char* type, const char* next, const char* previous) {
    bench.Equal(bench.Next(bench.st10, type), next, std::string("after ST10, of ") + type);
    bench.Equal(bench.Previous(bench.st20, type), previous, std::string("before ST20, of ") + type);
  };
  expect("Activity", "ST20 WAIT", "ST10 WAIT");
  expect("PhysicalActivity", "ST20", "ST10");
  expect("LogicalActivity", "WAIT", "WAIT");
}

void Ends(Bench& bench) {
  bench.Equal(EndsOf(bench, bench.Ask<ZefISPPControlFlow>(bench.flow)), "ST10-ST20",
              "the ends of the flow");
}

void Removed(Bench& bench) {
  ZefBaseUnknown* const parallel = bench.Draw(bench.st10, bench.st20);
  bench.Draw(bench.st10, bench.st30);
  bench.Require(parallel != nullptr, "DrawFlow hands the flow back");
  bench.hooks.RemoveFlow(parallel);
  bench.Equal(bench.Next(bench.st10), "ST20 ST30", "after ST10 while one of two flows is left");
  bench.hooks.RemoveFlow(bench.flow);
  bench.Equal(bench.Next(bench.st10), "ST30", "after ST10 without flow to ST20");
  bench.Equal(bench.Previous(bench.st20), "", "before ST20 without flow to it");
}

void Outputs(Bench& bench) {
  bench.Need(bench.output, "product outputs");
  const auto flow = bench.Ask<ZefISPPFlowMgt>(bench.st20);
  ZefISPPItem_var first;
  bench.Expect(flow->GetProductOutputs(first).Size() == 0 && !first,
               "without outputs there is no product");
  ZefBaseUnknown* const empty = bench.AddOutput(bench.st20, nullptr);
  ZefBaseUnknown* const full = bench.AddOutput(bench.st20, bench.assembly);
  bench.Require(empty && full, "AddProductOutput hands the output back");
  ZefBaseUnknown_var product;
  bench.Ask<ZefISPPProductIO>(empty)->GetProduct(product.Put());
  bench.Expect(!product, "an output has no product before it is set");
  bench.Expect(
      Succeeded(bench.Ask<ZefISPPProductIO>(empty)->SetProduct(bench.Ask<ZefISPPItem>(bench.sub))),
      "SetProduct succeeds");
  bench.Ask<ZefISPPProductIO>(empty)->GetProduct(product.Put());
  bench.Equal(bench.NameOf(product.Get()), "SUB", "the product that was set");
  bench.Equal(bench.Names(flow->GetProductOutputs(first)), "ST20.1 ST20.2",
              "the outputs, as they were made");
  bench.Equal(bench.NameOf(first.Get()), "SUB", "the product of the first output");
}

void Source(Bench& bench) {
  bench.Need(bench.output, "product outputs");
  const auto source = [&](ZefBaseUnknown* activity, ZefBaseUnknown* item) {
    ZefBaseUnknown* found = bench.root;
    const auto asked = ZefISPPItem_var(item);
    bench.Expect(Succeeded(bench.Ask<ZefISPPFlowMgt>(activity)->GetItemSource(found, asked)),
                 "GetItemSource succeeds, also when there is none");
    bench.Require(found != bench.root, "GetItemSource says null when there is none");
    return bench.NameOf(Adopt(found).Get());
  };
  bench.Equal(source(bench.st20, bench.assembly), "ST10.1", "MA's source at ST20");
  bench.Equal(source(bench.wait ? bench.wait : bench.st30, bench.assembly), "ST10.1",
              "MA's source where no flow leads");
  bench.Equal(source(bench.st10, bench.assembly), "null", "MA's source at the one that makes it");
  bench.AddOutput(bench.st30, bench.assembly);
  bench.Equal(source(bench.st10, bench.assembly), "ST30.1",
              "MA's source at ST10, made again later");
  bench.Equal(source(bench.st20, bench.assembly), "ST10.1", "MA's source of two, the older one");
  bench.Equal(source(bench.st20, bench.frame), "null", "the source of a part");
  bench.Equal(source(bench.st20, bench.sub), "null", "the source of what nobody makes");
  ZefBaseUnknown* const late = bench.AddOutput(bench.st20, nullptr);
  bench.AddOutput(bench.st30, bench.sub);
  bench.Ask<ZefISPPProductIO>(late)->SetProduct(bench.Ask<ZefISPPItem>(bench.sub));
  bench.Equal(source(bench.st10, bench.sub), "ST30.2",
              "SUB's source of two, the one that got it first");
  bench.hooks.RemoveOutput(bench.st10, bench.output);
  bench.Equal(source(bench.st20, bench.assembly), "ST30.1", "MA's source after the older one went");
}

}  // namespace

std::vector<Check> FlowChecks() {
  static constexpr char kFlow[] = "host/process/ZefISPPFlowMgt.h";
  return {
      {{"flow.neighbours", kFlow,
        "A neighbour is listed once, in the order in which flows were drawn."},
       &Neighbours},
      {{"flow.kinds", kFlow, "Neighbours are told apart by their kind."}, &Kinds},
      {{"flow.ends", "host/process/ZefISPPControlFlow.h", "A flow tells its two activities."},
       &Ends},
      {{"flow.removed", kFlow, "A neighbour stays as long as a flow leads to it."}, &Removed},
      {{"flow.outputs", kFlow,
        "Outputs are listed as they were made, with the first one's product."},
       &Outputs},
      {{"flow.source", kFlow, "An item's source is the first output of another activity with it."},
       &Source},
  };
}

}  // namespace hostcheck
