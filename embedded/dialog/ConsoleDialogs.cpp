#include "embedded/dialog/ConsoleDialogs.h"

#include <iostream>
#include <limits>
#include <string>
#include <unistd.h>

#include "host/values/ZefUnicodeString.h"

namespace embedded {

std::unique_ptr<ConsoleDialogs> ConsoleDialogs::OnStandardStreams() {
  const bool hasUser = isatty(STDIN_FILENO) != 0 && isatty(STDERR_FILENO) != 0;
  return std::make_unique<ConsoleDialogs>(std::cerr, hasUser ? &std::cin : nullptr);
}

int ConsoleDialogs::Show(const DialogRequest& iRequest) {
  const int length = ZefUnicodeString(iRequest.title).GetLengthInChar();
  if (length > 0) {
    out_ << iRequest.title << '\n' << std::string(static_cast<std::size_t>(length), '-') << '\n';
  }
  out_ << iRequest.message;
  if (!iRequest.message.ends_with('\n')) out_ << '\n';
  if (keys_) {
    out_ << "[Enter] " << std::flush;
    keys_->ignore(std::numeric_limits<std::streamsize>::max(), '\n');
  }
  out_ << std::flush;
  return 0;
}

}  // namespace embedded
