#include "planner/import/ActivityWords.h"

#include <algorithm>
#include <array>
#include <string>
#include <variant>

#include "planner/import/RowFault.h"
#include "planner/import/Values.h"

namespace biwplan {

namespace {

using Kind = embedded::ActivityData::Kind;
using Role = embedded::ActivityData::Role;
using Task = embedded::ActivityData::Task;

struct Word {
  std::string_view folded;
  std::variant<Role, Kind, Task> meaning;
};

constexpr std::array<Word, 30> kWords = {{
    {"station", Role::Station},
    {"cell", Role::Station},
    {"operation", Role::Operation},
    {"op", Role::Operation},
    {"process", Role::Step},
    {"line", Role::Step},
    {"zone", Role::Step},
    {"step", Role::Step},
    {"physical", Kind::Physical},
    {"logical", Kind::Logical},
    {"welding", Task::Welding},
    {"weld", Task::Welding},
    {"spotwelding", Task::Welding},
    {"spot", Task::Welding},
    {"curve", Task::CurveFastening},
    {"curvefastening", Task::CurveFastening},
    {"seam", Task::CurveFastening},
    {"seamwelding", Task::CurveFastening},
    {"laserwelding", Task::CurveFastening},
    {"arcwelding", Task::CurveFastening},
    {"sealing", Task::CurveFastening},
    {"gluing", Task::CurveFastening},
    {"bonding", Task::CurveFastening},
    {"hemming", Task::CurveFastening},
    {"both", Task::Both},
    {"none", Task::None},
    {"loading", Task::None},
    {"handling", Task::None},
    {"inspection", Task::None},
    {"assembly", Task::None},
}};

// Words that say nothing beyond the others.
constexpr std::array<std::string_view, 3> kFillers = {"activity", "biw", "fastening"};

const Word* FindWord(std::string_view folded) {
  const auto found = std::find_if(kWords.begin(), kWords.end(),
                                  [&](const Word& word) { return word.folded == folded; });
  return found == kWords.end() ? nullptr : &*found;
}

template <class T>
void Set(std::optional<T>& slot, T value, std::string_view field, std::string_view text) {
  if (slot && *slot != value) {
    throw RowError(FaultKind::UnknownWord, std::string(field) + " is " + Quoted(text) +
                                               ", which contradicts an earlier word of the row; "
                                               "leave one of them out");
  }
  slot = value;
}

[[noreturn]] void Refuse(std::string_view field, std::string_view text) {
  throw RowError(FaultKind::UnknownWord,
                 std::string(field) + " is " + Quoted(text) +
                     "; write station, operation or process, physical or logical, and welding, "
                     "curve, both or none");
}

}  // namespace

bool ActivityWords::Take(std::string_view field, std::string_view word) {
  const std::string folded = Folded(word);
  if (std::find(kFillers.begin(), kFillers.end(), folded) != kFillers.end()) return true;
  const Word* const found = FindWord(folded);
  if (!found) return false;
  if (const auto* const role = std::get_if<Role>(&found->meaning)) Set(role_, *role, field, word);
  if (const auto* const kind = std::get_if<Kind>(&found->meaning)) Set(kind_, *kind, field, word);
  if (const auto* const task = std::get_if<Task>(&found->meaning)) Set(task_, *task, field, word);
  return true;
}

void ActivityWords::Read(std::string_view iField, std::string_view iText) {
  if (iText.empty() || Take(iField, iText)) return;
  for (const std::string_view word : Split(iText, " \t_-+/|,;")) {
    if (!Take(iField, word)) Refuse(iField, iText);
  }
}

Kind ActivityWords::GetKind() const { return kind_.value_or(Kind::Physical); }

Task ActivityWords::GetTask() const { return task_.value_or(Task::None); }

}  // namespace biwplan
