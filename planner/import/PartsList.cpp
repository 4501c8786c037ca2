#include "planner/import/PartsList.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "planner/import/Colour.h"
#include "planner/import/Graph.h"
#include "planner/import/ListReader.h"
#include "planner/import/Values.h"
#include "planner/scene/MeshFile.h"

namespace biwplan {

namespace {

enum Column : std::size_t {
  Id,
  Number,
  Name,
  Parent,
  Reference,
  ColourText,
  XMin,
  YMin,
  ZMin,
  XMax,
  YMax,
  ZMax,
  Geometry,
  Mesh,
  X,
  Y,
  Z,
  Rx,
  Ry,
  Rz
};

std::vector<ColumnSpec> PartColumns() {
  return {
      {"id", {"id", "partid", "key", "instanceid"}},
      {"number", {"number", "partnumber", "partno", "partnr", "part", "no", "nr"}},
      {"name", {"name", "partname", "label", "description", "designation"}},
      {"parent", {"parent", "parentid", "parentnumber", "assembly", "parentpart", "partof"}},
      {"instance_of", {"instanceof", "reference", "referenceid", "referencenumber", "ref"}},
      {"colour", {"colour", "color", "rgb"}},
      {"xmin", {"xmin", "minx", "boxxmin"}},
      {"ymin", {"ymin", "miny", "boxymin"}},
      {"zmin", {"zmin", "minz", "boxzmin"}},
      {"xmax", {"xmax", "maxx", "boxxmax"}},
      {"ymax", {"ymax", "maxy", "boxymax"}},
      {"zmax", {"zmax", "maxz", "boxzmax"}},
      {"geometry", {"geometry", "geometryfile", "shape", "file"}},
      {"mesh", {"mesh", "meshfile", "stl", "obj"}},
      {"x", {"x", "posx", "xpos", "px"}},
      {"y", {"y", "posy", "ypos", "py"}},
      {"z", {"z", "posz", "zpos", "pz"}},
      {"rx", {"rx", "rotx", "anglex"}},
      {"ry", {"ry", "roty", "angley"}},
      {"rz", {"rz", "rotz", "anglez"}},
  };
}

class PartsListImport {
 public:
  PartsListImport(std::istream& stream, const std::string& source, const std::string& order)
      : reader_(stream, source, PartColumns(), order) {
    list_.source = source;
    reader_.RequireOneOf({Id, Number, Name});
  }

  PartsList Run() {
    while (reader_.Next(PartsList::kMostRows)) {
      faults_.Try(reader_.Line(), [this] { ReadRow(); });
    }
    JoinRows();
    RefuseFaults(list_.source, reader_.RowsRead(), std::move(faults_).Sorted());
    CheckTree();
    list_.notes = reader_.Notes();
    return std::move(list_);
  }

 private:
  struct Links {
    std::string parent;
    std::string reference;
  };

  // The part counts as known even where the rest of its row is wrong, or other rows would be
  // blamed for naming it.
  void ReadRow() {
    PartRow& part = Append();
    reader_.CheckLength();
    part.colour = ParseColour(reader_.Text(ColourText));
    part.box = Box();
    part.geometry = reader_.Text(Geometry);
    part.mesh = MeshPath();
    for (std::size_t i = 0; i < part.position.size(); ++i) {
      part.position[i] = reader_.NumberOr(X + i, 0);
    }
  }

  PartRow& Append() {
    PartRow part;
    part.line = reader_.Line();
    part.number = OptionalName(Number);
    part.name = OptionalName(Name);
    part.key = OptionalName(Id);
    if (part.key.empty()) part.key = part.number.empty() ? part.name : part.number;
    CheckName(reader_.FieldName(reader_.Has(Id) ? Id : Number), part.key);
    const auto [first, isNew] = lines_.try_emplace(part.key, part.line);
    if (!isNew) {
      throw RowError(FaultKind::DuplicateId,
                     "the part " + Quoted(part.key) + " stands on line " +
                         std::to_string(first->second) +
                         " already; give each part an identifier of its own, in a column id");
    }
    list_.parts.push_back(std::move(part));
    links_.push_back({std::string(reader_.Text(Parent)), std::string(reader_.Text(Reference))});
    return list_.parts.back();
  }

  std::string OptionalName(Column column) const {
    const std::string_view text = reader_.Text(column);
    return std::string(text.empty() ? text : CheckName(reader_.FieldName(column), text));
  }

  // Beside the list, unless the path begins at the root.
  std::filesystem::path MeshPath() const {
    const std::string_view name = reader_.Text(Mesh);
    if (name.empty()) return {};
    std::filesystem::path file = std::filesystem::path(list_.source).parent_path() / name;
    if (IsMeshFile(file)) return file;
    throw RowError(FaultKind::BadText,
                   "mesh is " + Quoted(name) + "; it must be the name of a file in .stl or .obj");
  }

  std::optional<PartRow::Box> Box() const {
    const std::vector<double> sides = reader_.NumbersOrNone({XMin, YMin, ZMin, XMax, YMax, ZMax});
    if (sides.empty()) return std::nullopt;
    PartRow::Box box{{sides[0], sides[1], sides[2]}, {sides[3], sides[4], sides[5]}};
    for (std::size_t axis = 0; axis < 3; ++axis) {
      if (box.least[axis] <= box.most[axis]) continue;
      throw RowError(FaultKind::BadNumber,
                     std::string(reader_.FieldName(XMin + axis)) + " is greater than " +
                         std::string(reader_.FieldName(XMax + axis)) + "; exchange them");
    }
    return box;
  }

