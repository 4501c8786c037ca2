#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace embedded {

class JsonValue;

// A number and both ends of what is allowed.
struct NumberRange {
  double lowest;
  double highest;
};

// A JSON text as a flat array of values, each before those inside it. Reading is bounded by
// JsonLimits, and no recursion follows the text.
class JsonTree {
 public:
  // InputError for anything that is not one whole JSON text in UTF-8, and for a key that stands
  // twice in one object. `iName` names the text in errors.
  JsonTree(std::string_view iText, std::string iName);
  JsonValue Root() const;

 private:
  friend class JsonValue;
  class Builder;
  enum class Type : std::uint8_t { Null, Flag, Integer, Real, Text, Array, Object };
  // `texts_` has the key of a value and then its text, and behind that the same of the next value.
  struct Node {
    double number;
    std::uint32_t begin;
    std::uint32_t keyLength;
    std::uint32_t end;  // behind the values inside
    Type type;
  };

  std::string_view KeyOf(const Node& node) const;
  std::string_view TextAt(std::size_t index) const;
  std::string PointerTo(std::size_t index) const;

  std::string name_;
  std::string texts_;
  std::vector<Node> nodes_;
};

// A value of a tree, which must outlive it. Readers fail with an InputError that names the place.
class JsonValue {
 public:
  JsonValue(const JsonTree& iTree, std::size_t iIndex) : tree_(&iTree), index_(iIndex) {}

  std::string_view Text() const;
  double Number(const NumberRange& iRange) const;
  int Integer(int iLowest, int iHighest) const;
  bool Flag() const;
  // Empty for an element of an array.
  std::string_view Key() const { return tree_->KeyOf(Self()); }
  [[noreturn]] void Fail(const std::string& iWhat) const;

  // The values directly inside, in their order.
  class Iterator;
  class Range;
  Range Elements() const;
  Range Members() const;

 private:
  friend class JsonObject;
  const JsonTree::Node& Self() const { return tree_->nodes_[index_]; }
  Range Inside(JsonTree::Type type, const char* what) const;

  const JsonTree* tree_;
  std::size_t index_;
};

class JsonValue::Iterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = JsonValue;
  using difference_type = std::ptrdiff_t;
  using pointer = void;
  using reference = JsonValue;

  Iterator(const JsonTree& iTree, std::size_t iIndex) : tree_(&iTree), index_(iIndex) {}
  JsonValue operator*() const { return {*tree_, index_}; }
  Iterator& operator++() {
    index_ = JsonValue(*tree_, index_).Self().end;
    return *this;
  }
  bool operator==(const Iterator& iOther) const { return index_ == iOther.index_; }

 private:
  const JsonTree* tree_;
  std::size_t index_;
};

class JsonValue::Range {
 public:
  Range(Iterator iBegin, Iterator iEnd) : begin_(iBegin), end_(iEnd) {}
  Iterator begin() const { return begin_; }
  Iterator end() const { return end_; }
  bool IsEmpty() const { return begin_ == end_; }

 private:
  Iterator begin_;
  Iterator end_;
};

}  // namespace embedded
