#include "planner/history/Line.h"

#include <algorithm>

#include "embedded/Error.h"
#include "planner/history/Damage.h"
#include "planner/history/Delta.h"
#include "planner/history/Digest.h"
#include "planner/history/TouchedNames.h"

namespace biwplan {

namespace {

std::string Across(const Step& step, const std::string& text, Direction direction) {
  const bool isForward = direction == Direction::Forward;
  if (DigestOf(text) != (isForward ? step.before : step.after)) {
    throw embedded::InputError("step " + std::to_string(step.number) +
                               " belongs to another state of the plan, which another program has "
                               "changed meanwhile; 'reload' takes that one");
  }
  std::string other = ApplyDelta(step.delta, text, direction);
  if (DigestOf(other) != (isForward ? step.after : step.before)) throw DamagedHistory();
  return other;
}

}  // namespace

std::optional<Step> Line::Last(std::int64_t iNumber) const {
  const auto found = std::find_if(own.rbegin(), own.rend(),
                                  [=](const Step& step) { return step.number <= iNumber; });
  if (found != own.rend()) return *found;
  return saved ? saved->Last(std::min(iNumber, branch)) : std::nullopt;
}

std::optional<Step> Line::Next(std::int64_t iNumber) const {
  if (saved && iNumber < branch) {
    if (std::optional<Step> step = saved->First(iNumber, branch)) return step;
  }
  const auto found =
      std::find_if(own.begin(), own.end(), [=](const Step& step) { return step.number > iNumber; });
  return found == own.end() ? std::nullopt : std::optional(*found);
}

std::string Undone(const Step& iStep, const std::string& iText) {
  return Across(iStep, iText, Direction::Back);
}

std::string Redone(const Step& iStep, const std::string& iText) {
  return Across(iStep, iText, Direction::Forward);
}

Step StepBetween(const std::string& iBefore, const std::string& iAfter) {
  const std::vector<Hunk> hunks = Compare(iBefore, iAfter);
  Step step;
  step.names = Pack(FindTouched(hunks, iBefore, iAfter));
  step.delta = PackDelta(hunks, iBefore, iAfter);
  step.before = DigestOf(iBefore);
  step.after = DigestOf(iAfter);
  return step;
}

}  // namespace biwplan
