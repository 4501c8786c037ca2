#include "planner/import/ProcessList.h"

#include <algorithm>
#include <set>
#include <unordered_map>
#include <utility>

#include "planner/import/ActivityWords.h"
#include "planner/import/Graph.h"
#include "planner/import/ListReader.h"
#include "planner/import/Values.h"

namespace biwplan {

namespace {

enum Column : std::size_t {
  Id,
  Label,
  Parent,
  Type,
  Task,
  Kind,
  Predecessors,
  Successors,
  FirstAssigned,
  Items,
  Outputs,
  FixedSeconds,
  SecondsPerWeld,
  Speed
};

std::vector<ColumnSpec> ActivityColumns() {
  return {
      {"id",
       {"id", "activityid", "activity", "key", "operationid", "stepid", "number", "no"},
       true},
      {"label", {"label", "name", "activityname", "description", "title"}},
      {"parent", {"parent", "parentid", "station", "partof"}},
      {"type", {"type", "role", "level", "activitytype"}},
      {"task", {"task", "technology", "method"}},
      {"kind", {"kind", "nature"}},
      {"predecessors", {"predecessors", "predecessor", "previous", "after"}},
      {"successors", {"successors", "successor", "next", "before"}},
      {"first_assigned", {"firstassigned", "inputs", "input", "loads", "loadedparts", "parts"}},
      {"items", {"items", "item"}},
      {"outputs", {"outputs", "output", "produces", "products"}},
      {"fixed_seconds", {"fixedseconds", "fixedtime", "fixedtimes", "fixed"}},
      {"seconds_per_weld", {"secondsperweld", "timeperweld", "weldseconds", "weldtime"}},
      {"speed", {"speed", "speedmms", "speedmmpersecond", "speedmmpers", "seamspeed"}},
  };
}

class ProcessListImport {
 public:
  ProcessListImport(std::istream& stream, const std::string& source, const PartsList& parts,
                    const std::string& order)
      : reader_(stream, source, ActivityColumns(), order),
        partCount_(parts.parts.size()),
        items_(parts.Index()) {
    list_.source = source;
  }

  ProcessList Run() {
    while (reader_.Next(ProcessList::kMostRows)) {
      faults_.Try(reader_.Line(), [this] { ReadRow(); });
    }
    JoinActivities();
    JoinItems();
    StopAtFaults();
    CheckTree();
    CheckFlows();
    StopAtFaults();
    list_.order = SortNodes(tree_);
    list_.notes = reader_.Notes();
    return std::move(list_);
  }

 private:
  // The names that a row refers to.
  struct Links {
    std::string parent;
    std::string predecessors;
    std::string successors;
    std::string firstAssigned;
    std::string items;
    std::string outputs;
  };

  void StopAtFaults() {
    RefuseFaults(list_.source, reader_.RowsRead(), std::move(faults_).Sorted());
  }

  // The activity counts as known even where the rest of its row is wrong, or other rows would be
  // blamed for naming it.
  void ReadRow() {
    embedded::ActivityData& data = Append().data;
    reader_.CheckLength();
    const Column title = reader_.Text(Label).empty() ? Id : Label;
    const std::string_view label = CheckTitle(reader_.FieldName(title), reader_.Text(title));
    if (title == Label) data.label = label;
    ActivityWords words;
    for (const Column column : {Type, Task, Kind}) {
      words.Read(reader_.FieldName(column), reader_.Text(column));
    }
    const bool isTop = reader_.Text(Parent).empty();
    using Role = embedded::ActivityData::Role;
    data.role = words.GetRole().value_or(isTop ? Role::Station : Role::Operation);
    data.kind = words.GetKind();
    data.task = words.GetTask();
    data.fixedSeconds = reader_.NonNegativeNumber(FixedSeconds).value_or(data.fixedSeconds);
    data.secondsPerWeld = reader_.NonNegativeNumber(SecondsPerWeld).value_or(data.secondsPerWeld);
    data.speedMmPerSecond = reader_.PositiveNumber(Speed).value_or(data.speedMmPerSecond);
  }

  ActivityRow& Append() {
    const std::string key(CheckName(reader_.FieldName(Id), reader_.Text(Id)));
    const auto [first, isNew] = lines_.try_emplace(key, reader_.Line());
    if (!isNew) {
      throw RowError(FaultKind::DuplicateId, "the activity " + Quoted(key) + " stands on line " +
                                                 std::to_string(first->second) +
                                                 " already; give each an id of its own");
    }
    ActivityRow row;
    row.line = reader_.Line();
    row.data.key = key;
    list_.activities.push_back(std::move(row));
    const auto text = [this](Column column) { return std::string(reader_.Text(column)); };
    links_.push_back({text(Parent), text(Predecessors), text(Successors), text(FirstAssigned),
                      text(Items), text(Outputs)});
    return list_.activities.back();
  }

