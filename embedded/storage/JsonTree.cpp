#include "embedded/storage/JsonTree.h"

#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>
#include <utility>

#include "embedded/Error.h"
#include "embedded/storage/JsonLimits.h"
#include "embedded/storage/JsonText.h"
#include "embedded/storage/Utf8.h"
#include "host/component/Interruption.h"

namespace embedded {

namespace {

constexpr int kNumberTooLarge = 406;
constexpr std::size_t kSmallObject = 16;

std::string Escaped(std::string_view key) {
  std::string escaped;
  for (const char c : key) {
    if (c == '~') {
      escaped += "~0";
    } else if (c == '/') {
      escaped += "~1";
    } else {
      escaped += c;
    }
  }
  const std::string quoted = Quoted(escaped);
  return quoted.substr(1, quoted.size() - 2);
}

std::string Short(double number) {
  char digits[32];
  return {digits, std::to_chars(digits, digits + sizeof digits, number).ptr};
}

}  // namespace

// Receives the events of the parser.
class JsonTree::Builder {
 public:
  using Json = nlohmann::json;

  Builder(JsonTree& tree, std::string_view text) : tree_(tree), text_(text) {}

  bool null() { return Add(Type::Null); }
  bool boolean(bool flag) { return Add(Type::Flag, flag ? 1 : 0); }
  bool number_integer(std::int64_t number) {
    return Add(Type::Integer, static_cast<double>(number));
  }
  bool number_unsigned(std::uint64_t number) {
    return Add(Type::Integer, static_cast<double>(number));
  }
  bool number_float(double number, const std::string&) { return Add(Type::Real, number); }
  bool string(const std::string& text);
  bool binary(Json::binary_t&) { return false; }
  bool start_object(std::size_t) { return Open(Type::Object); }
  bool start_array(std::size_t) { return Open(Type::Array); }
  bool key(const std::string& key);
  bool end_object();
  bool end_array() { return Close(); }
  bool parse_error(std::size_t position, const std::string&, const Json::exception& error);

 private:
  Node NewNode(Type type, double number) const;
  bool Add(Type type, double number = 0);
  bool Open(Type type);
  bool Close();
  void RequireDistinctKeys();
  std::string Place(std::size_t position) const;
  [[noreturn]] void FailAt(std::size_t index, const std::string& what);
  [[noreturn]] void FailHere(const std::string& what);

