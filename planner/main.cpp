#include <csignal>
#include <iostream>
#include <string>
#include <unistd.h>
#include <vector>

#include "planner/Program.h"
#include "planner/language/CtrlC.h"

int main(int argc, char** argv) {
  // Who reads the results may leave before they end; the document is saved all the same.
  std::signal(SIGPIPE, SIG_IGN);
  biwplan::WatchCtrlC();
  biwplan::Console console(std::cout, std::cerr, isatty(STDERR_FILENO) != 0);
  const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  const int status = biwplan::RunProgram(arguments, {std::cin, isatty(STDIN_FILENO) != 0}, console);
  console.results.flush();
  return console.results ? status : 2;
}