  void JoinActivities() {
    NameIndex index({"activity", "activities", "process list", FaultKind::DanglingReference});
    for (std::size_t i = 0; i < list_.activities.size(); ++i) {
      const embedded::ActivityData& data = list_.activities[i].data;
      index.Add({data.key, data.label}, i);
    }
    std::set<std::pair<std::size_t, std::size_t>> known;
    for (std::size_t i = 0; i < list_.activities.size(); ++i) {
      const Links& links = links_[i];
      ActivityRow& row = list_.activities[i];
      faults_.Try(row.line, [&] {
        if (!links.parent.empty()) row.parent = index.Require(links.parent);
      });
      const auto join = [&](const std::string& names, bool isBefore) {
        std::vector<std::size_t> others;
        faults_.Try(row.line, [&] { index.Resolve(names, others, ProcessList::kMostNamed); });
        for (const std::size_t other : others) {
          const auto ends = isBefore ? std::pair(other, i) : std::pair(i, other);
          if (!known.insert(ends).second) continue;
          list_.flows.push_back({ends.first, ends.second, row.line});
        }
      };
      join(links.predecessors, true);
      join(links.successors, false);
    }
  }

  void JoinItems() {
    for (std::size_t i = 0; i < list_.activities.size(); ++i) {
      ActivityRow& row = list_.activities[i];
      faults_.Try(row.line, [&] { row.outputs = ResolveOutputs(links_[i].outputs); });
    }
    for (std::size_t i = 0; i < list_.activities.size(); ++i) {
      ActivityRow& row = list_.activities[i];
      faults_.Try(row.line, [&] {
        items_.Resolve(links_[i].firstAssigned, row.firstAssigned, ProcessList::kMostNamed);
        items_.Resolve(links_[i].items, row.items, ProcessList::kMostNamed);
      });
    }
  }

  // An output that is no part is an assembly that the process makes; several activities may.
  std::vector<std::size_t> ResolveOutputs(const std::string& field) {
    std::vector<std::size_t> outputs;
    if (const auto item = items_.Find(field)) return {*item};
    for (const std::string_view name : Split(field, ";|,")) {
      std::optional<std::size_t> item = items_.Find(name);
      if (!item) item = AddAssembly(CheckTitle(reader_.FieldName(Outputs), name));
      outputs.push_back(*item);
      if (outputs.size() <= ProcessList::kMostNamed) continue;
      throw RowError(FaultKind::TooManyNames, "more than " +
                                                  std::to_string(ProcessList::kMostNamed) +
                                                  " outputs are named; name fewer");
    }
    return outputs;
  }

  std::size_t AddAssembly(std::string_view name) {
    const std::size_t item = partCount_ + list_.assemblies.size();
    list_.assemblies.emplace_back(name);
    items_.Add({name}, item);
    return item;
  }

  void CheckTree() {
    tree_.resize(list_.activities.size());
    for (std::size_t i = 0; i < list_.activities.size(); ++i) {
      if (list_.activities[i].parent) tree_[*list_.activities[i].parent].push_back(i);
    }
    RefuseCycles(tree_, "the activity stands below itself", "; give one of them another parent");
    StopAtFaults();
    const std::vector<std::size_t> levels = Levels(tree_);
    const auto deepest = std::max_element(levels.begin(), levels.end());
    if (deepest == levels.end() || *deepest <= ProcessList::kMostLevels) return;
    faults_.Add(list_.activities[static_cast<std::size_t>(deepest - levels.begin())].line,
                FaultKind::Cycle,
                "the activity stands more than " + std::to_string(ProcessList::kMostLevels) +
                    " levels deep; give it a parent further up");
  }

  void CheckFlows() {
    Graph next(list_.activities.size());
    for (const ProcessFlow& flow : list_.flows) next[flow.from].push_back(flow.to);
    RefuseCycles(next, "the flow runs in a circle", "; take one of these flows out");
  }

  void RefuseCycles(const Graph& graph, const std::string& what, const std::string& remedy) {
    for (const std::vector<std::size_t>& cycle : FindCycles(graph)) {
      std::string names;
      for (const std::size_t i : cycle) {
        names += Quoted(list_.activities[i].data.key) + " (line " +
                 std::to_string(list_.activities[i].line) + "), ";
      }
      const ActivityRow& first = list_.activities[cycle.front()];
      faults_.Add(first.line, FaultKind::Cycle,
                  what + ": " + names + "then " + Quoted(first.data.key) + " again" + remedy);
    }
  }

  ListReader reader_;
  ProcessList list_;
  RowFaults faults_;
  std::unordered_map<std::string, long> lines_;
  std::vector<Links> links_;
  std::size_t partCount_;
  // Parts, then assemblies.
  NameIndex items_;
  // For each activity those below it.
  Graph tree_;
};

}  // namespace

ProcessList ReadProcessList(std::istream& iStream, const std::string& iSource,
                            const PartsList& iParts, const std::string& iOrder) {
  return ProcessListImport(iStream, iSource, iParts, iOrder).Run();
}

}  // namespace biwplan
