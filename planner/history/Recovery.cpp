#include <algorithm>
#include <utility>

#include "embedded/Error.h"
#include "planner/history/Digest.h"
#include "planner/history/History.h"

namespace biwplan {

namespace {

std::string Counted(std::size_t steps) {
  return std::to_string(steps) + (steps == 1 ? " step" : " steps");
}

}  // namespace

std::vector<History::Lost> History::FindLost() {
  Attach();
  std::vector<Lost> lost;
  Attempt([&] {
    if (!file_) return;
    for (Work& work : file_->AllWork()) {
      if (work.id == work_.id || !work.isShell || IsAlive(work.worker)) continue;
      const std::int64_t saved = std::min(work.current, work.branch);
      const std::int64_t count =
          file_->Count(work.id, 0, work.current).steps +
          file_->Count(kSaved, std::min(saved, work.base), std::max(saved, work.base)).steps;
      if (work.digest == work.baseDigest) continue;
      lost.push_back({std::move(work), static_cast<std::size_t>(count)});
    }
  });
  return lost;
}

void History::TellLost() {
  const std::vector<Lost> all = FindLost();
  for (const Lost& lost : all) {
    const std::string which = all.size() == 1 ? "" : " " + std::to_string(lost.work.id);
    say_(Counted(lost.steps) + " of " + lost.work.worker.user + ", the last at " +
         TimeInWords(lost.work.at) + " UTC, " + (lost.steps == 1 ? "was" : "were") +
         " not saved; 'recover" + which + "' brings " + (lost.steps == 1 ? "it" : "them") +
         " back, 'discard" + which + "' drops " + (lost.steps == 1 ? "it" : "them"));
  }
}

Line History::LineOf(const Work& work) {
  Line line{file_.get(), work.branch, file_->StepsOf(work.id)};
  // The same plan may have got another number meanwhile.
  if (work.baseDigest == work_.baseDigest && work.branch == work.base) line.branch = work_.base;
  if (line.own.empty()) line.branch = kLastStep;
  return line;
}

History::Move History::WayTo(const Lost& iLost, bool iOverwrites) {
  Attach();
  const Work& work = iLost.work;
  if (!IsSaved()) {
    throw embedded::InputError("there are changes here that are not saved; 'save' or 'undo' first");
  }
  const bool fits = work.baseDigest == work_.baseDigest;
  if (!fits && !iOverwrites) {
    throw embedded::InputError(
        "the plan was changed after these steps; 'recover --overwrite' puts the plan with them in "
        "place of it as one step, which 'undo' takes back");
  }
  Move move{{}, fits ? work_.base : work.base, text_};
  const bool isRead = Attempt([&] {
    if (!fits) move.text = TextAt(work.base);
    const Line line = LineOf(work);
    for (std::int64_t lowest = std::min(line.branch, work.current); move.to > lowest;) {
      const std::optional<Step> step = line_.saved->Last(move.to);
      if (!step || step->number <= lowest) break;
      move.text = Undone(*step, move.text);
      move.to = step->number - 1;
      move.steps.push_back(*step);
    }
    while (move.to < work.current) {
      std::optional<Step> step = line.Next(move.to);
      if (!step || step->number > work.current) break;
      move.text = Redone(*step, move.text);
      move.to = step->number;
      move.steps.push_back(std::move(*step));
    }
  });
  if (!isRead || DigestOf(move.text) != work.digest) {
    throw embedded::InputError(
        "the plan to which these steps belong is no longer kept; 'discard' " +
        std::string("drops them"));
  }
  return move;
}

void History::Recover(const Lost& iLost, Move iMove) {
  if (iLost.work.baseDigest != work_.baseDigest) {
    Record("recover", std::move(iMove.text));
    return Discard(iLost);
  }
  Forsake();
  line_ = LineOf(iLost.work);
  work_.id = iLost.work.id;
  isKept_ = true;
  Take({{}, iLost.work.current, std::move(iMove.text)});
}

void History::Discard(const Lost& iLost) {
  Attempt([&] {
    Transaction transaction = file_->Begin();
    file_->DropWork(iLost.work.id);
    transaction.Commit();
  });
}

void History::Forsake() {
  if (work_.id == 0) return;
  Attempt([this] {
    Transaction transaction = file_->Begin();
    file_->DropWork(work_.id);
    transaction.Commit();
  });
  work_.id = 0;
  isKept_ = false;
}

History::Bounds History::GetBounds() {
  Attach();
  Bounds bounds{PlanState().mostSteps, 0, 0};
  Attempt([&] {
    if (!file_) return;
    const auto [steps, bytes] = file_->Count(kSaved);
    bounds = {file_->State().mostSteps, steps, bytes};
  });
  return bounds;
}

void History::SetBound(std::int64_t iMostSteps) {
  Attach();
  if (!IsSaved()) {
    throw embedded::InputError("there are changes that are not saved; 'save' or 'undo' first");
  }
  const bool isSet = Attempt([&] {
    Open(Database::Access::Create);
    Forsake();
    Transaction transaction = file_->Begin();
    PlanState state = file_->State();
    state.mostSteps = iMostSteps;
    if (iMostSteps == 0) {
      file_->Clear();
      state.pointer = state.origin = 0;
      state.digest.clear();
    }
    file_->SetState(state);
    if (!state.digest.empty()) file_->Trim(text_);
    transaction.Commit();
    file_->Shrink();
    BeAt(file_->State().pointer);
  });
  if (!isSet) throw embedded::InputError("the history's bound cannot be kept");
}

}  // namespace biwplan
