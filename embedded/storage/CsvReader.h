#pragma once

#include <array>
#include <cstddef>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace embedded {

struct CsvOptions {
  // 0 finds out: whichever of tab, comma and semicolon the first row with one of them has most of.
  char delimiter = 0;
  // Lines that begin with # or $ are skipped.
  bool comments = true;
  // Blanks around a field count only inside quotes.
  bool trim = true;
  // Empty fields at the end of a row are dropped.
  bool dropTrailingEmpty = false;
  std::size_t maxFieldBytes = std::size_t{1} << 20;
  std::size_t maxRowBytes = std::size_t{8} << 20;
  std::size_t maxFields = 10'000;
};

// Reads delimited text row by row: UTF-8 with or without byte-order mark; lines end with LF, CRLF
// or CR, the last one need not. A field may stand in quotes, with doubled quotes and line ends
// (read as LF) inside. Rows without any content are skipped. Memory is bounded by the limits, not
// by the text.
class CsvReader {
 public:
  // `iStream` outlives the reader; open files in binary mode. `iSource` names it in errors.
  CsvReader(std::istream& iStream, std::string iSource, CsvOptions iOptions = {});

  // Moves on to the next row; false at the end. InputError with source and line for text that is
  // no such table: an unclosed quote, a NUL byte, other encodings, anything beyond a limit.
  bool Next();
  // The fields of the row, valid until Next.
  const std::vector<std::string_view>& Fields() const { return fields_; }
  // The line that the row begins on, from 1.
  long Line() const { return line_; }
  // Source and line of the row, as an error names them.
  std::string Place() const;
  // 0 while no row had one.
  char Delimiter() const { return delimiter_; }

 private:
  struct Span {
    std::size_t begin;
    std::size_t end;
    bool quoted;
  };
  using Stops = std::array<bool, 256>;

  int Peek();
  bool Fill();
  void SkipByteOrderMark();
  void SkipBlanks();
  void SkipLine();
  bool FindRow();
  void FindDelimiter();
  void UseDelimiter(char delimiter);
  void ReadRow();
  void ReadField();
  void ReadQuoted();
  bool CloseQuote();
  std::size_t FindStop(const Stops& stops) const;
  void CopyUpTo(const Stops& stops);
  void Append(const char* bytes, std::size_t count);
  void EndField(bool quoted);
  bool TakeDelimiter();
  bool TakeLineEnd();
  void LayOutFields();
  bool IsBlank() const;
  [[noreturn]] void FailAtNul() const;
  [[noreturn]] void Fail(long line, const std::string& what) const;

  std::istream& stream_;
  std::string source_;
  CsvOptions options_;
  char delimiter_ = 0;
  Stops plainStops_{};
  Stops quotedStops_{};
  Stops lineStops_{};

  std::vector<char> buffer_;
  std::size_t at_ = 0;
  std::size_t end_ = 0;
  long nextLine_ = 1;

  long line_ = 0;
  std::size_t fieldBegin_ = 0;
  std::string text_;
  std::vector<Span> spans_;
  std::vector<std::string_view> fields_;
};

}  // namespace embedded