  const JsonLimits& limits_ = JsonLimits::Current();
  JsonTree& tree_;
  std::string_view text_;
  std::vector<std::uint32_t> open_;
  std::size_t keyBegin_ = 0;
  bool hasKey_ = false;
  std::vector<std::uint32_t> members_;
};

JsonTree::Node JsonTree::Builder::NewNode(Type type, double number) const {
  const std::size_t begin = hasKey_ ? keyBegin_ : tree_.texts_.size();
  return {.number = number,
          .begin = static_cast<std::uint32_t>(begin),
          .keyLength = static_cast<std::uint32_t>(tree_.texts_.size() - begin),
          .end = static_cast<std::uint32_t>(tree_.nodes_.size() + 1),
          .type = type};
}

bool JsonTree::Builder::Add(Type type, double number) {
  Interruption::Check();
  if (tree_.nodes_.size() >= limits_.values) {
    FailHere("the text has more than " + std::to_string(limits_.values) +
             " values; split the document");
  }
  tree_.nodes_.push_back(NewNode(type, number));
  hasKey_ = false;
  return true;
}

bool JsonTree::Builder::string(const std::string& text) {
  Add(Type::Text);
  tree_.texts_ += text;
  return true;
}

bool JsonTree::Builder::key(const std::string& key) {
  keyBegin_ = tree_.texts_.size();
  hasKey_ = true;
  tree_.texts_ += key;
  return true;
}

bool JsonTree::Builder::end_object() {
  RequireDistinctKeys();
  return Close();
}

bool JsonTree::Builder::Open(Type type) {
  Add(type);
  open_.push_back(static_cast<std::uint32_t>(tree_.nodes_.size() - 1));
  if (open_.size() > limits_.depth) {
    FailHere("values are nested more than " + std::to_string(limits_.depth) +
             " deep; a document is flatter");
  }
  return true;
}

bool JsonTree::Builder::Close() {
  tree_.nodes_[open_.back()].end = static_cast<std::uint32_t>(tree_.nodes_.size());
  open_.pop_back();
  return true;
}

void JsonTree::Builder::RequireDistinctKeys() {
  const auto key = [this](std::uint32_t index) { return tree_.KeyOf(tree_.nodes_[index]); };
  members_.clear();
  for (auto i = open_.back() + 1; i < tree_.nodes_.size(); i = tree_.nodes_[i].end) {
    members_.push_back(i);
  }
  // Most objects are small, and comparing keys pair by pair is then faster than sorting them.
  if (members_.size() > kSmallObject) {
    std::sort(members_.begin(), members_.end(),
              [&](std::uint32_t a, std::uint32_t b) { return key(a) < key(b); });
  }
  const std::size_t reach = members_.size() > kSmallObject ? 1 : kSmallObject;
  for (std::size_t i = 0; i < members_.size(); ++i) {
    for (std::size_t j = i + 1; j < members_.size() && j <= i + reach; ++j) {
      if (key(members_[i]) != key(members_[j])) continue;
      FailAt(members_[j], "the key stands twice in this object; it may stand there once");
    }
  }
}

// Line and column of the character that was read last.
std::string JsonTree::Builder::Place(std::size_t position) const {
  const auto read = text_.substr(0, position > 0 ? position - 1 : 0);
  const auto line = 1 + std::count(read.begin(), read.end(), '\n');
  const auto column = read.size() - (read.rfind('\n') + 1) + 1;
  return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

void JsonTree::Builder::FailAt(std::size_t index, const std::string& what) {
  while (!open_.empty()) Close();
  JsonValue(tree_, index).Fail(what);
}

// At the innermost value that has begun.
void JsonTree::Builder::FailHere(const std::string& what) {
  const bool isValueMissing = hasKey_ || tree_.nodes_.empty();
  if (isValueMissing) tree_.nodes_.push_back(NewNode(Type::Null, 0));
  FailAt(isValueMissing ? tree_.nodes_.size() - 1 : open_.empty() ? 0 : open_.back(), what);
}

bool JsonTree::Builder::parse_error(std::size_t position, const std::string&,
                                    const Json::exception& error) {
  const std::string place = Place(position);
  if (position > text_.size()) {
    FailHere("the text breaks off at " + place + "; restore the whole file");
  }
  if (error.id == kNumberTooLarge) {
    FailHere("the number at " + place + " is too large; numbers go up to 1e308");
  }
  if (!IsUtf8(text_.substr(0, position)) && !IsUtf8(text_)) {
    FailHere("the text is not UTF-8 at " + place + "; save the file as UTF-8");
  }
  FailHere("the text is not JSON at " + place + "; correct it there");
}

JsonTree::JsonTree(std::string_view iText, std::string iName) : name_(std::move(iName)) {
  const JsonLimits& limits = JsonLimits::Current();
  if (iText.size() > limits.bytes) {
    throw InputError(name_ + ": the text has more than " + limits.BytesInWords() +
                     "; split the document");
  }
  // Memory beyond what the text needs is never touched.
  nodes_.reserve(std::min(iText.size() / 8 + 1, limits.values));
  texts_.reserve(iText.size());
  Builder builder(*this, iText);
  nlohmann::json::sax_parse(iText.begin(), iText.end(), &builder);
}

JsonValue JsonTree::Root() const { return {*this, 0}; }

std::string_view JsonTree::KeyOf(const Node& node) const {
  return std::string_view(texts_).substr(node.begin, node.keyLength);
}

// Up to where the next value has its key.
std::string_view JsonTree::TextAt(std::size_t index) const {
  const std::size_t begin = nodes_[index].begin + nodes_[index].keyLength;
  const std::size_t end = index + 1 < nodes_.size() ? nodes_[index + 1].begin : texts_.size();
  return std::string_view(texts_).substr(begin, end - begin);
}

std::string JsonTree::PointerTo(std::size_t index) const {
  std::string pointer;
  for (std::size_t at = 0; at != index;) {
    const bool isArray = nodes_[at].type == Type::Array;
    long position = 0;
    for (++at; nodes_[at].end <= index; ++position) at = nodes_[at].end;
    pointer += '/';
    pointer += isArray ? std::to_string(position) : Escaped(KeyOf(nodes_[at]));
  }
  return pointer;
}

void JsonValue::Fail(const std::string& iWhat) const {
  const std::string pointer = tree_->PointerTo(index_);
  throw InputError(tree_->name_ + (pointer.empty() ? ": " : ", " + pointer + ": ") + iWhat);
}

std::string_view JsonValue::Text() const {
  const JsonTree::Node& node = Self();
  if (node.type != JsonTree::Type::Text) Fail("a text in quotes must stand here");
  const std::string_view text = tree_->TextAt(index_);
  if (text.find('\0') != std::string_view::npos) Fail("the text has a NUL character; remove it");
  return text;
}

double JsonValue::Number(const NumberRange& iRange) const {
  const JsonTree::Node& node = Self();
  if (node.type != JsonTree::Type::Integer && node.type != JsonTree::Type::Real) {
    Fail("a number must stand here");
  }
  if (node.number < iRange.lowest || node.number > iRange.highest) {
    Fail(Short(node.number) + " is out of range; the number must lie between " +
         Short(iRange.lowest) + " and " + Short(iRange.highest));
  }
  return node.number;
}

int JsonValue::Integer(int iLowest, int iHighest) const {
  if (Self().type != JsonTree::Type::Integer) Fail("a whole number must stand here");
  return static_cast<int>(Number({static_cast<double>(iLowest), static_cast<double>(iHighest)}));
}

bool JsonValue::Flag() const {
  if (Self().type != JsonTree::Type::Flag) Fail("true or false must stand here");
  return Self().number != 0;
}

JsonValue::Range JsonValue::Inside(JsonTree::Type type, const char* what) const {
  Interruption::Check();
  if (Self().type != type) Fail(what);
  return {{*tree_, index_ + 1}, {*tree_, Self().end}};
}

JsonValue::Range JsonValue::Elements() const {
  return Inside(JsonTree::Type::Array, "a list in [ ] must stand here");
}

JsonValue::Range JsonValue::Members() const {
  return Inside(JsonTree::Type::Object, "an object in { } must stand here");
}

}  // namespace embedded