  void JoinRows() {
    const NameIndex index = list_.Index();
    for (std::size_t i = 0; i < list_.parts.size(); ++i) {
      PartRow& part = list_.parts[i];
      faults_.Try(part.line, [&] {
        if (!links_[i].parent.empty()) part.parent = index.Require(links_[i].parent);
        if (!links_[i].reference.empty()) part.reference = index.Require(links_[i].reference);
      });
    }
    for (const PartRow& part : list_.parts) {
      RefuseInstance(part.line, part.parent, "has parts of its own only through its reference");
      RefuseInstance(part.line, part.reference, "is not what others are instances of");
    }
  }

  void RefuseInstance(long line, std::optional<std::size_t> named, const std::string& why) {
    if (!named || !list_.parts[*named].reference) return;
    faults_.Add(line, FaultKind::DanglingReference,
                Quoted(list_.parts[*named].key) + " is an instance and " + why + "; name " +
                    Quoted(list_.parts[*list_.parts[*named].reference].key));
  }

  // What a part contains: its children, or for an instance those of its reference.
  Graph Containment() const {
    Graph below(list_.parts.size());
    for (std::size_t i = 0; i < list_.parts.size(); ++i) {
      if (list_.parts[i].parent) below[*list_.parts[i].parent].push_back(i);
      if (list_.parts[i].reference) below[i].push_back(*list_.parts[i].reference);
    }
    return below;
  }

  void CheckTree() {
    const Graph below = Containment();
    for (const std::vector<std::size_t>& cycle : FindCycles(below)) RefuseCycle(cycle);
    RefuseFaults(list_.source, reader_.RowsRead(), std::move(faults_).Sorted());
    CheckSize(below);
    RefuseFaults(list_.source, reader_.RowsRead(), std::move(faults_).Sorted());
    list_.order = SortNodes(BuildOrder());
  }

  void RefuseCycle(const std::vector<std::size_t>& cycle) {
    std::string names;
    for (const std::size_t i : cycle) {
      names += Quoted(list_.parts[i].key) + " (line " + std::to_string(list_.parts[i].line) +
               "), which contains ";
    }
    const PartRow& first = list_.parts[cycle.front()];
    faults_.Add(first.line, FaultKind::Cycle,
                "the part contains itself: " + names + Quoted(first.key) +
                    " again; give one of them another parent or reference");
  }

  void CheckSize(const Graph& below) {
    const std::vector<std::size_t> levels = Levels(below);
    const auto deepest = std::max_element(levels.begin(), levels.end());
    if (deepest != levels.end() && *deepest > PartsList::kMostLevels) {
      RefuseSize(deepest - levels.begin(), "stands deeper in the tree than the ",
                 PartsList::kMostLevels, " levels");
    }
    const std::vector<std::size_t> shown = CountShown(below);
    std::size_t all = 0;
    for (std::size_t i = 0; i < shown.size(); ++i) {
      if (!list_.parts[i].parent) all += shown[i];
    }
    if (all <= PartsList::kMostShown) return;
    RefuseSize(std::max_element(shown.begin(), shown.end()) - shown.begin(),
               "brings the tree to more than the ", PartsList::kMostShown, " parts");
  }

  void RefuseSize(std::ptrdiff_t part, const char* what, std::size_t most, const char* unit) {
    const PartRow& row = list_.parts[static_cast<std::size_t>(part)];
    faults_.Add(row.line, FaultKind::Cycle,
                "the part " + Quoted(row.key) + ' ' + what + std::to_string(most) + unit +
                    " that are allowed, parts of instances included; take parts out");
  }

  // Parts below and including each part.
  static std::vector<std::size_t> CountShown(const Graph& below) {
    const std::vector<std::size_t> sorted = SortNodes(below);
    std::vector<std::size_t> shown(below.size(), 1);
    for (auto node = sorted.rbegin(); node != sorted.rend(); ++node) {
      for (const std::size_t next : below[*node]) {
        shown[*node] = std::min(shown[*node] + shown[next], PartsList::kMostShown + 1);
      }
    }
    return shown;
  }

  Graph BuildOrder() const {
    Graph next(list_.parts.size());
    for (std::size_t i = 0; i < list_.parts.size(); ++i) {
      if (list_.parts[i].parent) next[*list_.parts[i].parent].push_back(i);
      if (list_.parts[i].reference) next[*list_.parts[i].reference].push_back(i);
    }
    return next;
  }

  ListReader reader_;
  PartsList list_;
  RowFaults faults_;
  std::unordered_map<std::string, long> lines_;
  // For each part the names of its parent and its reference.
  std::vector<Links> links_;
};

}  // namespace

NameIndex PartsList::Index() const {
  NameIndex index({"part", "parts", "parts list", FaultKind::MissingPart});
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const PartRow& part = parts[i];
    index.Add({part.key, part.number, part.name}, i);
  }
  return index;
}

PartsList ReadPartsList(std::istream& iStream, const std::string& iSource,
                        const std::string& iOrder) {
  return PartsListImport(iStream, iSource, iOrder).Run();
}

}  // namespace biwplan
