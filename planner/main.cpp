#include <csignal>
#include <cstdlib>
#include <cxxabi.h>
#include <exception>
#include <iostream>
#include <new>
#include <poll.h>
#include <string>
#include <string_view>
#include <typeinfo>
#include <unistd.h>
#include <vector>

#include "planner/Program.h"
#include "planner/language/CtrlC.h"

namespace {

constexpr int kBad = 2;

[[noreturn]] void LeaveWithoutMemory() {
  const std::string_view text = biwplan::kMemoryEnds;
  [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
  ::_exit(kBad);
}

// Where memory ends while something is being given back, nothing but the end is left. Documents are
// replaced as a whole, and what lies beside them is swept by the next command.
[[noreturn]] void Terminate() {
  const std::type_info* const type = abi::__cxa_current_exception_type();
  if (type && *type == typeid(std::bad_alloc)) LeaveWithoutMemory();
  std::abort();
}

bool HasReader() {
  pollfd results{STDOUT_FILENO, POLLOUT, 0};
  return ::poll(&results, 1, 0) >= 0 && (results.revents & POLLERR) == 0;
}

int Run(int argc, char** argv) {
  // Who reads the results may leave before they end; the document is saved all the same.
  std::signal(SIGPIPE, SIG_IGN);
  biwplan::WatchCtrlC();
  biwplan::Console console(std::cout, std::cerr, isatty(STDERR_FILENO) != 0);
  const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  const int status = biwplan::RunProgram(arguments, {std::cin, isatty(STDIN_FILENO) != 0}, console);
  console.results.flush();
  if (console.results) return status;
  if (status != kBad && HasReader()) {
    console.terminal << "biwplan: the results cannot be written\n" << std::flush;
  }
  return kBad;
}

}  // namespace

int main(int argc, char** argv) {
  std::set_terminate(Terminate);
  try {
    return Run(argc, argv);
  } catch (const std::bad_alloc&) {
    LeaveWithoutMemory();
  }
}
