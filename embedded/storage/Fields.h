#pragma once

#include <span>
#include <string>

#include "embedded/model/Document.h"
#include "embedded/model/Look.h"
#include "embedded/storage/DocumentFormat.h"
#include "embedded/storage/JsonObject.h"
#include "embedded/storage/JsonText.h"

namespace embedded {

// Members of objects that several kinds of objects have.

std::string ReadText(const JsonValue& iValue);
// Empty when there is none.
std::string ReadOptionalText(JsonObject& ioObject, std::string_view iKey);
// As many numbers as `oNumbers` has room for.
void ReadNumbers(const JsonValue& iValue, std::span<double> oNumbers, const NumberRange& iRange);
// Leaves `oNumber` as it is when there is none.
void ReadOptionalNumber(JsonObject& ioObject, std::string_view iKey, const NumberRange& iRange,
                        double& oNumber);
void ReadLook(JsonObject& ioObject, Look& ioLook);

// Fails for the empty key, and for another one that is taken.
void RequireNewKey(const JsonValue& iKey, bool iIsTaken);
// The key of a new object; `iFind` gives whatever has a key already.
template <class Find>
std::string ReadNewKey(JsonObject& ioObject, const Find& iFind) {
  const JsonValue value = ioObject.Get("key");
  std::string key = ReadText(value);
  RequireNewKey(value, iFind(key));
  return key;
}

template <class Value, std::size_t kCount>
Value ReadWord(const JsonValue& iValue, const Word<Value> (&iWords)[kCount]) {
  const std::string_view text = iValue.Text();
  std::string known;
  for (const Word<Value>& word : iWords) {
    if (word.text == text) return word.value;
    known += (known.empty() ? "" : ", ") + Quoted(word.text);
  }
  iValue.Fail(Quoted(text) + " is not known here; it must be one of " + known);
}

// Objects of a document by their keys; InputError for a key that no object has.
class NamedObjects {
 public:
  explicit NamedObjects(Document& ioDocument) : document_(ioDocument) {}
  Activity& ActivityAt(const JsonValue& iKey) const;
  Product& ProductAt(const JsonValue& iKey) const;
  // What a member such as "feature": "SW-1" names.
  ZefBaseUnknown* ObjectAt(const JsonValue& iMember) const;
  // The same for an object with that one member.
  ZefBaseUnknown* Referred(const JsonValue& iReference) const;

 private:
  Document& document_;
};

}  // namespace embedded
