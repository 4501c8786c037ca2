#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "embedded/storage/JsonTree.h"

namespace embedded {

// Reads the members of an object by their keys. Fast when they are asked for in their order.
class JsonObject {
 public:
  explicit JsonObject(const JsonValue& iValue);

  std::optional<JsonValue> Find(std::string_view iKey);
  // InputError when the object has no such member.
  JsonValue Get(std::string_view iKey);
  // InputError for a member that nobody asked for. Each is asked for once.
  void RequireNothingElse() const;

 private:
  JsonValue value_;
  JsonValue::Range members_;
  JsonValue::Iterator next_;
  std::ptrdiff_t found_ = 0;
  std::array<std::string_view, 16> asked_;
  std::size_t askedCount_ = 0;
};

}  // namespace embedded
