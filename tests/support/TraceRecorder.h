#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/component/ZefTrace.h"

namespace tests {

// Collects the lines of every trace, or of one, in order, while it lives. One at a time: the
// traces have a single tap.
class TraceRecorder {
 public:
  explicit TraceRecorder(std::string trace = {}) {
    TapTraces([this, only = std::move(trace)](const std::string& from, const char* line) {
      if (only.empty() || from == only) lines_.emplace_back(line);
    });
  }
  ~TraceRecorder() { TapTraces({}); }
  TraceRecorder(const TraceRecorder&) = delete;
  TraceRecorder& operator=(const TraceRecorder&) = delete;

  const std::vector<std::string>& Lines() const { return lines_; }
  // The lines since the last call.
  std::vector<std::string> Take() { return std::exchange(lines_, {}); }

 private:
  std::vector<std::string> lines_;
};

}  // namespace tests
