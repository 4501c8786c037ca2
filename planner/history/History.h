#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "planner/history/HistoryFile.h"
#include "planner/history/Line.h"
#include "planner/history/TouchedNames.h"

namespace biwplan {

// The steps of one plan, for one who works on it: a plan is the text of its file, and a step leads
// from one text to another. They lie in a database beside the plan's file. A plan does without it:
// what fails there is said once and then left alone.
class History {
 public:
  using Say = std::function<void(const std::string&)>;

  // `iSay` gets whole sentences for the user.
  History(std::filesystem::path iPlan, Say iSay);
  ~History();
  History(const History&) = delete;
  History& operator=(const History&) = delete;

  // Steps are written when they happen, saved or not. Otherwise, when the plan is saved.
  void KeepAtOnce() { isShell_ = true; }

  // The plan as its file has it now; nothing without a file. What was not saved is forgotten.
  void Begin(std::string iText);
  bool HasBegun() const { return hasBegun_; }
  // The plan after the last step.
  const std::string& Text() const { return text_; }
  // It is what the file holds.
  bool IsSaved() const { return digest_ == work_.baseDigest; }

  // The plan has changed. What was undone before can no longer be redone.
  void Record(const std::string& iCommand, std::string iText);

  // A way through the steps, and the plan at its end.
  struct Move {
    std::vector<Step> steps;
    std::int64_t to = 0;
    std::string text;
  };
  // At most so many steps back, as far as there was a plan, or forth.
  Move Back(std::size_t iMost);
  Move Forth(std::size_t iMost);
  // To the plan after that step; InputError when there is no such step.
  Move To(std::int64_t iStep);
  // Goes that way.
  void Take(Move iMove);

  // Around the replacement of the file by the text: when the program is killed between them, the
  // next one sees from the file whether it was saved.
  void BeforeSaving();
  void AfterSaving();
  void SavingFailed();

  struct Entry {
    Step step;
    TouchedNames names;
    bool isUndone = false;
    bool isSaved = false;
  };
  std::vector<Entry> Entries();

  // Steps that a shell which has ended did not save.
  struct Lost {
    Work work;
    std::size_t steps = 0;
  };
  std::vector<Lost> FindLost();
  // Says what is lost.
  void TellLost();
  // The plan with these steps, as a way from what the file holds. InputError when the file is
  // another one than that to which the steps belong, unless they may then become one step.
  Move WayTo(const Lost& iLost, bool iOverwrites);
  // Goes that way; the steps are this one's own from now on.
  void Recover(const Lost& iLost, Move iMove);
  void Discard(const Lost& iLost);
  // What is not saved can be recovered when this one ends.
  bool KeepsUnsaved() const { return isKept_; }
  // What is not saved is not wanted.
  void Forsake();

  // How many steps are kept at most, 0 for none, and what is there.
  struct Bounds {
    std::int64_t mostSteps = 0;
    std::int64_t steps = 0;
    std::int64_t bytes = 0;
  };
  Bounds GetBounds();
  // InputError when it cannot be written.
  void SetBound(std::int64_t iMostSteps);

 private:
  // False when the history cannot be used; that is said.
  bool Attempt(const std::function<void()>& action);
  void GiveUp(const std::string& sentence);
  void SetAside();

  // What the plan's file holds now.
  std::string FileText() const;
  // Reads where the plan stands, once.
  void Attach();
  void Open(Database::Access access);
  void TakeOverRights() const;
  void Heal();
  void NoteOutside();
  std::string TextAt(std::int64_t number);
  // Writes the first entries of a new file.
  void Found();
  void KeepOwn(Step& step);
  Line LineOf(const Work& work);
  bool FitsSaved();
  void Join();
  void BeAt(std::int64_t number);

  std::filesystem::path plan_;
  std::filesystem::path path_;
  Say say_;
  std::unique_ptr<HistoryFile> file_;
  Line line_;
  // Where this one stands.
  Work work_;
  std::string text_;
  std::string digest_;
  bool isShell_ = false;
  // The own steps are written already.
  bool isKept_ = false;
  bool hasBegun_ = false;
  bool isAttached_ = false;
  bool isUsable_ = true;
  bool isPending_ = false;
};

// Beside the plan, or beside what a symbolic link to it leads to.
std::filesystem::path HistoryPath(const std::filesystem::path& iPlan);

}  // namespace biwplan
