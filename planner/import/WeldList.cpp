#include "planner/import/WeldList.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "planner/check/UnitHint.h"
#include "planner/import/ListReader.h"
#include "planner/import/Values.h"

namespace biwplan {

namespace {

enum Column : std::size_t {
  Id,
  X,
  Y,
  Z,
  Parts,
  Part1,
  Part2,
  Part3,
  Part4,
  Type,
  Rx,
  Ry,
  Rz,
  Diameter
};

std::vector<ColumnSpec> WeldColumns() {
  return {
      {"id",
       {"weldid", "id", "weldname", "name", "weldno", "weldnumber", "weld", "spotid", "spotname",
        "pointid", "pointname", "fastenerid", "fastener"},
       true},
      {"x", {"x", "posx", "xpos", "coordx", "xcoord", "positionx", "xposition", "px"}, true},
      {"y", {"y", "posy", "ypos", "coordy", "ycoord", "positiony", "yposition", "py"}, true},
      {"z", {"z", "posz", "zpos", "coordz", "zcoord", "positionz", "zposition", "pz"}, true},
      {"parts",
       {"parts", "partids", "part", "partnumbers", "partnames", "partlist", "joinedparts", "joins",
        "components", "sheets", "panels"},
       false,
       true},
      {"part1", {"part1", "partid1", "part1id", "sheet1"}},
      {"part2", {"part2", "partid2", "part2id", "sheet2"}},
      {"part3", {"part3", "partid3", "part3id", "sheet3"}},
      {"part4", {"part4", "partid4", "part4id", "sheet4"}},
      {"type", {"type", "weldtype", "fastenertype", "kind"}},
      {"rx", {"rx", "rotx", "anglex"}},
      {"ry", {"ry", "roty", "angley"}},
      {"rz", {"rz", "rotz", "anglez"}},
      {"diameter", {"diameter", "dia", "nuggetdiameter", "spotdiameter"}},
  };
}

// Names in a note.
constexpr std::size_t kMostNoted = 5;

class WeldListImport {
 public:
  WeldListImport(std::istream& stream, const std::string& source, const NameIndex& parts,
                 const WeldListOptions& options)
      : reader_(stream, source, WeldColumns(), options.columnOrder), parts_(parts) {
    list_.source = source;
    partsColumn_ = reader_.RequireOneOf({Parts, Part1});
  }

  WeldList Run() {
    while (reader_.Next(WeldList::kMostRows)) {
      id_.clear();
      const bool isRead = faults_.Try(reader_.Line(), [this] { ReadRow(); });
      if (!isRead) broken_.try_emplace(id_, reader_.Line());
    }
    DropBrokenSeams();
    list_.rowsRead = reader_.RowsRead();
    list_.dropped = std::move(faults_).Sorted();
    TakeNotes();
    return std::move(list_);
  }

 private:
  void ReadRow() {
    id_ = reader_.Text(Id).substr(0, kMostNameBytes);
    reader_.CheckLength();
    CheckName(reader_.FieldName(Id), reader_.Text(Id));
    const WeldType type = FindWeldType(reader_.Text(Type));
    const auto known = places_.find(id_);
    if (known != places_.end()) return AddPoint(list_.welds[known->second], type);

    WeldRow weld = NewWeld(type);
    if (!type.isKnown && unknownTypes_.size() < kMostNoted) unknownTypes_.insert(Quoted(type.name));
    places_.emplace(id_, list_.welds.size());
    list_.welds.push_back(std::move(weld));
  }

  WeldRow NewWeld(const WeldType& type) const {
    WeldRow weld;
    weld.line = reader_.Line();
    weld.id = id_;
    weld.type = type.name;
    weld.shape = type.shape;
    weld.position = Position();
    weld.angles = {reader_.NumberOr(Rx, 0), reader_.NumberOr(Ry, 0), reader_.NumberOr(Rz, 0)};
    weld.diameter = reader_.PositiveNumber(Diameter);
    weld.parts = JoinedParts();
    const bool joins = type.shape == WeldShape::Point || type.shape == WeldShape::Curve;
    if (joins && weld.parts.empty()) {
      reader_.RequireField(partsColumn_);
      throw RowError(FaultKind::MissingPart, "no part is named; a weld names the parts it joins");
    }
    if (type.shape == WeldShape::Curve) weld.points.push_back({weld.line, weld.position});
    return weld;
  }

  std::array<double, 3> Position() const {
    return {reader_.Number(X), reader_.Number(Y), reader_.Number(Z)};
  }

  std::vector<std::size_t> JoinedParts() const {
    std::vector<std::size_t> parts;
    for (const Column column : {Parts, Part1, Part2, Part3, Part4}) {
      for (const std::string_view text : reader_.Texts(column)) {
        parts_.Resolve(text, parts, WeldList::kMostParts);
      }
    }
    return parts;
  }

