#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "embedded/storage/JsonLimits.h"
#include "embedded/storage/JsonTree.h"

namespace embedded {

// Writes JSON: the members of the outermost object and the elements of their lists stand on a line
// each, and what is inside those on the same line. InputError for what a JSON text cannot hold, and
// as soon as it exceeds JsonLimits.
class JsonWriter {
 public:
  // Memory for about as many bytes is set aside.
  explicit JsonWriter(std::size_t iExpectedBytes) { json_.reserve(iExpectedBytes); }

  void BeginObject() { Begin('{'); }
  void EndObject() { End('}'); }
  void BeginArray() { Begin('['); }
  void EndArray() { End(']'); }
  void Key(std::string_view iKey);

  // Values: elements of an array, or of the key that was given last.
  void Text(std::string_view iText);
  void Number(double iNumber, const NumberRange& iRange);
  void Integer(int iNumber);
  void Flag(bool iFlag);

  // Ends the text with a line end and gives it away.
  std::string Take();

 private:
  void Begin(char bracket);
  void End(char bracket);
  void BeginValue();
  void Separate();
  void CheckSize() const;
  void BreakLine();

  const JsonLimits& limits_ = JsonLimits::Current();
  std::string json_;
  std::size_t values_ = 0;
  std::string_view key_;
  std::size_t depth_ = 0;
  bool isFirst_ = true;
  bool isAfterKey_ = false;
};

}  // namespace embedded
