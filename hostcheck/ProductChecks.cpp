#include <memory>

#include "host/fastening/Fastening.h"
#include "host/product/Product.h"
#include "hostcheck/Bench.h"
#include "hostcheck/Check.h"

namespace hostcheck {

namespace {

std::string Below(Bench& bench, ZefBaseUnknown* product, const char* type) {
  return bench.TakeNames(bench.Ask<ZefIProduct>(product)->GetAllChildren(type));
}

void Children(Bench& bench) {
  bench.Need(bench.frame, "parts");
  bench.hooks.AddPart(bench.bolt, "NUT");
  bench.Expect(bench.Ask<ZefIProduct>(bench.frame)->GetChildrenCount() == 1, "FRAME has one child");
  bench.Expect(bench.Ask<ZefIProduct>(bench.door)->GetChildrenCount() == 0, "DOOR has no child");
  const auto tree = bench.Ask<ZefINavigateObject>(bench.frame);
  bench.Equal(bench.TakeNames(tree->GetChildren()), "BOLT", "the children of FRAME");
}

void AllChildren(Bench& bench) {
  bench.Need(bench.frame, "parts");
  const auto add = [&](ZefBaseUnknown* parent, const char* name) {
    return bench.Call(bench.hooks.AddPart(parent, name), name);
  };
  add(add(bench.bolt, "NUT"), "RING");
  add(bench.frame, "CLIP");
  bench.Equal(Below(bench, bench.frame, "ZefIProduct"), "BOLT NUT RING CLIP",
              "all products below FRAME, each followed by what lies below it");
  bench.Equal(Below(bench, bench.frame, "an interface of nobody"), "",
              "the products below FRAME that answer an unknown interface");
  bench.Equal(Below(bench, bench.door, "ZefIProduct"), "", "the products below DOOR");
  bench.Expect(bench.Ask<ZefIProduct>(bench.frame)->GetChildrenCount() == 2,
               "FRAME has two children of its own");
}

void Reference(Bench& bench) {
  ZefIProduct_var reference;
  bench.Expect(Succeeded(bench.Ask<ZefIProduct>(bench.frame)->GetReferenceProduct(reference)),
               "a product has a reference");
  bench.Equal(bench.NameOf(reference.Get()), "FRAME", "the reference of a reference");
}

void AssemblyChildren(Bench& bench) {
  const auto assembly = bench.Ask<TuvIMfgAssembly>(bench.assembly);
  bench.Need(bench.door, "parts");
  bench.Equal(bench.AssemblyChildren(bench.assembly), "", "the children of a new assembly");
  bench.Expect(
      Succeeded(assembly->AddChild(bench.door)) && Succeeded(assembly->AddChild(bench.sub)),
      "parts and assemblies can be added");
  assembly->AddChild(bench.door);
  bench.Equal(Sorted(bench.AssemblyChildren(bench.assembly)), "DOOR SUB",
              "the children, each once");
  if (const ZefINavigateObject_var tree = bench.assembly) {
    bench.Equal(Sorted(bench.TakeNames(tree->GetChildren())), "DOOR SUB",
                "the children in the tree of products");
  }
  bench.Expect(Succeeded(assembly->RemoveChild(bench.door)), "a child can be removed");
  bench.Equal(bench.AssemblyChildren(bench.assembly), "SUB", "the children without it");
  bench.Expect(Failed(assembly->RemoveChild(bench.door)), "what is no child cannot be removed");
}

void AssemblyRefusals(Bench& bench) {
  const auto assembly = bench.Ask<TuvIMfgAssembly>(bench.assembly);
  const auto inner = bench.Ask<TuvIMfgAssembly>(bench.sub);
  ZefBaseUnknown* const deepest = bench.Call(bench.hooks.AddAssembly("DEEP"), "DEEP");
  bench.Expect(Failed(assembly->AddChild(nullptr)), "an assembly refuses null");
  bench.Expect(Failed(assembly->AddChild(bench.assembly)), "an assembly refuses itself");
  assembly->AddChild(bench.sub);
  inner->AddChild(deepest);
  bench.Expect(Failed(inner->AddChild(bench.assembly)), "an assembly refuses one that contains it");
  bench.Expect(Failed(bench.Ask<TuvIMfgAssembly>(deepest)->AddChild(bench.assembly)),
               "an assembly refuses one that contains it further up");
  bench.Equal(bench.AssemblyChildren(bench.sub), "DEEP", "the children after what was refused");
}

void AssemblyNames(Bench& bench) {
  const auto assembly = bench.Ask<TuvIMfgAssembly>(bench.assembly);
  bench.Expect(Succeeded(assembly->SetName("Vorderwagen \xC3\xA4ußen")), "a name can be set");
  bench.Equal(assembly->GetName().ConvertToChar(), "Vorderwagen \xC3\xA4ußen", "the name");
  bench.Expect(bench.Ask<TuvIMfgAssembly>(bench.sub)->GetName().Compare(assembly->GetName()) == 0,
               "another assembly has a name of its own");
}

void Positions(Bench& bench) {
  const auto weld = bench.Ask<TuvISpotWeld>(bench.weld);
  bench.Expect(weld->GetX() == 100 && weld->GetY() == -20.5 && weld->GetZ() == 3,
               "SW-1 stands at 100, -20.5, 3 mm");
  double* const array = weld->GetPositionAndOrientation();
  double* const other = weld->GetPositionAndOrientation();
  bench.Require(array && other, "a weld has a position");
  bench.Require(array != other, "each position is a new array");
  const std::unique_ptr<double[]> first(array), second(other);
  bench.Expect(first[0] == 100 && first[1] == -20.5 && first[2] == 3,
               "the array begins with the coordinates");
  bench.Expect(first[3] == 0 && first[4] == 0 && first[5] == 0, "three rotations follow");
}

void JoinedParts(Bench& bench) {
  const auto fastener = bench.Ask<TuvIBIWFastener>(bench.weld);
  bench.Need(bench.frame, "parts");
  ZefListValZefBaseUnknown_var parts;
  bench.Expect(Succeeded(fastener->GetJointedParts(parts)), "a weld tells its parts");
  bench.Equal(Sorted(bench.Names(parts)), "DOOR FRAME", "the parts that SW-1 joins");
  ZefUnicodeString type;
  bench.Expect(Succeeded(fastener->GetFastenerType(type)), "a weld tells its type");
  bench.Expect(
      Succeeded(fastener->SetDisplayStatus(4, 1)) && Succeeded(fastener->SetDisplayStatus(1, 1)),
      "a weld takes the assigned and the unassigned look");
  bench.Expect(!TuvIBIWCurveFastener_var(bench.weld), "a spot weld is no seam");
}

void Validity(Bench& bench) {
  const TuvIBIWFastener_var weld = bench.Need(bench.weld, "welds");
  bench.Expect((bench.Ask<TuvIBIWActivity>(bench.op10)->IsValidFastener(weld) & 0xff) != 0,
               "a spot weld may be assigned to an operation that welds spots");
  bench.Ask<TuvIBIWActivity>(bench.op10)->IsValidFastener(nullptr);
  if (const TuvIBIWActivityWelding_var welding = bench.op10) {
    bench.Expect(Succeeded(welding->UpdateCycleTime()), "its cycle time can be computed");
  }
}

}  // namespace

std::vector<Check> ProductChecks() {
  static constexpr char kProduct[] = "host/product/ZefIProduct.h";
  static constexpr char kAssembly[] = "host/fastening/TuvIMfgAssembly.h";
  return {
      {{"products.children", kProduct, "A product tells its direct children."}, &Children},
      {{"products.all-children", kProduct, "GetAllChildren lists every depth, depth first."},
       &AllChildren},
      {{"products.reference", kProduct, "A reference answers itself as reference."}, &Reference},
      {{"assemblies.children", kAssembly,
        "A child is added once, and removed only when it is one."},
       &AssemblyChildren},
      {{"assemblies.refusals", kAssembly, "An assembly refuses null, itself and what contains it."},
       &AssemblyRefusals},
      {{"assemblies.names", kAssembly, "An assembly keeps the name that it is given."},
       &AssemblyNames},
      {{"fasteners.position", "host/fastening/TuvISpotWeld.h",
        "A weld tells where it stands, each time in a new array."},
       &Positions},
      {{"fasteners.parts", "host/fastening/TuvIBIWFastener.h", "A weld tells the parts it joins."},
       &JoinedParts},
      {{"fasteners.validity", "host/fastening/TuvIBIWActivity.h",
        "An activity says which fasteners may be assigned to it."},
       &Validity},
  };
}

}  // namespace hostcheck
