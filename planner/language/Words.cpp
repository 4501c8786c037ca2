#include "planner/language/Words.h"

#include <algorithm>

#include "embedded/Error.h"
#include "embedded/storage/Utf8.h"

namespace biwplan {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 && !IsBlank(c); }

void RequireText(std::string_view line) {
  if (std::none_of(line.begin(), line.end(), IsControl) && embedded::IsUtf8(line)) return;
  throw embedded::InputError("the line is no text; commands are written in UTF-8");
}

class Splitter {
 public:
  explicit Splitter(std::string_view line) : rest_(line) {}

  std::vector<std::string> Run() {
    std::vector<std::string> words;
    for (SkipBlanks(); !rest_.empty() && rest_[0] != '#'; SkipBlanks()) words.push_back(Word());
    return words;
  }

 private:
  void SkipBlanks() {
    while (!rest_.empty() && IsBlank(rest_[0])) rest_.remove_prefix(1);
  }

  char Take() {
    const char c = rest_[0];
    rest_.remove_prefix(1);
    return c;
  }

  std::string Word() {
    std::string word;
    while (!rest_.empty() && !IsBlank(rest_[0])) {
      const char c = Take();
      if (c == '"' || c == '\'') {
        TakeQuoted(c, word);
      } else {
        word += c;
      }
    }
    return word;
  }

  void TakeQuoted(char quote, std::string& word) {
    while (!rest_.empty()) {
      char c = Take();
      if (c == quote) return;
      const bool escapes = quote == '"' && c == '\\' && !rest_.empty();
      if (escapes && (rest_[0] == '"' || rest_[0] == '\\')) c = Take();
      word += c;
    }
    throw embedded::InputError(std::string("a quote ") + quote + " is not closed in the line");
  }

  std::string_view rest_;
};

}  // namespace

std::vector<std::string> SplitWords(std::string_view iLine) {
  RequireText(iLine);
  return Splitter(iLine).Run();
}

std::string QuotedWord(const std::string& iWord) {
  const bool isPlain =
      !iWord.empty() && iWord[0] != '#' && iWord.find_first_of(" \t'\"") == std::string::npos;
  if (isPlain) return iWord;
  std::string quoted = "\"";
  for (const char c : iWord) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + '"';
}

std::string InOneLine(const std::vector<std::string>& iWords) {
  std::string line;
  for (const std::string& word : iWords) line += (line.empty() ? "" : " ") + QuotedWord(word);
  return line;
}

}  // namespace biwplan
