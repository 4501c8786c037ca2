#include "embedded/storage/CsvReader.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "embedded/Error.h"
#include "embedded/storage/Utf8.h"
#include "host/component/Interruption.h"

namespace embedded {

namespace {

constexpr std::size_t kBufferBytes = std::size_t{1} << 16;
constexpr std::string_view kDelimiters = "\t,;";

bool IsBlankCharacter(int c) { return c == ' ' || c == '\t'; }

std::size_t Index(char c) { return static_cast<unsigned char>(c); }

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlankCharacter(text.back())) text.remove_suffix(1);
  return text;
}

// How often each delimiter stands outside quotes in the first line of `text`.
std::array<long, kDelimiters.size()> CountDelimiters(std::string_view text) {
  std::array<long, kDelimiters.size()> counts{};
  bool isQuoted = false;
  for (const char c : text) {
    if (!isQuoted && (c == '\n' || c == '\r')) break;
    if (c == '"') isQuoted = !isQuoted;
    const std::size_t which = kDelimiters.find(c);
    if (!isQuoted && which != std::string_view::npos) ++counts[which];
  }
  return counts;
}

}  // namespace

CsvReader::CsvReader(std::istream& iStream, std::string iSource, CsvOptions iOptions)
    : stream_(iStream), source_(std::move(iSource)), options_(iOptions), buffer_(kBufferBytes) {
  for (const char c : {'\0', '\n', '\r'}) {
    plainStops_[Index(c)] = quotedStops_[Index(c)] = lineStops_[Index(c)] = true;
  }
  quotedStops_[Index('"')] = true;
  if (options_.delimiter) UseDelimiter(options_.delimiter);
}

void CsvReader::UseDelimiter(char delimiter) {
  delimiter_ = delimiter;
  plainStops_[Index(delimiter)] = true;
}

bool CsvReader::Next() {
  if (nextLine_ == 1 && at_ == 0 && end_ == 0) SkipByteOrderMark();
  while (FindRow()) {
    ReadRow();
    if (!IsBlank()) return true;
  }
  fields_.clear();
  return false;
}

std::string CsvReader::Place() const { return source_ + ", line " + std::to_string(line_); }

void CsvReader::Fail(long line, const std::string& what) const {
  throw InputError(source_ + ", line " + std::to_string(line) + ": " + what);
}

void CsvReader::FailAtNul() const { Fail(nextLine_, "there is a NUL byte; a list is plain text"); }

int CsvReader::Peek() {
  if (at_ == end_ && !Fill()) return -1;
  return static_cast<unsigned char>(buffer_[at_]);
}

// Moves what is left to the front and reads on behind it.
bool CsvReader::Fill() {
  std::memmove(buffer_.data(), buffer_.data() + at_, end_ - at_);
  end_ -= at_;
  at_ = 0;
  stream_.read(buffer_.data() + end_, static_cast<std::streamsize>(buffer_.size() - end_));
  if (stream_.bad()) Fail(nextLine_, "the file cannot be read on; it must be a readable text file");
  end_ += static_cast<std::size_t>(stream_.gcount());
  return end_ > 0;
}

void CsvReader::SkipByteOrderMark() {
  Fill();
  const std::string_view start(buffer_.data(), end_);
  if (start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF")) {
    Fail(1, "the text is in UTF-16; save the file as UTF-8");
  }
  if (start.starts_with("\xEF\xBB\xBF")) at_ = 3;
}

// Steps over comments and empty lines; false at the end.
bool CsvReader::FindRow() {
  Interruption::Check();
  for (int c = Peek(); c >= 0; c = Peek()) {
    if (TakeLineEnd()) continue;
    if (!options_.comments || (c != '#' && c != '$')) return true;
    SkipLine();
  }
  return false;
}

void CsvReader::SkipLine() {
  line_ = nextLine_;
  for (int c = Peek(); c >= 0 && !TakeLineEnd(); c = Peek()) {
    if (c == 0) FailAtNul();
    at_ = FindStop(lineStops_);
  }
}

// Only bytes in the buffer are looked at: a stop may lie behind them.
std::size_t CsvReader::FindStop(const Stops& stops) const {
  std::size_t at = at_;
  while (at < end_ && !stops[Index(buffer_[at])]) ++at;
  return at;
}

