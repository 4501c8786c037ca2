#pragma once

#include <chrono>
#include <string_view>

namespace biwplan {

// A bar for work whose length nobody knows, drawn by the clock while somebody watches: from a
// second on, and gone at the end. Only one lives at a time. It uses SIGALRM.
class Pulse {
 public:
  // Draws nothing on a negative file.
  Pulse(int iTerminal, std::string_view iWhat,
        std::chrono::milliseconds iPatience = std::chrono::seconds(1));
  ~Pulse();
  Pulse(const Pulse&) = delete;
  Pulse& operator=(const Pulse&) = delete;

  // Whoever writes to a terminal calls this before; the bar comes back after another second.
  static void Hide() noexcept;
};

}  // namespace biwplan
