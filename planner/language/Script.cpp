#include "planner/language/Script.h"

#include "embedded/Error.h"

namespace biwplan {

namespace {

constexpr std::size_t kMostLineBytes = std::size_t{1} << 20;

// False at the end.
bool ReadLine(std::istream& lines, const std::string& place, std::string& line) {
  line.clear();
  std::streambuf& bytes = *lines.rdbuf();
  constexpr int kEnd = std::char_traits<char>::eof();
  int c = bytes.sbumpc();
  if (c == kEnd) return false;
  for (; c != kEnd && c != '\n'; c = bytes.sbumpc()) {
    if (line.size() == kMostLineBytes) {
      throw embedded::InputError(place + ": the line is longer than a megabyte; a script is text " +
                                 "with one command in a line");
    }
    line += static_cast<char>(c);
  }
  return true;
}

}  // namespace

bool RunScript(std::istream& iLines, const std::string& iName, bool iKeepsGoing, Session& ioSession,
               Interpreter& ioInterpreter) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  bool allSucceeded = true;
  std::string line;
  for (long number = 1; !ioSession.IsLeaving(); ++number) {
    const std::string place = iName + ", line " + std::to_string(number);
    if (!ReadLine(iLines, place, line)) break;
    if (number == 1 && line.starts_with(kByteOrderMark)) line.erase(0, kByteOrderMark.size());
    ioInterpreter.Echo(line);
    if (ioInterpreter.RunLine(line, place) != Outcome::Failed) continue;
    if (!iKeepsGoing) return false;
    allSucceeded = false;
  }
  return allSucceeded;
}

}  // namespace biwplan