void CsvReader::FindDelimiter() {
  if (stream_ && end_ - at_ < kBufferBytes / 2) Fill();
  const auto counts = CountDelimiters({buffer_.data() + at_, end_ - at_});
  const auto most = std::max_element(counts.begin(), counts.end());
  if (*most > 0) UseDelimiter(kDelimiters[static_cast<std::size_t>(most - counts.begin())]);
}

void CsvReader::ReadRow() {
  if (!delimiter_) FindDelimiter();
  line_ = nextLine_;
  text_.clear();
  spans_.clear();
  do {
    ReadField();
  } while (TakeDelimiter());
  TakeLineEnd();
  LayOutFields();
}

void CsvReader::ReadField() {
  fieldBegin_ = text_.size();
  if (options_.trim) SkipBlanks();
  const bool isQuoted = Peek() == '"';
  isQuoted ? ReadQuoted() : CopyUpTo(plainStops_);
  if (Peek() == 0) FailAtNul();
  EndField(isQuoted);
}

void CsvReader::SkipBlanks() {
  for (int c = Peek(); IsBlankCharacter(c) && c != delimiter_; c = Peek()) ++at_;
}

void CsvReader::ReadQuoted() {
  const long opened = nextLine_;
  ++at_;
  for (bool isOpen = true; isOpen;) {
    CopyUpTo(quotedStops_);
    const int c = Peek();
    if (c < 0)
      Fail(opened, "the quote that opens here is never closed; close it with a second one");
    if (c == 0) FailAtNul();
    if (c == '"') {
      isOpen = !CloseQuote();
    } else if (TakeLineEnd()) {
      Append("\n", 1);
    }
  }
}

// False when the quote is the first of a doubled one.
bool CsvReader::CloseQuote() {
  ++at_;
  if (Peek() == '"') {
    Append("\"", 1);
    ++at_;
    return false;
  }
  SkipBlanks();
  const int c = Peek();
  if (c >= 0 && !plainStops_[static_cast<std::size_t>(c)]) {
    Fail(nextLine_, "text follows a closing quote; a quote inside quotes is written twice");
  }
  return true;
}

void CsvReader::CopyUpTo(const Stops& stops) {
  while (Peek() >= 0) {
    const std::size_t stop = FindStop(stops);
    Append(buffer_.data() + at_, stop - at_);
    at_ = stop;
    if (at_ < end_) return;
  }
}

void CsvReader::Append(const char* bytes, std::size_t count) {
  text_.append(bytes, count);
  if (text_.size() - fieldBegin_ > options_.maxFieldBytes) {
    Fail(line_, "a field is longer than " + std::to_string(options_.maxFieldBytes) +
                    " bytes; look for a quote that is not closed");
  }
  if (text_.size() > options_.maxRowBytes) {
    Fail(line_, "the row is longer than " + std::to_string(options_.maxRowBytes) +
                    " bytes; every row stands on a line of its own");
  }
}

void CsvReader::EndField(bool quoted) {
  if (spans_.size() == options_.maxFields) {
    Fail(line_, "the row has more than " + std::to_string(options_.maxFields) + " fields");
  }
  spans_.push_back({fieldBegin_, text_.size(), quoted});
}

bool CsvReader::TakeDelimiter() {
  if (!delimiter_ || Peek() != static_cast<int>(Index(delimiter_))) return false;
  ++at_;
  return true;
}

bool CsvReader::TakeLineEnd() {
  const int c = Peek();
  if (c != '\n' && c != '\r') return false;
  ++at_;
  if (c == '\r' && Peek() == '\n') ++at_;
  ++nextLine_;
  return true;
}

void CsvReader::LayOutFields() {
  fields_.clear();
  for (const Span& span : spans_) {
    const auto field = std::string_view(text_).substr(span.begin, span.end - span.begin);
    fields_.push_back(options_.trim && !span.quoted ? Trimmed(field) : field);
    if (!IsUtf8(field)) Fail(line_, "the text is not UTF-8; save the file as UTF-8");
  }
  if (!options_.dropTrailingEmpty) return;
  while (fields_.size() > 1 && fields_.back().empty()) fields_.pop_back();
}

bool CsvReader::IsBlank() const {
  return std::all_of(spans_.begin(), spans_.end(), [this](const Span& span) {
    return !span.quoted &&
           Trimmed(std::string_view(text_).substr(span.begin, span.end - span.begin)).empty();
  });
}

}  // namespace embedded
