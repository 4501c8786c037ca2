#include "planner/flow/FlowChart.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "embedded/model/ItemLink.h"
#include "host/component/Interruption.h"
#include "planner/check/AssemblyCheck.h"
#include "planner/flow/Conflicts.h"
#include "planner/names/Items.h"
#include "planner/names/Names.h"
#include "planner/report/Describe.h"

namespace biwplan {

namespace {

using embedded::Activity;
using embedded::MfgAssembly;
using embedded::ObjectAs;

class Drawing {
 public:
  Drawing(embedded::Document& document, const Activity& top) : document_(document), top_(top) {}

  FlowChart Run() {
    for (const Activity* const activity : Below(top_)) {
      if (!activity->IsRoot() || IsBusy(*activity)) AddBox(*activity);
    }
    Nest();
    for (const FlowChart::Box& box : chart_.boxes) AddFlows(*box.activity);
    for (const FlowChart::Box& box : chart_.boxes) {
      Interruption::Check();
      HandOn(*box.activity);
    }
    MarkConflicts();
    CountWelds();
    return std::move(chart_);
  }

 private:
  // The activity and what is nested in it, each before what is nested in itself.
  static std::vector<const Activity*> Below(const Activity& top) {
    std::vector<const Activity*> found;
    std::vector<const Activity*> open{&top};
    while (!open.empty()) {
      const Activity* const activity = open.back();
      open.pop_back();
      found.push_back(activity);
      open.insert(open.end(), activity->Children().rbegin(), activity->Children().rend());
    }
    return found;
  }

  static bool IsBusy(const Activity& root) {
    return !root.Previous().empty() || !root.Next().empty() || !root.Outputs().empty() ||
           WeldsOn(root).Size() > 0;
  }

  void AddBox(const Activity& activity) {
    boxes_.emplace(&activity, chart_.boxes.size());
    FlowChart::Box box{.activity = &activity};
    box.welds = static_cast<std::size_t>(WeldsOn(activity).Size());
    std::vector<const ZefBaseUnknown*> parts;
    activity.Links().ForEach([&](const embedded::ItemLink& link) {
      const bool isPart = ObjectAs<embedded::Product>(link.Item().Get()) != nullptr;
      if (isPart && link.GetSelector() == embedded::ItemLink::FirstAssigned) {
        parts.push_back(link.Item().Get());
      }
    });
    std::sort(parts.begin(), parts.end());
    box.parts = static_cast<std::size_t>(std::unique(parts.begin(), parts.end()) - parts.begin());
    for (const auto& output : activity.Outputs()) {
      const auto* const assembly = ObjectAs<MfgAssembly>(output->OwnProduct().Get());
      if (assembly) box.outputs.push_back(TitleOf(*assembly));
    }
    chart_.boxes.push_back(std::move(box));
  }

  std::size_t BoxOf(const Activity* activity) const {
    const auto found = boxes_.find(activity);
    return found == boxes_.end() ? FlowChart::kNone : found->second;
  }

  void Nest() {
    for (std::size_t i = 0; i < chart_.boxes.size(); ++i) {
      const std::size_t outer = BoxOf(chart_.boxes[i].activity->Parent());
      chart_.around.push_back(outer);
      (outer == FlowChart::kNone ? chart_.outermost : chart_.boxes[outer].inner).push_back(i);
    }
  }

  void AddFlows(const Activity& from) {
    for (const Activity* const next : from.Next()) {
      const std::size_t to = BoxOf(next);
      if (to != FlowChart::kNone) Arrow(BoxOf(&from), to, true);
    }
  }

  FlowChart::Arrow& Arrow(std::size_t from, std::size_t to, bool isFlow) {
    const auto [entry, isNew] = arrows_.try_emplace({from, to}, chart_.arrows.size());
    if (isNew) chart_.arrows.push_back({.from = from, .to = to, .isFlow = isFlow});
    return chart_.arrows[entry->second];
  }

  void HandOn(const Activity& maker) {
    for (const auto& output : maker.Outputs()) {
      const auto* const assembly = ObjectAs<MfgAssembly>(output->OwnProduct().Get());
      if (!assembly) continue;
      for (const Activity* const consumer : ConsumersOf(*assembly)) {
        if (BoxOf(consumer) == FlowChart::kNone) continue;
        std::vector<std::string>& titles = Way(maker, *consumer).assemblies;
        const std::string title = TitleOf(*assembly);
        if (std::find(titles.begin(), titles.end(), title) == titles.end()) titles.push_back(title);
      }
    }
  }

  // The flow from the maker, or what it is nested in, to the consumer, or what that is nested in;
  // without such a flow an arrow of its own.
  FlowChart::Arrow& Way(const Activity& maker, const Activity& consumer) {
    std::unordered_set<const Activity*> receivers;
    for (const Activity* to = &consumer; to; to = to->Parent()) receivers.insert(to);
    for (const Activity* from = &maker; from; from = from->Parent()) {
      for (const Activity* const next : from->Next()) {
        const auto found = arrows_.find({BoxOf(from), BoxOf(next)});
        if (found != arrows_.end() && receivers.contains(next)) {
          return chart_.arrows[found->second];
        }
      }
    }
    return Arrow(BoxOf(&maker), BoxOf(&consumer), false);
  }

  void MarkConflicts() {
    for (const FlowConflict& conflict : ConflictsOf(document_)) {
      const std::size_t box = BoxOf(conflict.activity);
      if (box == FlowChart::kNone) continue;
      chart_.boxes[box].conflicts.push_back(conflict.reason);
      for (const Activity* const other : conflict.towards) {
        if (BoxOf(other) != FlowChart::kNone) Way(*conflict.activity, *other).isConflict = true;
      }
    }
  }

  void CountWelds() {
    for (std::size_t i = chart_.boxes.size(); i-- > 0;) {
      const std::size_t outer = chart_.around[i];
      (outer == FlowChart::kNone ? chart_.welds : chart_.boxes[outer].welds) +=
          chart_.boxes[i].welds;
    }
    chart_.title = top_.Key();
    // What is on no activity belongs to the whole process alone.
    if (&top_ != document_.Root()) return;
    const ZefListValZefBaseUnknown_var welds = Names(document_).AllWelds();
    chart_.welds = static_cast<std::size_t>(welds.Size());
    for (int i = 1; i <= welds.Size(); ++i) {
      chart_.unassigned += ActivitiesOf(welds[i]).Size() == 0;
    }
  }

  embedded::Document& document_;
  const Activity& top_;
  FlowChart chart_;
  std::unordered_map<const Activity*, std::size_t> boxes_;
  std::map<std::pair<std::size_t, std::size_t>, std::size_t> arrows_;
};

}  // namespace

std::size_t CountStations(const FlowChart& iChart) {
  return static_cast<std::size_t>(
      std::count_if(iChart.boxes.begin(), iChart.boxes.end(),
                    [](const FlowChart::Box& box) { return box.activity->IsStation(); }));
}

std::size_t CountConflicts(const FlowChart& iChart) {
  std::size_t count = 0;
  for (const FlowChart::Box& box : iChart.boxes) count += box.conflicts.size();
  return count;
}

FlowChart ChartOf(embedded::Document& iDocument, const embedded::Activity& iTop) {
  return Drawing(iDocument, iTop).Run();
}

}  // namespace biwplan
