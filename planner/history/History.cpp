#include "planner/history/History.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

#include "embedded/Error.h"
#include "embedded/storage/FileReplacement.h"
#include "embedded/storage/JsonLimits.h"
#include "planner/history/Damage.h"
#include "planner/history/Digest.h"

namespace biwplan {

namespace fs = std::filesystem;

namespace {

// What is in no saved line.
constexpr std::int64_t kNowhere = -1;

}  // namespace

fs::path HistoryPath(const fs::path& iPlan) {
  const fs::path file = embedded::FollowLinks(iPlan);
  fs::path path = file;
  if (file.extension() == ".json") return path.replace_extension(".history");
  return path += ".history";
}

History::History(fs::path iPlan, Say iSay) : plan_(std::move(iPlan)), say_(std::move(iSay)) {
  work_.worker = ThisWorker();
}

History::~History() {
  if (work_.id == 0) return;
  try {
    if (IsSaved()) Forsake();
    if (work_.id == 0) return;
    // Whoever comes next need not wait for the process to end.
    Attempt([this] {
      work_.worker.since = "ended";
      Transaction transaction = file_->Begin();
      file_->Keep(work_);
      transaction.Commit();
    });
  } catch (const std::exception&) {
    // The end of the process says the same.
  }
}

bool History::Attempt(const std::function<void()>& action) {
  if (!isUsable_) return false;
  try {
    if (path_.empty()) path_ = HistoryPath(plan_);
    action();
    return true;
  } catch (const DamagedHistory&) {
    SetAside();
  } catch (const DatabaseFault& fault) {
    GiveUp("the history " + path_.string() + " " + fault.what() +
           "; the plan is worked on without it");
  } catch (const fs::filesystem_error& fault) {
    GiveUp(std::string("there is no history: ") + fault.code().message());
  }
  return false;
}

void History::GiveUp(const std::string& sentence) {
  isUsable_ = false;
  line_.saved = nullptr;
  file_.reset();
  say_(sentence);
}

void History::SetAside() {
  line_ = {};
  file_.reset();
  fs::path aside;
  for (int number = 1; aside.empty() || fs::exists(aside); ++number) {
    aside = path_;
    aside += ".damaged-" + std::to_string(number);
  }
  std::error_code error;
  fs::rename(path_, aside, error);
  if (error) return GiveUp("the history " + path_.string() + " is damaged; it is not used");
  fs::path journal = path_;
  fs::remove(journal += "-journal", error);
  say_("the history " + path_.string() + " is damaged or not one of biwplan; it is " +
       aside.filename().string() + " now, and a new one begins");
  work_.id = 0;
  isPending_ = false;
  BeAt(0);
}

std::string History::FileText() const {
  if (!fs::exists(plan_)) return {};
  return embedded::ReadWholeFile(plan_, embedded::JsonLimits::Current().bytes);
}

void History::Begin(std::string iText) {
  Forsake();
  line_.own.clear();
  text_ = std::move(iText);
  digest_ = work_.baseDigest = DigestOf(text_);
  hasBegun_ = true;
  isAttached_ = false;
  BeAt(0);
}

void History::BeAt(std::int64_t number) {
  work_.base = work_.current = number;
  line_.branch = number == kNowhere ? kNowhere : kLastStep;
  line_.own.clear();
}

void History::Open(Database::Access access) {
  line_.saved = file_.get();
  if (file_) return;
  const bool isNew = !fs::exists(path_);
  if (!isNew && !fs::is_regular_file(path_)) throw DatabaseFault("is no ordinary file");
  file_ = std::make_unique<HistoryFile>(path_, access);
  line_.saved = file_.get();
  if (isNew) TakeOverRights();
}

// Whoever may write the plan may write its history, as far as that can be had.
void History::TakeOverRights() const {
  struct stat plan {};
  if (::stat(plan_.c_str(), &plan) != 0) return;
  constexpr mode_t kReadAndWrite = 0666;
  if (::chown(path_.c_str(), static_cast<uid_t>(-1), plan.st_gid) != 0) return;
  if (::chown(path_.c_str(), plan.st_uid, plan.st_gid) != 0) errno = 0;
  ::chmod(path_.c_str(), plan.st_mode & kReadAndWrite);
}

void History::Attach() {
  if (std::exchange(isAttached_, true)) return;
  Attempt([this] {
    if (!fs::exists(path_)) return;
    Open(Database::Access::Write);
    Heal();
    const PlanState state = file_->State();
    if (state.digest.empty()) return;
    BeAt(state.digest == work_.baseDigest ? state.pointer : kNowhere);
    if (work_.base == kNowhere) NoteOutside();
  });
}

void History::Heal() {
  constexpr int kMostTries = 50;
  for (int i = 0; i < kMostTries; ++i) {
    const std::int64_t pending = file_->State().pending;
    if (pending == 0) return;
    const std::optional<Work> work = file_->FindWork(pending);
    if (!work || !IsAlive(work->worker)) break;
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  Transaction transaction = file_->Begin();
  PlanState state = file_->State();
  const std::optional<Work> work = file_->FindWork(state.pending);
  if (state.pending == 0) return;
  if (work && IsAlive(work->worker)) throw DatabaseFault("is being written by another program");
  const bool wasSaved = work && DigestOf(FileText()) == work->digest;
  if (wasSaved) file_->Confirm(*work);
  if (work && (wasSaved || !work->isShell)) file_->DropWork(work->id);
  state = file_->State();
  state.pending = 0;
  file_->SetState(state);
  transaction.Commit();
}

std::string History::TextAt(std::int64_t number) {
  std::optional<HistoryFile::Snapshot> from = file_->FindSnapshot();
  if (!from) throw DamagedHistory();
  const Line saved{file_.get(), kLastStep, {}};
  while (from->number < number) {
    const std::optional<Step> step = saved.Next(from->number);
    if (!step || step->number > number) throw DamagedHistory();
    from = {step->number, Redone(*step, from->text)};
  }
  while (from->number > number) {
    const std::optional<Step> step = saved.Last(from->number);
    if (!step || step->number <= number) break;
    from = {step->number - 1, Undone(*step, from->text)};
  }
  return std::move(from->text);
}

void History::NoteOutside() {
  Transaction transaction = file_->Begin();
  PlanState state = file_->State();
  // Another one may have saved since the file was read.
  if (state.pending != 0 || FileText() != text_) return;
  if (file_->Count(kSaved).steps == 0 && !file_->FindSnapshot()) {
    // Nothing but the beginning was ever written; it begins here as well.
    state.digest = work_.baseDigest;
    file_->SetState(state);
    transaction.Commit();
    return BeAt(state.pointer);
  }
  Step step = StepBetween(TextAt(state.pointer), text_);
  step.command = "changed by another program";
  step.isOutside = true;
  step.at = Now();
  struct stat status {};
  if (::stat(plan_.c_str(), &status) == 0) {
    step.at = std::int64_t{status.st_mtim.tv_sec} * 1000 + status.st_mtim.tv_nsec / 1'000'000;
    step.user = UserName(status.st_uid);
  }
  file_->DropAbove(state.pointer, kSaved);
  state.pointer = file_->Add(step, kSaved);
  state.digest = work_.baseDigest;
  file_->SetState(state);
  file_->Trim(text_);
  transaction.Commit();
  BeAt(state.pointer);
}

void History::Found() {
  PlanState state = file_->State();
  if (!state.digest.empty()) return;
  state.digest = work_.baseDigest;
  file_->SetState(state);
}

void History::KeepOwn(Step& step) {
  isKept_ = Attempt([&] {
    Open(Database::Access::Create);
    Transaction transaction = file_->Begin();
    Found();
    if (!file_->FindSnapshot()) file_->SetSnapshot(work_.base, text_);
    work_.isShell = true;
    file_->Keep(work_);
    file_->DropAbove(work_.current, work_.id);
    step.number = file_->Add(step, work_.id);
    Work after = work_;
    after.current = step.number;
    after.digest = step.after;
    after.at = step.at;
    file_->Keep(after);
    transaction.Commit();
  });
}

void History::Record(const std::string& iCommand, std::string iText) {
  if (iText == text_) return;
  Attach();
  if (file_ && file_->State().mostSteps == 0) {
    text_ = std::move(iText);
    digest_ = DigestOf(text_);
    return;
  }
  Step step = StepBetween(text_, iText);
  step.command = iCommand;
  step.user = work_.worker.user;
  step.at = Now();
  std::erase_if(line_.own, [this](const Step& own) { return own.number > work_.current; });
  if (line_.own.empty()) line_.branch = work_.current;
  const std::int64_t last = line_.own.empty() ? work_.current : line_.own.back().number;
  step.number = last + 1;
  if (file_) Attempt([&] { step.number = std::max(step.number, file_->NextNumber()); });
  work_.branch = line_.branch;
  if (isShell_ || isKept_) KeepOwn(step);
  work_.current = step.number;
  digest_ = step.after;
  line_.own.push_back(std::move(step));
  text_ = std::move(iText);
}

History::Move History::Back(std::size_t iMost) {
  Attach();
  Move move{{}, work_.current, text_};
  std::optional<Move> withPlan;
  Attempt([&] {
    while (move.steps.size() < iMost) {
      std::optional<Step> step = line_.Last(move.to);
      if (!step) break;
      std::string text = Undone(*step, move.text);
      if (text.empty() && !move.text.empty()) withPlan = move;
      move.text = std::move(text);
      const std::optional<Step> former = line_.Last(step->number - 1);
      move.to = former ? former->number : step->number - 1;
      move.steps.push_back(std::move(*step));
    }
  });
  return move.text.empty() && withPlan ? std::move(*withPlan) : std::move(move);
}

History::Move History::Forth(std::size_t iMost) {
  Attach();
  Move move{{}, work_.current, text_};
  Attempt([&] {
    while (move.steps.size() < iMost) {
      std::optional<Step> step = line_.Next(move.to);
      if (!step) break;
      move.text = Redone(*step, move.text);
      move.to = step->number;
      move.steps.push_back(std::move(*step));
    }
  });
  return move;
}

History::Move History::To(std::int64_t iStep) {
  Attach();
  std::size_t back = 0;
  std::size_t forth = 0;
  bool isThere = iStep == 0;
  for (const Entry& entry : Entries()) {
    const std::int64_t number = entry.step.number;
    isThere = isThere || number == iStep;
    if (number > iStep && number <= work_.current) ++back;
    if (number <= iStep && number > work_.current) ++forth;
  }
  if (!isThere) {
    throw embedded::InputError("there is no step " + std::to_string(iStep) +
                               "; 'history' lists them, and 0 is where they begin");
  }
  return back > 0 ? Back(back) : Forth(forth);
}

void History::Take(Move iMove) {
  work_.current = iMove.to;
  text_ = std::move(iMove.text);
  work_.digest = digest_ = DigestOf(text_);
  work_.at = Now();
  if (!(isShell_ || isKept_) || !file_) return;
  Attempt([this] {
    Transaction transaction = file_->Begin();
    work_.isShell = true;
    work_.branch = line_.own.empty() ? work_.base : line_.branch;
    file_->Keep(work_);
    transaction.Commit();
    isKept_ = true;
  });
}

bool History::FitsSaved() {
  const PlanState state = file_->State();
  const bool isFromBase = state.digest == work_.baseDigest && state.pointer == work_.base;
  if (!isFromBase || line_.own.empty()) return isFromBase;
  const std::int64_t branch = line_.branch;
  return branch == state.pointer || branch <= state.origin || file_->First(branch - 1, branch);
}

// The steps of this one and of others part: what this one did becomes one step after theirs.
void History::Join() {
  const std::string command = line_.own.empty() ? "save" : line_.own.back().command;
  std::string mine = std::move(text_);
  Begin(FileText());
  Record(command, std::move(mine));
}

void History::BeforeSaving() {
  Attach();
  const bool isSame = IsSaved() && line_.own.empty() && work_.current == work_.base;
  if (isSame && DigestOf(FileText()) == digest_) return;
  Attempt([this] {
    Open(Database::Access::Create);
    Transaction founding = file_->Begin();
    Found();
    founding.Commit();
    if (!FitsSaved()) Join();
    if (file_->State().mostSteps == 0) return;
    Transaction transaction = file_->Begin();
    work_.isShell = isShell_ || isKept_;
    work_.branch = line_.own.empty() ? work_.base : line_.branch;
    work_.digest = digest_;
    work_.at = Now();
    file_->Keep(work_);
    const std::int64_t current = work_.current;
    for (Step& step : line_.own) {
      if (isKept_) break;
      const std::int64_t number = std::exchange(step.number, file_->Add(step, work_.id));
      if (number == current) work_.current = step.number;
    }
    file_->Keep(work_);
    PlanState state = file_->State();
    state.pending = work_.id;
    file_->SetState(state);
    transaction.Commit();
    isPending_ = true;
  });
}

void History::AfterSaving() {
  work_.baseDigest = digest_;
  if (!std::exchange(isPending_, false)) return;
  Attempt([this] {
    Transaction transaction = file_->Begin();
    file_->Confirm(work_);
    file_->DropWork(work_.id);
    file_->Trim(text_);
    transaction.Commit();
  });
  work_.id = 0;
  isKept_ = false;
  BeAt(work_.current);
}

void History::SavingFailed() {
  if (!std::exchange(isPending_, false)) return;
  Attempt([this] {
    Transaction transaction = file_->Begin();
    PlanState state = file_->State();
    state.pending = 0;
    file_->SetState(state);
    if (!isKept_) file_->DropWork(work_.id);
    transaction.Commit();
  });
  if (!isKept_) work_.id = 0;
}

std::vector<History::Entry> History::Entries() {
  Attach();
  std::vector<Entry> entries;
  Attempt([&] {
    if (!line_.saved) return;
    for (Step& step : line_.saved->StepsOf(kSaved, line_.own.empty() ? kLastStep : line_.branch)) {
      entries.push_back({std::move(step), {}, false, true});
    }
  });
  for (const Step& step : line_.own) entries.push_back({step, {}, false, false});
  for (Entry& entry : entries) {
    entry.isUndone = work_.current != kNowhere && entry.step.number > work_.current;
  }
  const bool isSound = Attempt([&] {
    for (Entry& entry : entries) entry.names = UnpackNames(entry.step.names);
  });
  if (!isSound) entries.clear();
  return entries;
}

}  // namespace biwplan
