#include "embedded/storage/JsonObject.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "embedded/storage/JsonText.h"

namespace embedded {

JsonObject::JsonObject(const JsonValue& iValue)
    : value_(iValue), members_(iValue.Members()), next_(members_.begin()) {}

std::optional<JsonValue> JsonObject::Find(std::string_view iKey) {
  asked_[askedCount_++] = iKey;
  JsonValue::Iterator at = next_;
  if (at == members_.end()) at = members_.begin();
  if (members_.IsEmpty()) return std::nullopt;
  const JsonValue::Iterator start = at;
  do {
    const JsonValue member = *at;
    if (++at == members_.end()) at = members_.begin();
    if (member.Key() != iKey) continue;
    next_ = at;
    ++found_;
    return member;
  } while (!(at == start));
  return std::nullopt;
}

JsonValue JsonObject::Get(std::string_view iKey) {
  if (const auto member = Find(iKey)) return *member;
  value_.Fail("the key " + Quoted(iKey) + " is missing");
}

void JsonObject::RequireNothingElse() const {
  if (std::distance(members_.begin(), members_.end()) == found_) return;
  const auto end = asked_.begin() + static_cast<std::ptrdiff_t>(askedCount_);
  for (const JsonValue member : members_) {
    if (std::find(asked_.begin(), end, member.Key()) != end) continue;
    std::string known;
    for (auto key = asked_.begin(); key != end; ++key) {
      known += (known.empty() ? "" : ", ") + Quoted(*key);
    }
    member.Fail("this key is not known; known here are " + known);
  }
}

}  // namespace embedded
