#include "planner/flow/FlowDot.h"

#include <algorithm>
#include <unordered_set>

#include "planner/flow/DotText.h"
#include "planner/flow/Rows.h"
#include "planner/report/Text.h"

namespace biwplan {

namespace {

using embedded::ActivityData;

constexpr std::size_t kBoxWidth = 24;
constexpr std::size_t kArrowWidth = 16;
constexpr std::size_t kMostTitles = 4;
constexpr char kRed[] = "#C00000";
constexpr char kGrey[] = "#5F6B76";

constexpr char kStyle[] =
    "  graph [rankdir=LR, nodesep=0.12, ranksep=0.3, pad=0.2, fontname=\"Helvetica\", "
    "fontsize=11, labelloc=t, labeljust=l];\n"
    "  node [shape=box, style=\"rounded,filled\", fillcolor=white, color=\"#8497A8\", "
    "fontname=\"Helvetica\", fontsize=10, margin=\"0.1,0.05\", height=0.3, width=1.1];\n"
    "  edge [fontname=\"Helvetica\", fontsize=9, color=\"#34495E\", arrowsize=0.7, dir=forward];\n";

class Writer {
 public:
  explicit Writer(const FlowChart& chart) : chart_(chart), rows_(ArrangeInRows(chart)) {
    for (const FlowChart::Arrow& arrow : chart.arrows) {
      handedOn_.insert(arrow.assemblies.begin(), arrow.assemblies.end());
    }
    columns_.resize(chart.boxes.size());
    for (std::size_t box = 0; box < chart.boxes.size(); ++box) {
      std::vector<std::size_t>& column = columns_[rows_.leader[box]];
      depths_.push_back(column.size());
      column.push_back(box);
    }
  }

  std::string Run() {
    dot_ = "digraph " + DotName(chart_.title) + " {\n" + kStyle + "  label=<" + Heading() + ">;\n";
    WriteBoxes();
    WriteRows();
    for (const FlowChart::Arrow& arrow : chart_.arrows) WriteArrow(arrow);
    return dot_ + "}\n";
  }

 private:
  std::string Name(std::size_t box) const { return DotName(chart_.boxes[box].activity->Key()); }

  bool IsCluster(std::size_t box) const {
    return chart_.boxes[box].activity->IsStation() || !chart_.boxes[box].inner.empty();
  }

  // Nesting is as deep as the process says, so nothing recurs.
  void WriteBoxes() {
    std::vector<std::size_t> open;
    for (std::size_t box = 0; box < chart_.boxes.size(); ++box) {
      while (!open.empty() && open.back() != chart_.around[box]) {
        open.pop_back();
        dot_ += "  }\n";
      }
      if (rows_.leader[box] != box) continue;
      if (!IsCluster(box)) {
        WriteNode(box);
        continue;
      }
      WriteStation(box);
      open.push_back(box);
    }
    for (std::size_t i = 0; i < open.size(); ++i) dot_ += "  }\n";
    if (chart_.boxes.empty()) dot_ += "  \"\" [shape=plain, label=\"nothing is planned yet\"];\n";
  }

  // The cluster, left open, with the station's own node and its operations below each other.
  void WriteStation(std::size_t station) {
    const FlowChart::Box& box = chart_.boxes[station];
    const bool isConflict = !box.conflicts.empty();
    dot_ += "  subgraph " + DotName("cluster " + box.activity->Key()) +
            " {\n    graph [label=\"\", " +
            "style=\"rounded,filled\", fillcolor=\"#EAF0F6\", margin=6, color=" +
            (isConflict ? DotName(kRed) + ", penwidth=2.5" : DotName("#8497A8")) + "];\n" +
            "    { rank=same;\n";
    const std::vector<std::size_t>& column = columns_[station];
    for (const std::size_t member : column) WriteNode(member);
    dot_ += "    }\n";
    for (std::size_t i = 1; i < column.size(); ++i) {
      dot_ += "    " + Name(column[i]) + " -> " + Name(column[i - 1]) + " [style=invis];\n";
    }
  }

  void WriteNode(std::size_t box) {
    const ActivityData& data = chart_.boxes[box].activity->Data();
    std::string look;
    if (IsCluster(box)) look = ", fillcolor=\"#C9D8E6\", penwidth=0";
    if (data.kind == ActivityData::Kind::Logical) look += ", style=\"filled,dashed\", penwidth=1";
    if (!chart_.boxes[box].conflicts.empty() && !IsCluster(box)) {
      look += ", color=" + DotName(kRed) + ", penwidth=2.5";
    }
    dot_ += "      " + Name(box) + " [label=<" + Label(chart_.boxes[box]) + ">" + look + "];\n";
  }

  std::string Label(const FlowChart::Box& box) const {
    const ActivityData& data = box.activity->Data();
    std::string label = "<b>" + DotLines(data.key, kBoxWidth) + "</b>";
    if (!data.label.empty() && data.label != data.key) {
      label += "<br/>" + DotLines(data.label, kBoxWidth);
    }
    std::string counts = Counted(box.welds, "weld");
    if (box.parts > 0) counts = Counted(box.parts, "part") + ", " + counts;
    label += "<br/>" + DotFont("point-size=\"9\" color=\"" + std::string(kGrey) + "\"", counts);
    if (data.kind == ActivityData::Kind::Logical) label += "<br/><i>logical</i>";
    for (const std::string& output : box.outputs) {
      if (!handedOn_.contains(output)) label += "<br/>makes " + DotLines(output, kBoxWidth);
    }
    for (const std::string& reason : box.conflicts) label += "<br/>" + InRed(reason, kBoxWidth);
    return label;
  }

