#include <algorithm>
#include <random>
#include <utility>

#include "host/fastening/Fastening.h"
#include "host/process/Process.h"
#include "hostcheck/Bench.h"
#include "hostcheck/Check.h"

namespace hostcheck {

namespace {

constexpr int kGestures = 400;

class Dice {
 public:
  explicit Dice(unsigned seed) : generator_(seed) {}
  std::size_t Below(std::size_t size) { return generator_() % size; }
  template <class T>
  const T& Of(const std::vector<T>& choice) {
    return choice[Below(choice.size())];
  }

 private:
  std::mt19937 generator_;
};

// Links of one activity as they should be: items with selectors.
using Links = std::vector<std::pair<std::string, int>>;

class ItemModel {
 public:
  // Each plays the gesture and answers what should be told of it.
  std::string Link(const std::string& activity, const std::string& item, int selector) {
    Links& links = links_[activity];
    const bool isNew = selector == 2 && !std::count(links.begin(), links.end(), std::pair(item, 2));
    links.emplace_back(item, selector);
    return isNew ? "17 " + activity + ">" + item : "";
  }
  std::string Remove(const std::string& activity, const std::string& item, int selector) {
    const auto removed = std::erase_if(links_[activity], [&](const auto& link) {
      return link.first == item && (selector == -1 || link.second == selector);
    });
    return removed ? "18 " + activity + ">" + item : "";
  }
  std::string Items(const std::string& activity, int selector) {
    std::string names;
    for (const auto& [item, of] : links_[activity]) {
      if (selector == 0 || selector == of) names += item + " ";
    }
    return Sorted(names);
  }

 private:
  std::map<std::string, Links> links_;
};

void RandomItems(Bench& bench) {
  bench.Need(bench.weld, "welds");
  std::vector<ZefBaseUnknown*> items{bench.weld, bench.loose};
  for (ZefBaseUnknown* const more : {bench.frame, bench.assembly}) {
    if (more) items.push_back(more);
  }
  const std::vector<ZefBaseUnknown*> activities{bench.op11, bench.op20, bench.st30};
  Dice dice(20250714);
  ItemModel model;
  Witness witness(bench);
  for (int i = 1; i <= kGestures; ++i) {
    ZefBaseUnknown* const activity = dice.Of(activities);
    ZefBaseUnknown* const item = dice.Of(items);
    const std::string at = bench.NameOf(activity), of = bench.NameOf(item);
    std::string wanted;
    if (dice.Below(5) < 3) {
      const int selector = 1 + static_cast<int>(dice.Below(2));
      bench.Link(activity, item, selector);
      wanted = model.Link(at, of, selector);
    } else {
      const int selector = dice.Of<int>({-1, 1, 2});
      const HRESULT result = bench.Remove(activity, item, selector);
      wanted = model.Remove(at, of, selector);
      bench.Expect(Succeeded(result) == !wanted.empty(), "RemoveItem says whether it removed");
    }
    const std::string when = " after gesture " + std::to_string(i) + " with " + of + " at " + at;
    bench.Equal(witness.Take(), wanted, "changes" + when);
    for (const int selector : {0, 2}) {
      bench.Equal(Sorted(bench.Items(activity, selector)), model.Items(at, selector),
                  "items" + when);
    }
  }
}

struct DrawnFlow {
  ZefBaseUnknown_var flow;
  std::string from, to;
};

// The neighbours that the flows give, each once.
std::string Reached(const std::vector<DrawnFlow>& flows, std::string DrawnFlow::*end,
                    const std::string& name, std::string DrawnFlow::*other) {
  std::vector<std::string> once;
  for (const DrawnFlow& drawn : flows) {
    if (drawn.*end != name || std::count(once.begin(), once.end(), drawn.*other)) continue;
    once.push_back(drawn.*other);
  }
  std::string names;
  for (const std::string& next : once) names += (names.empty() ? "" : " ") + next;
  return names;
}

void RandomFlows(Bench& bench) {
  const std::vector<ZefBaseUnknown*> activities{bench.op10, bench.op11, bench.op20, bench.st30};
  Dice dice(20250715);
  std::vector<DrawnFlow> flows;
  Witness witness(bench);
  for (int i = 1; i <= kGestures; ++i) {
    std::string wanted;
    if (flows.empty() || dice.Below(5) < 3) {
      ZefBaseUnknown* const from = dice.Of(activities);
      ZefBaseUnknown* const to = dice.Of(activities);
      if (from == to) continue;
      flows.push_back({bench.Draw(from, to), bench.NameOf(from), bench.NameOf(to)});
      bench.Require(static_cast<bool>(flows.back().flow), "DrawFlow hands the flow back");
      wanted = "30 " + flows.back().from + "-" + flows.back().to;
    } else {
      const auto drawn = flows.begin() + static_cast<std::ptrdiff_t>(dice.Below(flows.size()));
      wanted = "29 " + drawn->from + "-" + drawn->to;
      bench.hooks.RemoveFlow(drawn->flow);
      flows.erase(drawn);
    }
    const std::string when = " after gesture " + std::to_string(i);
    bench.Equal(witness.Take(), wanted, "changes" + when);
    for (ZefBaseUnknown* const activity : activities) {
      const std::string name = bench.NameOf(activity);
      bench.Equal(bench.Next(activity), Reached(flows, &DrawnFlow::from, name, &DrawnFlow::to),
                  "after " + name + when);
      bench.Equal(bench.Previous(activity), Reached(flows, &DrawnFlow::to, name, &DrawnFlow::from),
                  "before " + name + when);
    }
  }
}

void RandomOutputs(Bench& bench) {
  const std::vector<ZefBaseUnknown*> stations{bench.st20, bench.st30};
  const std::vector<ZefBaseUnknown*> products{bench.Need(bench.assembly, "assemblies"), bench.sub,
                                              nullptr};
  std::map<ZefBaseUnknown*, std::vector<std::pair<ZefBaseUnknown_var, std::string>>> outputs;
  Dice dice(20250717);
  Witness witness(bench);
  for (int i = 1; i <= kGestures / 4; ++i) {
    ZefBaseUnknown* const station = dice.Of(stations);
    auto& own = outputs[station];
    std::string wanted;
    const std::string at = bench.NameOf(station);
    if (own.empty() || dice.Below(5) < 3) {
      ZefBaseUnknown* const product = dice.Of(products);
      ZefBaseUnknown* const made = bench.AddOutput(station, product);
      bench.Require(made != nullptr, "AddProductOutput hands the output back");
      own.emplace_back(made, bench.NameOf(product));
      bench.Call(made, "O" + std::to_string(i));
      if (product) wanted = "39 " + at + ">output of " + own.back().second;
    } else {
      const auto gone = own.begin() + static_cast<std::ptrdiff_t>(dice.Below(own.size()));
      const std::string change = at + ">output of " + gone->second;
      wanted = "18 " + change + ", 29 " + change;
      bench.hooks.RemoveOutput(station, gone->first);
      own.erase(gone);
    }
    std::string names;
    for (const auto& [output, product] : own) {
      names += (names.empty() ? "" : " ") + bench.NameOf(output.Get());
    }
    const std::string when = " after gesture " + std::to_string(i) + " at " + at;
    bench.Equal(witness.Take(), wanted, "changes" + when);
    bench.Equal(bench.Outputs(station), names, "outputs" + when);
  }
}

// Children of assemblies as they should be.
class AssemblyModel {
 public:
  bool Contains(const std::string& assembly, const std::string& searched) {
    if (assembly == searched) return true;
    return std::any_of(children_[assembly].begin(), children_[assembly].end(),
                       [&](const std::string& child) { return Contains(child, searched); });
  }
  bool Add(const std::string& assembly, const std::string& child) {
    if (Contains(child, assembly)) return false;
    std::vector<std::string>& children = children_[assembly];
    if (!std::count(children.begin(), children.end(), child)) children.push_back(child);
    return true;
  }
  bool Remove(const std::string& assembly, const std::string& child) {
    return std::erase(children_[assembly], child) > 0;
  }
  std::string Children(const std::string& assembly) {
    std::string names;
    for (const std::string& child : children_[assembly]) names += child + " ";
    return Sorted(names);
  }

