#include "planner/flow/Picture.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <graphviz/gvc.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "embedded/Error.h"
#include "host/component/Interruption.h"

namespace biwplan {

namespace {

constexpr rlim_t kMostSeconds = 60;
constexpr int kPause = 50;  // ms

void Write(int pipe, const char* bytes, std::size_t count) {
  while (count > 0) {
    const ssize_t written = ::write(pipe, bytes, count);
    if (written < 0 && errno != EINTR) ::_exit(1);
    if (written < 0) continue;
    bytes += written;
    count -= static_cast<std::size_t>(written);
  }
}

// Ends the process. What Graphviz has to say of its fonts is nobody's business.
[[noreturn]] void DrawInto(int pipe, const std::string& dot, const std::string& format) {
  const int nowhere = ::open("/dev/null", O_RDWR);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) ::dup2(nowhere, stream);
  for (const int signal : {SIGINT, SIGSEGV, SIGABRT, SIGFPE, SIGBUS, SIGXCPU})
    std::signal(signal, SIG_DFL);
  // Whoever waits for the picture may be interrupted.
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  const rlimit seconds{kMostSeconds, kMostSeconds + 5};
  const rlimit none{0, 0};
  ::setrlimit(RLIMIT_CPU, &seconds);
  ::setrlimit(RLIMIT_CORE, &none);
  GVC_t* const context = gvContext();
  Agraph_t* const graph = agmemread(dot.c_str());
  if (!context || !graph) ::_exit(1);
  std::string attribute = "dpi";
  std::string resolution = "120";
  if (format == "png") agattr(graph, AGRAPH, attribute.data(), resolution.data());
  char* bytes = nullptr;
  unsigned int count = 0;
  if (gvLayout(context, graph, "dot") != 0 ||
      gvRenderData(context, graph, format.c_str(), &bytes, &count) != 0 || count == 0) {
    ::_exit(1);
  }
  Write(pipe, bytes, count);
  ::_exit(0);
}

// Nothing when the user has had enough.
std::string ReadAll(int pipe) {
  std::string bytes;
  std::array<char, 65536> block{};
  while (true) {
    pollfd readable{pipe, POLLIN, 0};
    if (::poll(&readable, 1, kPause) <= 0 && !Interruption::IsRequested()) continue;
    if (Interruption::IsRequested()) return {};
    const ssize_t count = ::read(pipe, block.data(), block.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return bytes;
    bytes.append(block.data(), static_cast<std::size_t>(count));
  }
}

// How the process ended, as waitpid tells it.
int WaitFor(pid_t process) {
  int status = 0;
  while (::waitpid(process, &status, 0) < 0) {
    if (errno != EINTR) return -1;
  }
  return status;
}

}  // namespace

std::string Draw(const std::string& iDot, const std::string& iFormat) {
  int ends[2] = {};
  if (::pipe2(ends, O_CLOEXEC) != 0) throw embedded::InputError("no picture can be drawn now");
  const pid_t process = ::fork();
  if (process == 0) DrawInto(ends[1], iDot, iFormat);
  ::close(ends[1]);
  std::string bytes = process > 0 ? ReadAll(ends[0]) : "";
  ::close(ends[0]);
  if (process > 0 && Interruption::IsRequested()) ::kill(process, SIGKILL);
  const int status = process > 0 ? WaitFor(process) : -1;
  Interruption::Check();
  if (status == 0) return bytes;
  const bool isSlow = status > 0 && WIFSIGNALED(status) && WTERMSIG(status) == SIGXCPU;
  throw embedded::InputError(
      std::string(isSlow ? "Graphviz takes more than a minute to draw this process as "
                         : "Graphviz cannot draw this process as ") +
      iFormat + "; name an activity to draw it alone, or write a .dot file");
}

}  // namespace biwplan
