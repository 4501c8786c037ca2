#pragma once

#include <optional>
#include <string_view>

#include "embedded/model/ActivityData.h"

namespace biwplan {

// What the words of a process list say about an activity.
class ActivityWords {
 public:
  // Takes a field such as "welding operation" or "logical". RowError for a word that is not known
  // or contradicts an earlier one.
  void Read(std::string_view iField, std::string_view iText);

  std::optional<embedded::ActivityData::Role> GetRole() const { return role_; }
  embedded::ActivityData::Kind GetKind() const;
  embedded::ActivityData::Task GetTask() const;

 private:
  bool Take(std::string_view field, std::string_view word);

  std::optional<embedded::ActivityData::Role> role_;
  std::optional<embedded::ActivityData::Kind> kind_;
  std::optional<embedded::ActivityData::Task> task_;
};

}  // namespace biwplan
