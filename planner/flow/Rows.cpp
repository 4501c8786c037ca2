#include "planner/flow/Rows.h"

#include <algorithm>
#include <cmath>

namespace biwplan {

namespace {

constexpr std::size_t kFewColumns = 8;

class Arrangement {
 public:
  explicit Arrangement(const FlowChart& chart)
      : chart_(chart), next_(chart.boxes.size()), awaited_(chart.boxes.size()) {}

  Rows Run() {
    FindLeaders();
    for (const FlowChart::Arrow& arrow : chart_.arrows) {
      const std::size_t from = rows_.leader[arrow.from];
      const std::size_t to = rows_.leader[arrow.to];
      if (from == to) continue;
      next_[from].push_back(to);
      ++awaited_[to];
    }
    Sort();
    FindLevels();
    Break();
    return std::move(rows_);
  }

 private:
  // What has boxes inside leads, and so does what lies in none or is a station.
  void FindLeaders() {
    for (std::size_t i = 0; i < chart_.boxes.size(); ++i) {
      const FlowChart::Box& box = chart_.boxes[i];
      const bool leads =
          chart_.around[i] == FlowChart::kNone || !box.inner.empty() || box.activity->IsStation();
      rows_.leader.push_back(leads ? i : chart_.around[i]);
    }
  }

  bool Leads(std::size_t box) const { return rows_.leader[box] == box; }

  // Where flows run in a ring, the first in the document begins it.
  void Sort() {
    position_.assign(next_.size(), FlowChart::kNone);
    std::vector<std::size_t> ready;
    for (std::size_t i = 0; i < next_.size(); ++i) {
      if (Leads(i) && awaited_[i] == 0) ready.push_back(i);
    }
    std::reverse(ready.begin(), ready.end());
    for (std::size_t fallback = 0;;) {
      while (!ready.empty()) {
        const std::size_t box = ready.back();
        ready.pop_back();
        if (position_[box] == FlowChart::kNone) Place(box, ready);
      }
      while (fallback < next_.size() &&
             (!Leads(fallback) || position_[fallback] != FlowChart::kNone)) {
        ++fallback;
      }
      if (fallback == next_.size()) return;
      Place(fallback, ready);
    }
  }

  void Place(std::size_t box, std::vector<std::size_t>& ready) {
    position_[box] = sorted_.size();
    sorted_.push_back(box);
    for (const std::size_t next : next_[box]) {
      if (--awaited_[next] == 0) ready.push_back(next);
    }
  }

  // How many lead up to each at most; then each as late as what follows permits, so that what joins
  // a line stands beside it.
  void FindLevels() {
    levels_.assign(next_.size(), 0);
    for (const std::size_t box : sorted_) {
      for (const std::size_t next : next_[box]) {
        if (IsForward(box, next)) levels_[next] = std::max(levels_[next], levels_[box] + 1);
      }
    }
    for (auto box = sorted_.rbegin(); box != sorted_.rend(); ++box) {
      std::size_t latest = FlowChart::kNone;
      for (const std::size_t next : next_[*box]) {
        if (IsForward(*box, next)) latest = std::min(latest, levels_[next] - 1);
      }
      if (latest != FlowChart::kNone) levels_[*box] = latest;
    }
    SpreadLoose();
  }

  bool IsForward(std::size_t from, std::size_t to) const { return position_[from] < position_[to]; }

  // What no arrow touches stands side by side, or where the first of what is inside it stands.
  void SpreadLoose() {
    std::vector<bool> isTouched(next_.size());
    for (std::size_t box = 0; box < next_.size(); ++box) {
      for (const std::size_t next : next_[box]) isTouched[box] = isTouched[next] = true;
    }
    std::size_t level = 0;
    for (const std::size_t box : sorted_) {
      if (!isTouched[box] && !LeadsOthers(box)) levels_[box] = level++;
    }
    for (std::size_t box = next_.size(); box-- > 0;) {
      if (!isTouched[box] && LeadsOthers(box)) levels_[box] = FirstLevelInside(box);
    }
  }

  bool LeadsOthers(std::size_t box) const {
    const std::vector<std::size_t>& inner = chart_.boxes[box].inner;
    return std::any_of(inner.begin(), inner.end(), [this](std::size_t i) { return Leads(i); });
  }

  std::size_t FirstLevelInside(std::size_t box) const {
    std::size_t first = FlowChart::kNone;
    for (const std::size_t inner : chart_.boxes[box].inner) {
      if (Leads(inner)) first = std::min(first, levels_[inner]);
    }
    return first;
  }

  // A short line is one row; a long one makes rows of about the same length.
  void Break() {
    const std::size_t deepest =
        levels_.empty() ? 0 : *std::max_element(levels_.begin(), levels_.end());
    const auto square = static_cast<std::size_t>(std::sqrt(static_cast<double>(deepest)));
    rows_.count = deepest / std::max(kFewColumns, square) + 1;
    const std::size_t columns = deepest / rows_.count + 1;
    for (const std::size_t leader : rows_.leader) {
      rows_.places.push_back({levels_[leader] / columns, levels_[leader] % columns});
    }
  }

  const FlowChart& chart_;
  // Between leaders.
  std::vector<std::vector<std::size_t>> next_;
  std::vector<std::size_t> awaited_;
  std::vector<std::size_t> sorted_;
  std::vector<std::size_t> position_;
  std::vector<std::size_t> levels_;
  Rows rows_;
};

}  // namespace

Rows ArrangeInRows(const FlowChart& iChart) { return Arrangement(iChart).Run(); }

}  // namespace biwplan