  static std::string InRed(const std::string& text, std::size_t width) {
    return DotFont("color=\"" + std::string(kRed) + "\"", "<b>" + DotLines(text, width) + "</b>");
  }

  // Keeps the rows below each other, and in its column what no arrow holds there.
  void WriteRows() {
    if (chart_.boxes.empty()) return;
    std::vector<bool> isHeld(chart_.boxes.size());
    std::vector<bool> isPulled(chart_.boxes.size());
    for (const FlowChart::Arrow& arrow : chart_.arrows) {
      if (!Guides(arrow)) continue;
      isHeld[rows_.leader[arrow.to]] = true;
      isPulled[rows_.leader[arrow.from]] = true;
    }
    const std::string origin = Origin();
    dot_ += "  " + origin + " [style=invis, shape=point, width=0, ordering=out];\n";
    for (std::size_t row = 0; row < rows_.count; ++row) {
      for (std::size_t box = 0; box < chart_.boxes.size(); ++box) {
        const auto& [itsRow, column] = rows_.places[box];
        if (itsRow != row || rows_.leader[box] != box || isHeld[box]) continue;
        dot_ += "  " + origin + " -> " + Name(box) +
                " [style=invis, minlen=" + std::to_string(column + 1) +
                (isPulled[box] && column > 0 ? ", weight=0" : "") + "];\n";
      }
    }
  }

  // A name that no activity has.
  std::string Origin() const {
    std::string origin = "origin";
    const auto isTaken = [&origin](const FlowChart::Box& box) {
      return box.activity->Key() == origin;
    };
    while (std::any_of(chart_.boxes.begin(), chart_.boxes.end(), isTaken)) origin += '_';
    return DotName(origin);
  }

  // Whether the arrow leads from column to column, and not back or to another row.
  bool Guides(const FlowChart::Arrow& arrow) const {
    const Rows::Place& from = rows_.places[arrow.from];
    const Rows::Place& to = rows_.places[arrow.to];
    return from.row == to.row && from.column < to.column;
  }

  void WriteArrow(const FlowChart::Arrow& arrow) {
    std::string look = ArrowLook(arrow);
    if (!arrow.assemblies.empty()) look += ", label=<" + Titles(arrow) + ">";
    if (!arrow.isFlow) look += ", style=dashed";
    if (arrow.isConflict) look += ", color=" + DotName(kRed) + ", penwidth=2";
    if (look.starts_with(", ")) look.erase(0, 2);
    dot_ += "  " + Name(arrow.from) + " -> " + Name(arrow.to);
    dot_ += look.empty() ? ";\n" : " [" + look + "];\n";
  }

  std::string ArrowLook(const FlowChart::Arrow& arrow) const {
    if (rows_.leader[arrow.from] != rows_.leader[arrow.to]) {
      return Guides(arrow) ? ", weight=8" : ", constraint=false";
    }
    const bool isNext = depths_[arrow.from] + 1 == depths_[arrow.to];
    // Of a shorter arrowhead Graphviz draws the line only in part.
    return isNext ? ", weight=0, tailport=s, headport=n, arrowsize=1" : ", weight=0";
  }

  static std::string Titles(const FlowChart::Arrow& arrow) {
    std::string label;
    const std::size_t shown = std::min(arrow.assemblies.size(), kMostTitles);
    for (std::size_t i = 0; i < shown; ++i) {
      label += (i == 0 ? "" : "<br/>") + DotLines(arrow.assemblies[i], kArrowWidth);
    }
    const std::size_t rest = arrow.assemblies.size() - shown;
    return label + (rest == 0 ? "" : "<br/>and " + std::to_string(rest) + " more");
  }

  std::string Heading() const {
    std::string unassigned = std::to_string(chart_.unassigned) + " on no activity";
    if (chart_.unassigned > 0) unassigned = InRed(unassigned, kBoxWidth);
    const std::size_t conflicts = CountConflicts(chart_);
    const std::string found =
        conflicts == 0 ? "no conflicts" : InRed(Counted(conflicts, "conflict"), kBoxWidth);
    return "<table border=\"0\" cellborder=\"0\" cellspacing=\"5\">"
           "<tr><td align=\"left\" colspan=\"5\">" +
           DotFont("point-size=\"16\"", "<b>" + DotLabel(chart_.title) + "</b>") +
           "</td></tr><tr><td align=\"left\" colspan=\"5\">" +
           Counted(CountStations(chart_), "station") + ", " + Counted(chart_.welds, "weld") + ", " +
           unassigned + "; " + found + "</td></tr>" + Legend() + "</table>";
  }

  static std::string Legend() {
    return "<tr><td border=\"1\" style=\"rounded\" bgcolor=\"#C9D8E6\">station</td>"
           "<td border=\"1\" style=\"rounded\" bgcolor=\"white\">operation</td>"
           "<td>\u2192 flow, with the assembly that is handed on</td>"
           "<td>dashed: handed on without a flow</td><td>" +
           InRed("conflict", kBoxWidth) + "</td></tr>";
  }

  const FlowChart& chart_;
  const Rows rows_;
  std::unordered_set<std::string> handedOn_;
  // By leader what stands below each other, and for each box how far down.
  std::vector<std::vector<std::size_t>> columns_;
  std::vector<std::size_t> depths_;
  std::string dot_;
};

}  // namespace

std::string DotOf(const FlowChart& iChart) { return Writer(iChart).Run(); }

}  // namespace biwplan
