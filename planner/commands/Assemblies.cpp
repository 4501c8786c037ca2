#include <algorithm>
#include <unordered_set>

#include "embedded/model/ItemLink.h"
#include "host/values/Each.h"
#include "planner/Session.h"
#include "planner/check/AssemblyCheck.h"
#include "planner/commands/Commands.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/names/Items.h"
#include "planner/report/Describe.h"
#include "planner/report/Text.h"

namespace biwplan {

namespace {

using embedded::MfgAssembly;
using embedded::ObjectAs;

Json MakersOf(const MfgAssembly& assembly) {
  Json makers = Json::array();
  for (const embedded::ProductOutput* const output : assembly.ProducedBy()) {
    if (output->OwnActivity()) makers.push_back(output->OwnActivity()->Key());
  }
  return makers;
}

Json TakersOf(const MfgAssembly& assembly) {
  Json takers = Json::array();
  for (const embedded::Activity* const activity : ConsumersOf(assembly)) {
    takers.push_back(activity->Key());
  }
  return takers;
}

// What people call a part or an assembly besides its key.
std::string FullNameOf(const ZefBaseUnknown_var& item) {
  if (const auto* const assembly = ObjectAs<MfgAssembly>(item.Get())) return assembly->OwnName();
  const auto* const part = ObjectAs<embedded::Product>(item.Get());
  return part ? part->Data().name : std::string();
}

// "MA-1  Front floor".
std::string Titled(const Json& key, const Json& title) {
  const std::string name = Printable(key.get<std::string>());
  const std::string text = Printable(title.get<std::string>());
  return text.empty() || text == name ? name : name + "  " + text;
}

// The assemblies as a tree, those first that are in no other. One that is in several is unfolded
// where it is met first. Nesting is as deep as the process is long, so nothing recurs.
class Forest {
 public:
  explicit Forest(const embedded::Document& document) {
    std::unordered_set<const MfgAssembly*> nested;
    for (const auto& assembly : document.Assemblies()) {
      for (const auto& child : Each<TuvIMfgAssembly>(assembly->OwnChildren())) {
        nested.insert(ObjectAs<MfgAssembly>(child.Get()));
      }
    }
    for (const auto& assembly : document.Assemblies()) {
      if (!nested.contains(assembly.Get())) Unfold(*assembly);
    }
    // What is left lies on rings.
    for (const auto& assembly : document.Assemblies()) {
      if (!met_.contains(assembly.Get())) Unfold(*assembly);
    }
  }
  Json Rows() { return std::move(rows_); }

 private:
  struct Node {
    ZefBaseUnknown_var object;
    std::size_t depth;
  };

  void Unfold(MfgAssembly& top) {
    std::vector<Node> open{{top.Identity(), 0}};
    while (!open.empty()) {
      const Node node = open.back();
      open.pop_back();
      const auto* const assembly = ObjectAs<MfgAssembly>(node.object.Get());
      const bool unfolds = assembly && met_.insert(assembly).second;
      Append(node, assembly, unfolds);
      if (!unfolds) continue;
      const ZefListValZefBaseUnknown_var& children = assembly->OwnChildren();
      for (int i = children.Size(); i >= 1; --i) open.push_back({children[i], node.depth + 1});
    }
  }

  void Append(const Node& node, const MfgAssembly* assembly, bool unfolds) {
    Json row = {{"item", NameOf(node.object)}, {"depth", node.depth}};
    row["name"] = FullNameOf(node.object);
    if (assembly) {
      row["madeBy"] = MakersOf(*assembly);
      row["takenInBy"] = TakersOf(*assembly);
      if (!unfolds) row["above"] = true;
    }
    rows_.push_back(std::move(row));
  }

  Json rows_ = Json::array();
  std::unordered_set<const MfgAssembly*> met_;
};

class Assemblies : public Command {
 public:
  Answer Run(Session& ioSession) override {
    Answer answer;
    answer.data["assemblies"] = Forest(ioSession.Document()).Rows();
    return answer;
  }