 private:
  std::map<std::string, std::vector<std::string>> children_;
};

void RandomAssemblies(Bench& bench) {
  std::vector<ZefBaseUnknown*> assemblies{bench.Need(bench.assembly, "assemblies"), bench.sub};
  for (const char* const name : {"MA3", "MA4"}) {
    assemblies.push_back(bench.Call(bench.hooks.AddAssembly(name), name));
  }
  std::vector<ZefBaseUnknown*> children = assemblies;
  if (bench.door) children.push_back(bench.door);
  Dice dice(20250716);
  AssemblyModel model;
  for (int i = 1; i <= kGestures; ++i) {
    ZefBaseUnknown* const assembly = dice.Of(assemblies);
    ZefBaseUnknown* const child = dice.Of(children);
    const std::string of = bench.NameOf(assembly), name = bench.NameOf(child);
    const auto asked = bench.Ask<TuvIMfgAssembly>(assembly);
    const bool adds = dice.Below(3) < 2;
    const HRESULT result = adds ? asked->AddChild(child) : asked->RemoveChild(child);
    const bool wanted = adds ? model.Add(of, name) : model.Remove(of, name);
    const std::string when =
        std::to_string(i) + ", " + (adds ? "adding " : "removing ") + name + " at " + of;
    bench.Expect(Succeeded(result) == wanted,
                 std::string("what ") + (wanted ? "can" : "cannot") + " be done, gesture " + when);
    bench.Equal(Sorted(bench.AssemblyChildren(assembly)), model.Children(of),
                "children after gesture " + when);
  }
}

}  // namespace

std::vector<Check> RandomChecks() {
  return {
      {{"random.items", "host/process/ZefISPPItemMgt.h",
        "Random links give the items and changes that they should."},
       &RandomItems},
      {{"random.flows", "host/process/ZefISPPFlowMgt.h",
        "Random flows give the neighbours and changes that they should."},
       &RandomFlows},
      {{"random.outputs", "host/process/ZefISPPProductIO.h",
        "Random outputs are listed and told as they should be."},
       &RandomOutputs},
      {{"random.assemblies", "host/fastening/TuvIMfgAssembly.h",
        "Random changes of assemblies give the children that they should."},
       &RandomAssemblies},
  };
}

}  // namespace hostcheck
