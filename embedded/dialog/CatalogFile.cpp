#include "embedded/dialog/CatalogFile.h"

#include <cstdint>
#include <fstream>
#include <string_view>
#include <utility>

#include "embedded/Error.h"
#include "embedded/storage/Utf8.h"

namespace embedded {

namespace {

constexpr std::size_t kMostBytes = std::size_t{1} << 20;
constexpr std::string_view kBlanks = " \t\r";

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

class CatalogReader {
 public:
  explicit CatalogReader(const std::filesystem::path& file) : file_(file) {}

  Catalog Read() {
    const std::string bytes = ReadBytes();
    std::string_view rest = bytes;
    if (rest.starts_with("\xEF\xBB\xBF")) rest.remove_prefix(3);
    for (line_ = 1; !rest.empty(); ++line_) {
      const std::size_t end = rest.find('\n');
      TakeLine(Trim(rest.substr(0, end)));
      rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    }
    return std::move(catalog_);
  }

 private:
  std::string ReadBytes() {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file_, error)) FailFile("it must be a readable file");
    const std::uintmax_t size = std::filesystem::file_size(file_, error);
    std::ifstream stream(file_, std::ios::binary);
    if (error || !stream) FailFile("it must be a readable file");
    if (size > kMostBytes) FailFile("it must have at most 1 MiB");
    std::string bytes(static_cast<std::size_t>(size), '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (stream.bad()) FailFile("it must be a readable file");
    bytes.resize(static_cast<std::size_t>(stream.gcount()));
    return bytes;
  }

  void TakeLine(std::string_view line) {
    if (line.empty() || line.front() == '#') return;
    if (!IsUtf8(line) || line.find('\0') != std::string_view::npos) {
      Fail("the line is no text; save the file as UTF-8");
    }
    const std::size_t equals = line.find('=');
    const std::string_view key = Trim(line.substr(0, equals));
    if (equals == std::string_view::npos || key.empty()) {
      Fail("a line must be \"key = text\", or a comment that begins with #");
    }
    const std::string text = Unescape(Trim(line.substr(equals + 1)));
    if (!catalog_.emplace(key, text).second) {
      Fail("the key \"" + std::string(key) + "\" stands there before; keep one of the two");
    }
  }

  std::string Unescape(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
      plain += text[i] == '\\' ? Escaped(text.substr(++i)) : text[i];
    }
    return plain;
  }

  char Escaped(std::string_view afterBackslash) {
    switch (afterBackslash.empty() ? '\0' : afterBackslash.front()) {
      case 'n':
        return '\n';
      case 't':
        return '\t';
      case 's':
        return ' ';
      case '\\':
        return '\\';
      default:
        Fail("after a backslash must stand n, t, s or a second backslash");
    }
  }

  [[noreturn]] void FailFile(const std::string& what) {
    throw InputError("The message catalog " + file_.string() + " cannot be read: " + what + ".");
  }
  [[noreturn]] void Fail(const std::string& what) {
    throw InputError(file_.string() + ", line " + std::to_string(line_) + ": " + what);
  }

  const std::filesystem::path& file_;
  int line_ = 0;
  Catalog catalog_;
};

}  // namespace

Catalog ReadCatalogFile(const std::filesystem::path& iFile) { return CatalogReader(iFile).Read(); }

}  // namespace embedded
