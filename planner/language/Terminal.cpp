#include "planner/language/Terminal.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <histedit.h>

#include "planner/report/Json.h"
#include "planner/report/Text.h"

namespace biwplan {

namespace {

constexpr int kMostRemembered = 1000;

// Where the user's programs keep their state; empty when there is no home.
std::filesystem::path TypedLinesFile() {
  const char* const state = std::getenv("XDG_STATE_HOME");
  const char* const home = std::getenv("HOME");
  if (state && *state) return std::filesystem::path(state) / "biwplan" / "history";
  if (home && *home) return std::filesystem::path(home) / ".local/state/biwplan/history";
  return {};
}

std::string CommonBeginning(const std::vector<std::string>& texts) {
  std::string common = texts.front();
  for (const std::string& text : texts) {
    std::size_t length = 0;
    while (length < common.size() && common[length] == text[length]) ++length;
    common.resize(length);
  }
  return common;
}

}  // namespace

struct Terminal::Editor {
  explicit Editor(Session& ioSession)
      : session(ioSession),
        line(el_init("biwplan", stdin, stdout, stderr)),
        history(history_init()) {
    HistEvent event;
    ::history(history, &event, H_SETSIZE, kMostRemembered);
    ::history(history, &event, H_SETUNIQUE, 1);
    const std::string file = TypedLinesFile().string();
    if (!file.empty()) ::history(history, &event, H_LOAD, file.c_str());
    el_set(line, EL_CLIENTDATA, this);
    el_set(line, EL_PROMPT, &Editor::Prompt);
    el_set(line, EL_EDITOR, "emacs");
    el_set(line, EL_HIST, ::history, history);
    // With narrow texts the library would lose copies of them.
    el_wset(line, EL_ADDFN, L"biwplan-complete", L"Completes the word.", &Editor::CompleteWord);
    el_wset(line, EL_ADDFN, L"biwplan-abandon", L"Drops the line.", &Editor::Abandon);
    el_set(line, EL_BIND, "^I", "biwplan-complete", nullptr);
    // While a line is read, Ctrl-C is a key like others.
    el_set(line, EL_SETTY, "-d", "-isig", nullptr);
    el_set(line, EL_BIND, "^C", "biwplan-abandon", nullptr);
  }

  ~Editor() {
    const std::filesystem::path file = TypedLinesFile();
    std::error_code error;
    if (!file.empty()) std::filesystem::create_directories(file.parent_path(), error);
    HistEvent event;
    if (!file.empty() && !error) ::history(history, &event, H_SAVE, file.c_str());
    history_end(history);
    el_end(line);
  }
  Editor(const Editor&) = delete;
  Editor& operator=(const Editor&) = delete;

  static Editor& Of(EditLine* line) {
    void* self = nullptr;
    el_get(line, EL_CLIENTDATA, &self);
    return *static_cast<Editor*>(self);
  }

  static char* Prompt(EditLine* line) { return Of(line).prompt.data(); }

  static unsigned char Abandon(EditLine* line, wint_t) {
    const LineInfo* const text = el_line(line);
    el_cursor(line, static_cast<int>(text->lastchar - text->cursor));
    el_deletestr(line, static_cast<int>(text->lastchar - text->buffer));
    return CC_REFRESH;
  }

  // Puts in what all candidates have in common; lists them when that is nothing new.
  static unsigned char CompleteWord(EditLine* line, wint_t) {
    const LineInfo* const text = el_line(line);
    const std::string typed(text->buffer, text->cursor);
    const std::vector<std::string> found = Complete(typed, Of(line).session);
    if (found.empty()) return CC_ERROR;
    const std::string word = typed.substr(typed.find_last_of(" \t") + 1);
    const std::string common = CommonBeginning(found) + (found.size() == 1 ? " " : "");
    if (common == word) {
      std::fputs(("\n" + Wrapped(Json(found), 0)).c_str(), stdout);
      return CC_REDISPLAY;
    }
    el_deletestr(line, static_cast<int>(Width(word)));
    return el_insertstr(line, common.c_str()) == 0 ? CC_REFRESH : CC_ERROR;
  }

  Session& session;
  EditLine* line;
  ::History* history;
  std::string prompt;
};

Terminal::Terminal(Session& ioSession) {
  std::setlocale(LC_CTYPE, "");
  editor_ = std::make_unique<Editor>(ioSession);
}

Terminal::~Terminal() = default;

std::optional<std::string> Terminal::Ask(const std::string& iPrompt) {
  editor_->prompt = iPrompt;
  el_resize(editor_->line);
  int length = 0;
  const char* const text = el_gets(editor_->line, &length);
  if (!text || length <= 0) {
    std::fputs("\n", stdout);
    return std::nullopt;
  }
  std::string line(text, static_cast<std::size_t>(length));
  if (line.ends_with('\n')) line.pop_back();
  return line;
}

void Terminal::Remember(const std::string& iLine) {
  HistEvent event;
  ::history(editor_->history, &event, H_ENTER, iLine.c_str());
}

}  // namespace biwplan
