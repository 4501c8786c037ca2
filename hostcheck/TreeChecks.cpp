#include "host/fastening/Fastening.h"
#include "host/process/Process.h"
#include "hostcheck/Bench.h"
#include "hostcheck/Check.h"

namespace hostcheck {

namespace {

void Children(Bench& bench) {
  const std::string all = bench.wait ? "ST10 ST20 WAIT ST30" : "ST10 ST20 ST30";
  bench.Equal(bench.Children(bench.root), all, "the children of the root activity");
  bench.Equal(bench.Children(bench.st10), "OP10 OP11", "the children of ST10");
  bench.Equal(bench.Children(bench.op10), "", "the children of OP10");
}

void Kinds(Bench& bench) {
  bench.Equal(bench.Children(bench.root, "PhysicalActivity"), "ST10 ST20 ST30",
              "the physical children of the root activity");
  bench.Equal(bench.Children(bench.root, "Activity"), bench.Children(bench.root),
              "its children of the kind of all activities");
  bench.Need(bench.wait, "logical activities");
  bench.Equal(bench.Children(bench.root, "LogicalActivity"), "WAIT", "its logical children");
}

void Parents(Bench& bench) {
  bench.Equal(bench.Parent(bench.op10), "ST10", "the parent of OP10");
  bench.Equal(bench.Parent(bench.st10), "ROOT", "the parent of ST10");
  ZefISPPAbstractActivity_var parent = bench.op10;
  bench.Ask<ZefISPPAbstractActivity>(bench.root)->GetParentActivity(parent);
  bench.Expect(!parent, "the root activity has no parent");
}

void StationsAlone(Bench& bench) {
  for (ZefBaseUnknown* const activity : bench.Activities()) {
    const bool station = activity == bench.st10 || activity == bench.st20 || activity == bench.st30;
    if (station) bench.Ask<TuvIBIWItemInfo>(activity);
    bench.Expect(static_cast<bool>(TuvIBIWItemInfo_var(activity)) == station,
                 "stations alone answer TuvIBIWItemInfo, asked of " + bench.NameOf(activity));
  }
  bench.Need(bench.assembly, "assemblies");
  bench.Expect(!TuvIBIWItemInfo_var(bench.assembly), "an assembly does not answer TuvIBIWItemInfo");
}

using ListOperation = HRESULT (TuvIBIWItemInfo::*)(ZefListValZefBaseUnknown_var&);

// What the operation appends to a list that holds OP10 already.
std::string Appended(Bench& bench, ZefBaseUnknown* station, ListOperation operation) {
  ZefListValZefBaseUnknown_var list;
  list.Append(bench.op10);
  const auto info = bench.Ask<TuvIBIWItemInfo>(station);
  for (int time = 0; time < 2; ++time) ((*info).*operation)(list);
  bench.Expect(list[1] == bench.op10, "item information keeps what the list held");
  list.RemovePosition(1);
  return Sorted(bench.Names(list));
}

void Inputs(Bench& bench) {
  bench.Need(bench.frame, "parts");
  bench.Need(bench.assembly, "assemblies");
  ZefBaseUnknown* const nested = bench.hooks.AddActivity(bench.st20, "ST21", ActivityRole::Station);
  ZefBaseUnknown* const deep = bench.hooks.AddActivity(bench.op20, "OP21", ActivityRole::Operation);
  bench.Link(bench.op20, bench.frame, 2);
  bench.Link(bench.st20, bench.assembly, 2);
  bench.Link(bench.st20, bench.sub, 1);
  bench.Link(deep, bench.bolt, 2);
  bench.Link(nested, bench.door, 2);
  if (bench.weld) bench.Link(bench.op20, bench.weld, 2);
  bench.Equal(Appended(bench, bench.st20, &TuvIBIWItemInfo::GetInputItems), "FRAME MA",
              "the first-assigned parts and assemblies of ST20 and the operations directly below");
  bench.Equal(Appended(bench, bench.st20, &TuvIBIWItemInfo::GetFirstAssignedInputs),
              bench.weld ? "FRAME MA SW-1" : "FRAME MA", "all that is first assigned there");
  bench.Equal(Appended(bench, bench.st30, &TuvIBIWItemInfo::GetInputItems), "", "ST30's inputs");
}

void Outputs(Bench& bench) {
  bench.Need(bench.output, "product outputs");
  bench.AddOutput(bench.st10, nullptr);
  for (const ListOperation operation :
       {&TuvIBIWItemInfo::GetProductOutputs, &TuvIBIWItemInfo::GetOutputProductIOs}) {
    bench.Equal(Appended(bench, bench.st10, operation), "ST10.1 ST10.2", "the outputs of ST10");
  }
  const auto info = bench.Ask<TuvIBIWItemInfo>(bench.st10);
  const auto inMode = [&](int mode) {
    ZefListValZefBaseUnknown_var list;
    for (int time = 0; time < 2; ++time) info->GetOutputs(list, mode);
    return bench.Names(list);
  };
  bench.Equal(inMode(0), "ST10.1 ST10.2", "the outputs of ST10 in mode 0");
  bench.Equal(inMode(1), "MA", "the products of its outputs in mode 1");
}

}  // namespace

std::vector<Check> TreeChecks() {
  static constexpr char kChildren[] = "host/process/ZefISPPChildManagement.h";
  static constexpr char kInfo[] = "host/fastening/TuvIBIWItemInfo.h";
  return {
      {{"tree.children", kChildren, "An activity lists its own children, none further down."},
       &Children},
      {{"tree.kinds", kChildren, "Children are told apart by their kind."}, &Kinds},
      {{"tree.parents", "host/process/ZefISPPAbstractActivity.h",
        "An activity tells the one above it; the root has none."},
       &Parents},
      {{"stations.alone", kInfo, "Stations alone answer item information."}, &StationsAlone},
      {{"stations.inputs", kInfo,
        "Inputs are what is first assigned to the station and the operations directly below it."},
       &Inputs},
      {{"stations.outputs", kInfo, "Outputs come as such, or as their products, each once."},
       &Outputs},
  };
}

}  // namespace hostcheck
