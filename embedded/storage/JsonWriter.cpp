#include "embedded/storage/JsonWriter.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <utility>

#include "embedded/Error.h"
#include "embedded/storage/JsonText.h"
#include "embedded/storage/Utf8.h"
#include "host/component/Interruption.h"

namespace embedded {

namespace {

constexpr std::size_t kDepthOfLines = 2;
constexpr std::size_t kLongestNumber = 32;
constexpr double kLargestWhole = 1e15;

template <class Value>
void AppendNumber(std::string& json, Value number) {
  char digits[kLongestNumber];
  json.append(digits, std::to_chars(digits, digits + kLongestNumber, number).ptr);
}

// Stands in a JSON text as it is.
bool IsPlain(char c) { return c >= 0x20 && c < 0x7F && c != '"' && c != '\\'; }

}  // namespace

void JsonWriter::BreakLine() {
  if (depth_ > kDepthOfLines) return;
  json_ += '\n';
  json_.append(2 * depth_, ' ');
}

void JsonWriter::Separate() {
  Interruption::Check();
  if (std::exchange(isAfterKey_, false)) return;
  const bool isFirst = std::exchange(isFirst_, false);
  if (!isFirst) json_ += depth_ > kDepthOfLines ? ", " : ",";
  if (depth_ > 0) BreakLine();
}

void JsonWriter::CheckSize() const {
  if (json_.size() > limits_.bytes) {
    throw InputError("the document would have more than " + limits_.BytesInWords() + "; split it");
  }
}

void JsonWriter::BeginValue() {
  if (++values_ > limits_.values) {
    throw InputError("the document would have more than " + std::to_string(limits_.values) +
                     " values; split it");
  }
  CheckSize();
  Separate();
}

void JsonWriter::Begin(char bracket) {
  BeginValue();
  json_ += bracket;
  ++depth_;
  isFirst_ = true;
}

void JsonWriter::End(char bracket) {
  --depth_;
  const bool isEmpty = std::exchange(isFirst_, false);
  if (!isEmpty && depth_ < kDepthOfLines) BreakLine();
  json_ += bracket;
}

void JsonWriter::Key(std::string_view iKey) {
  key_ = iKey;
  Separate();
  json_ += '"';
  json_ += iKey;
  json_ += "\": ";
  isAfterKey_ = true;
}

void JsonWriter::Text(std::string_view iText) {
  BeginValue();
  json_ += '"';
  if (std::all_of(iText.begin(), iText.end(), IsPlain)) {
    json_ += iText;
  } else if (IsUtf8(iText) && iText.find('\0') == std::string_view::npos) {
    AppendJsonText(json_, iText);
  } else {
    throw InputError(Quoted(key_) + " is not UTF-8 text without NUL characters");
  }
  json_ += '"';
}

void JsonWriter::Number(double iNumber, const NumberRange& iRange) {
  if (!(iNumber >= iRange.lowest && iNumber <= iRange.highest)) {
    std::string what = Quoted(key_) + " is ";
    AppendNumber(what, iNumber);
    AppendNumber(what += " and must lie between ", iRange.lowest);
    AppendNumber(what += " and ", iRange.highest);
    throw InputError(what);
  }
  BeginValue();
  const auto whole = static_cast<std::int64_t>(std::abs(iNumber) < kLargestWhole ? iNumber : 0.5);
  if (static_cast<double>(whole) != iNumber || (whole == 0 && std::signbit(iNumber))) {
    AppendNumber(json_, iNumber);
    // Without a fraction it would be read as the whole number 0, which has no sign.
    if (iNumber == 0) json_ += ".0";
  } else {
    AppendNumber(json_, whole);
  }
}

void JsonWriter::Integer(int iNumber) {
  BeginValue();
  AppendNumber(json_, iNumber);
}

void JsonWriter::Flag(bool iFlag) {
  BeginValue();
  json_ += iFlag ? "true" : "false";
}

std::string JsonWriter::Take() {
  json_ += '\n';
  CheckSize();
  return std::move(json_);
}

}  // namespace embedded