  std::string InWords(const Json& iData) const override {
    std::string text;
    for (const Json& row : iData.at("assemblies")) text += Line(row);
    return text.empty() ? "no assemblies\n" : text;
  }

 private:
  static constexpr std::size_t kMostLevels = 20;

  // "MA-1 Front floor: made by ST10, taken in by ST20", or the name of a part.
  static std::string Line(const Json& row) {
    const std::size_t level = std::min(row.at("depth").get<std::size_t>(), kMostLevels);
    std::string line = std::string(2 * level, ' ') + Titled(row.at("item"), row.at("name"));
    if (row.contains("madeBy")) {
      line += ": " + Clause("made by ", row.at("madeBy"), "made by nobody") + ", " +
              Clause("taken in by ", row.at("takenInBy"), "taken in by nobody");
    }
    return line + (row.contains("above") ? " (see above)\n" : "\n");
  }

  static std::string Clause(const std::string& words, const Json& names, const std::string& none) {
    return names.empty() ? none : words + Listed(names);
  }
};

class FirstAssigned : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", name_, "Takes the items in.");
    ioSyntax.Note("A station takes in what its operations take in.");
  }

  Answer Run(Session& ioSession) override {
    const embedded::Activity& activity = ioSession.Find().ActivityOf(name_);
    ZefListValZefBaseUnknown_var items = Own(activity);
    const Json own = NamesAsJson(&items);
    const TuvIBIWItemInfo_var station = activity.Identity();
    if (station) {
      items.RemoveAll();
      station->GetFirstAssignedInputs(items);
    }
    Json titles = Json::array();
    for (int i = 1; i <= items.Size(); ++i) titles.push_back(FullNameOf(items[i]));
    return {{{"activity", activity.Key()},
             {"items", NamesAsJson(&items)},
             {"names", titles},
             {"own", own}}};
  }

  std::string InWords(const Json& iData) const override {
    const Json& items = iData.at("items");
    const Json& own = iData.at("own");
    std::string text;
    for (std::size_t i = 0; i < items.size(); ++i) {
      const bool isOwn = std::find(own.begin(), own.end(), items[i]) != own.end();
      text += Titled(items[i], iData.at("names")[i]);
      text += isOwn ? "\n" : "  (through an operation)\n";
    }
    if (!text.empty()) return text;
    return Printable(iData.at("activity").get<std::string>()) + " takes in nothing\n";
  }

 private:
  static ZefListValZefBaseUnknown_var Own(const embedded::Activity& activity) {
    ZefListValZefBaseUnknown_var items;
    activity.Links().ForEach([&](const embedded::ItemLink& link) {
      const bool isNew = items.Locate(link.Item()) == 0;
      if (link.GetSelector() == embedded::ItemLink::FirstAssigned && isNew) {
        items.Append(link.Item());
      }
    });
    return items;
  }

  std::string name_;
};

class Update : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Choice({"on", "off", "status"}, word_, "On makes assemblies follow each change.");
  }

  bool MayChange() const override { return word_ != "status"; }
  Answer Run(Session& ioSession) override {
    if (word_ != "status") ioSession.SwitchUpdate(word_ == "on");
    const std::string through = ioSession.Document().settings.updateThrough;
    return {{{"on", !through.empty()}, {"through", through}}};
  }

  std::string InWords(const Json& iData) const override {
    if (iData.at("on") == false) return "the update of assemblies is off\n";
    return "the update of assemblies is on, through " +
           Printable(iData.at("through").get<std::string>()) + "\n";
  }

 private:
  std::string word_;
};

}  // namespace

void AddAssemblyCommands(CommandTable& ioTable) {
  ioTable.Add<Update>("update", "Has assemblies follow the process, or not.");
  ioTable.Add<Assemblies>("assemblies", "Prints the assemblies: what is in them, who makes them.");
  ioTable.Add<FirstAssigned>("first-assigned", "Prints what an activity takes in.");
}

}  // namespace biwplan
