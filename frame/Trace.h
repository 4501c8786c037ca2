#pragma once

#include <exception>

#include "host/component/ZefTrace.h"

// The one trace of the library.
extern ZefTrace TuvKelBIWUtilsTrace;

// Writes an operation's exit line whenever the operation returns, after its other locals are gone.
// An exception that passes is no return: the line is not written then. Texts are not copied.
class TraceScope {
 public:
  // For an operation without entry line.
  explicit TraceScope(const char* iExitLine)
      : exitLine_(iExitLine), exceptions_(std::uncaught_exceptions()) {}
  TraceScope(const char* iEntryLine, const char* iExitLine) : TraceScope(iExitLine) {
    TuvKelBIWUtilsTrace.TraPutLN(iEntryLine);
  }
  ~TraceScope() {
    if (std::uncaught_exceptions() == exceptions_) TuvKelBIWUtilsTrace.TraPutLN(exitLine_);
  }
  TraceScope(const TraceScope&) = delete;
  TraceScope& operator=(const TraceScope&) = delete;

 private:
  const char* exitLine_;
  int exceptions_;
};
