#include "host/document/Document.h"
#include "host/fastening/Fastening.h"
#include "host/process/Process.h"
#include "host/product/ZefINavigateObject.h"
#include "hostcheck/Bench.h"
#include "hostcheck/Check.h"

namespace hostcheck {

namespace {

template <class I>
Handle<I> RootContainer(Bench& bench) {
  const auto init = bench.Ask<ZefInit>(bench.document);
  const Handle<I> container = AdoptAs<I>(init->GetRootContainer(I::ClassName()));
  if (!container)
    throw Skipped(std::string("the root container does not answer ") + I::ClassName());
  return container;
}

void Kind(Bench& bench) {
  bench.Expect(bench.document->IsAKindOf("ZefProcess") == 1,
               "a process document is a kind of \"ZefProcess\"");
}

void RootContainers(Bench& bench) {
  const auto init = bench.Ask<ZefInit>(bench.document);
  const auto container = RootContainer<ZefIContainer>(bench);
  for (const InterfaceInfo& asked : AllInterfaces()) {
    bench.Expect(Adopt(init->GetRootContainer(asked.name)).Get() ==
                     AskFor(container, asked.identifier).Get(),
                 std::string("the root container comes as ") + asked.name + ", if it answers it");
  }
  bench.Expect(!Adopt(init->GetRootContainer("an interface of nobody")),
               "no root container comes as what it does not answer");
}

void ProcessRoots(Bench& bench) {
  const auto container = RootContainer<ZefISPPProcessContainer>(bench);
  const std::unique_ptr<ZefListValZefBaseUnknown_var> roots(container->GetProcessRoots());
  bench.Require(roots && roots->Size() > 0, "there is a process root");
  bench.Equal(bench.NameOf((*roots)[1].Get()), "ROOT", "the first process root");
  for (const auto& [name, object] : bench.Everything()) {
    bench.Expect(static_cast<bool>(ZefISPPActivityRoot_var(object)) == (name == "ROOT"),
                 "the root activity alone answers ZefISPPActivityRoot, asked of " + name);
  }
}

void ProductRoots(Bench& bench) {
  const auto container = RootContainer<ZefISPPProcessContainer>(bench);
  const ZefListValZefBaseUnknown_var* const roots = container->GetProductRoots();
  bench.Need(bench.frame, "parts");
  bench.Require(roots && roots->Size() > 0 && (*roots)[1], "there is a root of the product list");
  if (const ZefINavigateObject_var top = (*roots)[1]) {
    bench.Equal(Sorted(bench.TakeNames(top->GetChildren())), "DOOR FRAME",
                "the parts below the product list");
  }
  const unsigned before = CountOf((*roots)[1].Get());
  for (int time = 0; time < 3; ++time) container->GetProductRoots();
  const ZefListValZefBaseUnknown_var* const again = container->GetProductRoots();
  bench.Require(again && again->Size() > 0, "the product list has its root each time");
  bench.Expect(CountOf((*again)[1].Get()) == before, "the container keeps one list of its own");
}

void ActivityOrder(Bench& bench) {
  ZefBaseUnknown* const late = bench.hooks.AddActivity(bench.st10, "OP12", ActivityRole::Operation);
  bench.Call(late, "OP12");
  const std::string wanted = bench.wait ? "ROOT ST10 OP10 OP11 ST20 OP20 WAIT ST30 OP12"
                                        : "ROOT ST10 OP10 OP11 ST20 OP20 ST30 OP12";
  const auto container = RootContainer<ZefIContainer>(bench);
  bench.Equal(bench.MembersOf(container, "ZefISPPActivity"), wanted,
              "the activities of the process, the root first, then as they were made");
  bench.hooks.RemoveActivity(bench.st20);
  bench.Expect(bench.MembersOf(container, "ZefISPPActivity").find("ST20") == std::string::npos,
               "a removed activity leaves the container");
}

void MemberInterfaces(Bench& bench) {
  const auto container = RootContainer<ZefIContainer>(bench);
  _SEQUENCE_ZefBaseUnknown_ptr members;
  bench.root->AddRef();
  members.append(bench.root);
  for (const char* const type : {"ZefISPPActivity", "ZefISPPItemMgt", "ZefISPPFlowMgt"}) {
    const int before = members.length();
    bench.Expect(Succeeded(container->ListMembersHere(type, members)), "members can be listed");
    for (int i = before; i < members.length(); ++i) {
      bench.Expect(Adopt(members[i]->QueryInterface(type)).Get() == members[i],
                   std::string("a member stands in the list as ") + type);
    }
    bench.Expect(members.length() > before, std::string("there are members of ") + type);
  }
  const int before = members.length();
  container->ListMembersHere("an interface of nobody", members);
  bench.Expect(members.length() == before, "no member answers an unknown interface");
  bench.Require(before > 0 && members[0] == bench.root, "what the sequence held stays");
  for (int i = 0; i < members.length(); ++i) members[i]->Release();
}

void OwnContainers(Bench& bench) {
  bench.Need(bench.weld, "welds");
  ZefIContainer_var ofRoot;
  bench.Ask<ZefISpecObject>(bench.root)->GetFeatContainer(ofRoot);
  bench.Expect(ofRoot == RootContainer<ZefIContainer>(bench),
               "the root activity's container is the root container");
  bench.Link(bench.op20, bench.weld, 1);
  bench.Link(bench.op20, bench.loose, 2);
  const auto items = [&](ZefBaseUnknown* activity) {
    ZefIContainer_var container;
    bench.Ask<ZefISpecObject>(activity)->GetFeatContainer(container);
    bench.Require(static_cast<bool>(container), "every activity has a container");
    ZefIContainer_var again;
    bench.Ask<ZefISpecObject>(activity)->GetFeatContainer(again);
    bench.Expect(again == container, "the container of an activity is one object");
    _SEQUENCE_ZefBaseUnknown_ptr members;
    container->ListMembersHere("ZefISPPActivitySpecification", members);
    std::string names;
    for (int i = 0; i < members.length(); ++i) {
      ZefBaseUnknown_var item;
      AdoptAs<ZefISPPActivitySpecification>(members[i])->GetSpecifiedItem(item);
      names += bench.NameOf(item.Get()) + " ";
    }
    return names;
  };
  bench.Equal(items(bench.op20), "SW-1 SW-2 ", "the item links in OP20's container");
  bench.Equal(items(bench.op11), "", "the item links in OP11's container");
  bench.Link(bench.root, bench.weld, 1);
  bench.Equal(items(bench.root), "SW-1 ", "the root activity's own links in its container");
  bench.Equal(bench.Members(bench.op20, "ZefISPPActivity"), "",
              "the activities in the container of an activity that is no root");
}

void Fasteners(Bench& bench) {
  bench.Need(bench.weld, "welds");
  const ZefICompoundContainer_var compound =
      bench.Ask<ZefDocument>(bench.document)->GetCompoundContainer();
  bench.Need(compound, "compound container");
  bench.Expect(!Adopt(compound->GetContainer("an unknown container")),
               "there is no container of an unknown name");
  const auto container = Adopt(compound->GetContainer("TuvFPPContainer"));
  bench.Require(static_cast<bool>(container), "there is the container \"TuvFPPContainer\"");
  _SEQUENCE_ZefBaseUnknown_ptr members;
  container->ListMembersHere("TuvIBIWFastener", members);
  std::string names;
  for (int i = 0; i < members.length(); ++i) {
    names += bench.NameOf(Adopt(members[i]).Get()) + " ";
  }
  bench.Equal(names, "SW-1 SW-2 ", "the fasteners of the document, as they were made");
}

void Fathers(Bench& bench) {
  const auto father = [&](ZefBaseUnknown* object) {
    return bench.NameOf(Adopt(bench.Ask<ZefISpecObject>(object)->GetFather()).Get());
  };
  bench.Equal(father(bench.root), "null", "the father of the root activity");
  bench.Equal(father(bench.st10), "ROOT", "the father of ST10");
  bench.Equal(father(bench.op10), "ST10", "the father of OP10");
}

void OwnDocument(Bench& bench) {
  for (ZefBaseUnknown* const object : {bench.weld, bench.frame, bench.assembly}) {
    if (!object) continue;
    bench.Equal(bench.NameOf(bench.Ask<ZefILinkableObject>(object)->GetDocument()), "the document",
                "the document of " + bench.NameOf(object));
  }
  bench.Need(bench.weld, "welds");
}

}  // namespace

std::vector<Check> DocumentChecks() {
  static constexpr char kContainer[] = "host/document/ZefIContainer.h";
  static constexpr char kProcess[] = "host/process/ZefISPPProcessContainer.h";
  return {
      {{"documents.kind", "host/document/ZefDocument.h", "A document's class tells its kind."},
       &Kind},
      {{"documents.root-container", "host/document/ZefInit.h",
        "The root container comes as the interface asked for, or not at all."},
       &RootContainers},
      {{"documents.process-roots", kProcess, "The first process root is the root activity."},
       &ProcessRoots},
      {{"documents.product-roots", kProcess,
        "The list of product roots is the container's and begins with the product list."},
       &ProductRoots},
      {{"documents.activities", kContainer,
        "The root container lists the root activity, then all others as they were made."},
       &ActivityOrder},
      {{"documents.members", kContainer,
        "Members are appended as the interface that was asked for."},
       &MemberInterfaces},
      {{"documents.own-containers", "host/document/ZefISpecObject.h",
        "Item links stand in the container of their activity."},
       &OwnContainers},
      {{"documents.fasteners", "host/document/ZefICompoundContainer.h",
        "The container \"TuvFPPContainer\" holds the fasteners."},
       &Fasteners},
      {{"documents.fathers", "host/document/ZefISpecObject.h",
        "The father of an activity is the one above it."},
       &Fathers},
      {{"documents.of-items", "host/document/ZefILinkableObject.h",
        "Items tell the document that holds them."},
       &OwnDocument},
  };
}

}  // namespace hostcheck
