#include "planner/import/WeldList.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <utility>

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
        "components", "sheets", "panels"}},
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

class WeldListImport {
 public:
  WeldListImport(std::istream& stream, const std::string& source, const PartIndex& parts,
                 const WeldListOptions& options)
      : reader_(stream, source, WeldColumns(), options.columnOrder), parts_(parts) {
    list_.source = source;
    reader_.RequireOneOf({Parts, Part1});
  }

  WeldList Run() {
    while (reader_.Next(WeldList::kMostRows)) {
      id_.clear();
      try {
        ReadRow();
      } catch (const RowError& error) {
        Drop(reader_.Line(), error.Kind(), error.what());
        broken_.try_emplace(id_, reader_.Line());
      }
    }
    DropBrokenSeams();
    Finish();
    return std::move(list_);
  }

 private:
  void Drop(long line, FaultKind kind, std::string text) {
    list_.dropped.push_back({line, kind, std::move(text)});
  }

  void ReadRow() {
    id_ = reader_.Text(Id).substr(0, kMostNameBytes);
    reader_.CheckLength();
    CheckName(reader_.FieldName(Id), reader_.Text(Id));
    const WeldType& type = FindWeldType(reader_.Text(Type));
    const auto known = lines_.find(id_);
    if (known != lines_.end()) return AddPoint(list_.welds[known->second], type);

    WeldRow weld = NewWeld(type);
    lines_.emplace(id_, list_.welds.size());
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
    if (weld.parts.empty()) {
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
      parts_.Resolve(reader_.Text(column), parts);
    }
    return parts;
  }

  void AddPoint(WeldRow& seam, const WeldType& type) const {
    if (seam.shape == WeldShape::Point || seam.type != type.name) {
      throw RowError(FaultKind::DuplicateId, "the id " + Quoted(seam.id) + " already names a " +
                                                 std::string(seam.type) + " weld on line " +
                                                 std::to_string(seam.line) + "; ids are unique");
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
      if (weld.shape == WeldShape::Point) return false;
      const std::string reason = WhyBroken(weld);
      if (reason.empty()) return false;
      for (const SeamPoint& point : weld.points) Drop(point.line, FaultKind::BrokenSeam, reason);
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

  void Finish() {
    std::stable_sort(list_.dropped.begin(), list_.dropped.end(),
                     [](const RowFault& a, const RowFault& b) { return a.line < b.line; });
    list_.rowsRead = reader_.RowsRead();
    list_.notes = reader_.Notes();
    const auto single = std::count_if(list_.welds.begin(), list_.welds.end(),
                                      [](const WeldRow& weld) { return weld.parts.size() == 1; });
    if (single == 0) return;
    list_.notes.push_back(list_.source + ": " + std::to_string(single) +
                          " welds name one part alone");
  }

  ListReader reader_;
  const PartIndex& parts_;
  WeldList list_;
  std::unordered_map<std::string, std::size_t> lines_;
  // Ids of rows that could not be used, with the first such line.
  std::unordered_map<std::string, long> broken_;
  std::string id_;
};

}  // namespace

std::string WeldList::Summary() const {
  const auto seams = std::count_if(welds.begin(), welds.end(), [](const WeldRow& weld) {
    return weld.shape == WeldShape::Curve;
  });
  const auto points = static_cast<std::ptrdiff_t>(welds.size()) - seams;
  std::string text = source + ": " + std::to_string(rowsRead) + " rows read, " +
                     std::to_string(rowsRead - dropped.size()) + " kept (" +
                     std::to_string(points) + " welds at points, " + std::to_string(seams) +
                     " seams), " + std::to_string(dropped.size()) + " dropped";
  std::map<FaultKind, std::size_t> reasons;
  for (const RowFault& fault : dropped) ++reasons[fault.kind];
  std::string_view lead = ": ";
  for (const auto& [kind, count] : reasons) {
    text += std::string(lead) + std::to_string(count) + ' ' + std::string(Describe(kind));
    lead = ", ";
  }
  return text;
}

WeldList ReadWeldList(std::istream& iStream, const std::string& iSource, const PartIndex& iParts,
                      const WeldListOptions& iOptions) {
  WeldList list = WeldListImport(iStream, iSource, iParts, iOptions).Run();
  if (iOptions.isStrict) RefuseFaults(iSource, list.rowsRead, list.dropped);
  return list;
}

}  // namespace biwplan
