#include "planner/check/WeldPlaces.h"

#include <algorithm>
#include <map>
#include <utility>

#include "host/values/Each.h"
#include "planner/check/LoadedParts.h"
#include "planner/scene/ActivityOrder.h"
#include "services/TuvBIWServices.h"

namespace biwplan {

namespace {

using embedded::Activity;
using Parts = std::vector<ZefBaseUnknown*>;

// Questions that are asked together, which bounds the memory.
constexpr std::size_t kMostQuestions = 1'000'000;

// Welds of one kind that join the same parts.
struct Stack {
  Parts parts;
  std::vector<std::size_t> welds;
  const Activity* place = nullptr;
};

Parts PartsOf(const ZefBaseUnknown_var& weld) {
  ZefListValZefBaseUnknown_var joined;
  TuvIBIWFastener_var(weld)->GetJointedParts(joined);
  Parts parts;
  for (const auto& part : Each<ZefBaseUnknown>(joined)) parts.push_back(part.Get());
  std::sort(parts.begin(), parts.end());
  return parts;
}

std::vector<Stack> StacksOf(const std::vector<ZefBaseUnknown_var>& welds) {
  std::vector<Stack> stacks;
  std::map<std::pair<bool, Parts>, std::size_t> known;
  for (std::size_t i = 0; i < welds.size(); ++i) {
    const std::pair key(static_cast<bool>(TuvISpotWeld_var(welds[i])), PartsOf(welds[i]));
    const auto [stack, isNew] = known.emplace(key, stacks.size());
    if (isNew) stacks.push_back({key.second, {}});
    stacks[stack->second].welds.push_back(i);
  }
  return stacks;
}

// Tries stacks at activities, many at a time.
class Trials {
 public:
  explicit Trials(embedded::Document& document) : document_(document) {}

  void Add(Stack& stack, Activity& activity) {
    trials_.push_back({&stack, &activity});
    for (ZefBaseUnknown* const part : stack.parts) {
      questions_.push_back({&activity, part});
    }
    if (questions_.size() >= kMostQuestions) Run();
  }

  void Run() {
    const std::vector<bool> answers = AreLoaded(document_, questions_);
    auto answer = answers.begin();
    for (const auto& [stack, activity] : trials_) {
      const auto end = answer + static_cast<std::ptrdiff_t>(stack->parts.size());
      const bool fits = std::find(answer, end, false) == end;
      if (fits && !stack->place) stack->place = activity;
      answer = end;
    }
    trials_.clear();
    questions_.clear();
  }

 private:
  embedded::Document& document_;
  std::vector<std::pair<Stack*, const Activity*>> trials_;
  std::vector<LoadedQuestion> questions_;
};

}  // namespace

std::vector<const Activity*> FirstPlaces(embedded::Document& iDocument,
                                         const std::vector<ZefBaseUnknown_var>& iWelds) {
  if (iWelds.empty()) return {};
  std::vector<Stack> stacks = StacksOf(iWelds);
  std::vector<std::pair<Activity*, ZefISPPActivity_var>> order;
  for (const Activity* const activity : InProcessOrder(iDocument)) {
    Activity* const place = iDocument.FindActivity(activity->Key());
    order.emplace_back(place, place->Identity());
  }
  Trials trials(iDocument);
  for (Stack& stack : stacks) {
    const ZefBaseUnknown_var& weld = iWelds[stack.welds.front()];
    for (const auto& [activity, handle] : order) {
      const bool takesWelds = activity->Data().task != embedded::ActivityData::Task::None;
      if (takesWelds && TuvBIWServices::IsValidWeldForActivity(weld, handle) != 0) {
        trials.Add(stack, *activity);
      }
    }
  }
  trials.Run();
  std::vector<const Activity*> places(iWelds.size());
  for (const Stack& stack : stacks) {
    for (const std::size_t weld : stack.welds) places[weld] = stack.place;
  }
  return places;
}

}  // namespace biwplan
