#include "planner/language/EditLine.h"

#include <cstdlib>
#include <cstring>
#include <editline/readline.h>
#include <filesystem>
#include <memory>

namespace biwplan {

namespace {

constexpr int kMostRemembered = 1000;

// The library calls plain functions.
Session* completing = nullptr;

char* Copy(const std::string& text) { return ::strdup(text.c_str()); }

// A null-ended array that the library frees: the common beginning, then every candidate.
char** OfferCompletions(const char*, int, int end) {
  rl_attempted_completion_over = 1;
  const std::string line(rl_line_buffer, static_cast<std::size_t>(end));
  const std::vector<std::string> found = Complete(line, *completing);
  if (found.empty()) return nullptr;
  std::string common = found.front();
  for (const std::string& candidate : found) {
    std::size_t length = 0;
    while (length < common.size() && common[length] == candidate[length]) ++length;
    common.resize(length);
  }
  auto** const matches = static_cast<char**>(std::calloc(found.size() + 2, sizeof(char*)));
  if (!matches) return nullptr;
  matches[0] = Copy(common);
  for (std::size_t i = 0; i < found.size(); ++i) matches[i + 1] = Copy(found[i]);
  return matches;
}

// Where the user's programs keep their state; empty when there is no home.
std::filesystem::path HistoryFile() {
  const char* const state = std::getenv("XDG_STATE_HOME");
  const char* const home = std::getenv("HOME");
  if (state && *state) return std::filesystem::path(state) / "biwplan" / "history";
  if (home && *home) return std::filesystem::path(home) / ".local/state/biwplan/history";
  return {};
}

}  // namespace

EditLine::EditLine(Session& ioSession) {
  completing = &ioSession;
  static char name[] = "biwplan";
  static char breaks[] = " \t";
  rl_readline_name = name;
  rl_initialize();
  rl_basic_word_break_characters = breaks;
  rl_attempted_completion_function = OfferCompletions;
  using_history();
  stifle_history(kMostRemembered);
  const std::filesystem::path file = HistoryFile();
  if (!file.empty()) read_history(file.c_str());
}

EditLine::~EditLine() {
  const std::filesystem::path file = HistoryFile();
  std::error_code error;
  if (!file.empty()) std::filesystem::create_directories(file.parent_path(), error);
  if (!file.empty() && !error) write_history(file.c_str());
  rl_attempted_completion_function = nullptr;
  completing = nullptr;
}

std::optional<std::string> EditLine::Ask(const std::string& iPrompt) {
  struct Free {
    void operator()(char* text) const { std::free(text); }
  };
  const std::unique_ptr<char, Free> line(readline(iPrompt.c_str()));
  if (!line) return std::nullopt;
  return std::string(line.get());
}

void EditLine::Remember(const std::string& iLine) { add_history(iLine.c_str()); }

}  // namespace biwplan
