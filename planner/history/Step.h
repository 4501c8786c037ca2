#pragma once

#include <cstdint>
#include <string>

namespace biwplan {

// One change of a plan. Numbers ascend and are never used again; 0 is where a history begins.
struct Step {
  std::int64_t number = 0;
  // Milliseconds since 1970, UTC.
  std::int64_t at = 0;
  std::string user;
  // As it was typed.
  std::string command;
  // Another program changed the file.
  bool isOutside = false;
  // Packed: the names that it touched, and the change itself.
  std::string names;
  std::string delta;
  // Digests of the plan on both sides of it.
  std::string before;
  std::string after;

  std::size_t Size() const { return command.size() + names.size() + delta.size(); }
};

}  // namespace biwplan