  void AddPoint(WeldRow& seam, const WeldType& type) const {
    const bool isSameType = reader_.Text(Type).empty() || seam.type == type.name;
    if (seam.shape != WeldShape::Curve || !isSameType) {
      throw RowError(FaultKind::DuplicateId, "the id " + Quoted(seam.id) + " stands on line " +
                                                 std::to_string(seam.line) +
                                                 " already; give each weld an id of its own");
    }
    const std::vector<std::size_t> parts = JoinedParts();
    if (!parts.empty() && parts != seam.parts) {
      throw RowError(FaultKind::BrokenSeam,
                     "this point of the seam " + Quoted(seam.id) + " joins other parts than line " +
                         std::to_string(seam.line) + "; repeat its parts or leave them empty");
    }
    seam.points.push_back({reader_.Line(), Position()});
  }

  // A seam with a point missing would lie elsewhere, so it is kept whole or not at all.
  void DropBrokenSeams() {
    std::erase_if(list_.welds, [this](const WeldRow& weld) {
      if (weld.shape != WeldShape::Curve) return false;
      const std::string reason = WhyBroken(weld);
      if (reason.empty()) return false;
      for (const SeamPoint& point : weld.points) {
        faults_.Add(point.line, FaultKind::BrokenSeam, reason);
      }
      return true;
    });
  }

  std::string WhyBroken(const WeldRow& seam) const {
    const auto broken = broken_.find(seam.id);
    if (broken != broken_.end()) {
      return "the point of the seam " + Quoted(seam.id) + " on line " +
             std::to_string(broken->second) + " cannot be used; a seam needs each of its points";
    }
    if (seam.points.size() > 1) return {};
    return "the seam " + Quoted(seam.id) +
           " has one point; it needs two or more, each a row with the same id";
  }

  void TakeNotes() {
    list_.notes = reader_.Notes();
    const auto single =
        std::count_if(list_.welds.begin(), list_.welds.end(), [](const WeldRow& weld) {
          return weld.shape != WeldShape::Locator && weld.shape != WeldShape::Clamp &&
                 weld.parts.size() == 1;
        });
    NoteUnit();
    if (single > 0) Note("welds that name one part alone: " + std::to_string(single));
    if (unknownTypes_.empty()) return;
    std::string names;
    for (const std::string& name : unknownTypes_) names += (names.empty() ? "" : ", ") + name;
    Note("types not known, kept for point welds: " + names);
  }

  void NoteUnit() {
    std::vector<std::array<double, 3>> points;
    for (const WeldRow& weld : list_.welds) {
      points.push_back(weld.position);
      for (const SeamPoint& point : weld.points) points.push_back(point.position);
    }
    const std::string hint = UnitHint(points);
    if (!hint.empty()) Note(hint);
  }

  void Note(const std::string& text) { list_.notes.push_back(list_.source + ": " + text); }

  ListReader reader_;
  const NameIndex& parts_;
  std::size_t partsColumn_ = Parts;
  WeldList list_;
  RowFaults faults_;
  std::unordered_map<std::string, std::size_t> places_;
  // Ids of rows that could not be used, with the first such line.
  std::unordered_map<std::string, long> broken_;
  std::string id_;
  std::set<std::string> unknownTypes_;
};

// "52 point welds, 2 seams".
std::string CountByShape(const std::vector<WeldRow>& welds) {
  constexpr std::array<std::string_view, 4> kNames = {"point weld", "seam", "locating point",
                                                      "clamping point"};
  std::array<std::size_t, kNames.size()> counts{};
  for (const WeldRow& weld : welds) ++counts[static_cast<std::size_t>(weld.shape)];
  std::string text;
  for (std::size_t shape = 0; shape < kNames.size(); ++shape) {
    const bool isWeld = shape < 2;
    if (counts[shape] == 0 && !isWeld) continue;
    text += (text.empty() ? "" : ", ") + std::to_string(counts[shape]) + ' ' +
            std::string(kNames[shape]) + (counts[shape] == 1 ? "" : "s");
  }
  return text;
}

}  // namespace

std::size_t WeldList::CountWelds() const {
  return static_cast<std::size_t>(std::count_if(welds.begin(), welds.end(), [](const auto& weld) {
    return weld.shape == WeldShape::Point || weld.shape == WeldShape::Curve;
  }));
}

std::string WeldList::Summary() const {
  std::string text = source + ": " + std::to_string(rowsRead) + " rows read, " +
                     std::to_string(rowsRead - dropped.size()) + " kept (" + CountByShape(welds) +
                     "), " + std::to_string(dropped.size()) + " dropped";
  std::map<FaultKind, std::size_t> reasons;
  for (const RowFault& fault : dropped) ++reasons[fault.kind];
  std::string_view lead = ": ";
  for (const auto& [kind, count] : reasons) {
    text += std::string(lead) + std::to_string(count) + ' ' + std::string(Describe(kind));
    lead = ", ";
  }
  return text;
}

WeldList ReadWeldList(std::istream& iStream, const std::string& iSource, const NameIndex& iParts,
                      const WeldListOptions& iOptions) {
  WeldList list = WeldListImport(iStream, iSource, iParts, iOptions).Run();
  if (iOptions.isStrict) RefuseFaults(iSource, list.rowsRead, list.dropped);
  return list;
}

}  // namespace biwplan
