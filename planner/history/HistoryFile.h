#pragma once

#include <cstdint>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "planner/history/Database.h"
#include "planner/history/Step.h"
#include "planner/history/Worker.h"

namespace biwplan {

// Steps that are in the plan's file belong to this; those that are not yet, to who made them.
constexpr std::int64_t kSaved = 0;
constexpr std::int64_t kLastStep = std::numeric_limits<std::int64_t>::max();

// Where the plan's file stands in its history.
struct PlanState {
  // The last step that is in it, and its digest.
  std::int64_t pointer = 0;
  std::string digest;
  // Whose work is being saved, or was when its process was killed; 0 when nobody's.
  std::int64_t pending = 0;
  // The last step that was dropped because there are many; 0 when none was.
  std::int64_t origin = 0;
  // How many steps are kept; 0 when none are.
  std::int64_t mostSteps = 1000;
};

// Somebody's work on a plan that is not in its file yet.
struct Work {
  std::int64_t id = 0;
  Worker worker;
  std::int64_t at = 0;
  // A shell's steps are worth something without being saved.
  bool isShell = false;
  // The step that the file was at when it was read, and its digest.
  std::int64_t base = 0;
  std::string baseDigest;
  // The last saved step before the first of its own.
  std::int64_t branch = 0;
  // Where it stands now.
  std::int64_t current = 0;
  std::string digest;
};

// The database that holds a history. Failures are those of a Database.
class HistoryFile {
 public:
  // Makes the file when there is none.
  HistoryFile(const std::filesystem::path& iFile, Database::Access iAccess);

  Transaction Begin() { return Transaction(database_); }

  PlanState State();
  void SetState(const PlanState& iState);

  // The first or last saved step that is above `iAbove` and not above `iUpTo`.
  std::optional<Step> First(std::int64_t iAbove, std::int64_t iUpTo = kLastStep);
  std::optional<Step> Last(std::int64_t iUpTo);
  std::vector<Step> StepsOf(std::int64_t iWork, std::int64_t iUpTo = kLastStep);
  // How many are above the one number and not above the other, and how many bytes they take.
  struct Amount {
    std::int64_t steps;
    std::int64_t bytes;
  };
  Amount Count(std::int64_t iWork, std::int64_t iAbove = 0, std::int64_t iUpTo = kLastStep);
  // The number that it gets.
  std::int64_t Add(const Step& iStep, std::int64_t iWork);
  void DropAbove(std::int64_t iNumber, std::int64_t iWork);
  // The number that the next step would get.
  std::int64_t NextNumber();

  // Adds it, or writes it again when it has an identity already.
  void Keep(Work& ioWork);
  std::optional<Work> FindWork(std::int64_t iId);
  std::vector<Work> AllWork();
  // With its steps.
  void DropWork(std::int64_t iId);
  // Makes somebody's steps saved ones, in place of those that were undone before them.
  void Confirm(const Work& iWork);

  // The plan at one step; nothing when none is kept.
  struct Snapshot {
    std::int64_t number;
    std::string text;
  };
  std::optional<Snapshot> FindSnapshot();
  void SetSnapshot(std::int64_t iNumber, const std::string& iText);
  // Drops the oldest saved steps until there are no more than the state says, and makes a new
  // snapshot where steps would need it: `iText` is the plan at the state's pointer.
  void Trim(const std::string& iText);
  // Drops every saved step and the snapshot.
  void Clear();
  // Gives room back to the disk.
  void Shrink() { database_.Run("VACUUM"); }

 private:
  void Prepare();
  bool IsSnapshotNear(const PlanState& state);
  std::optional<Step> One(Statement& statement);

  Database database_;
};

}  // namespace biwplan
