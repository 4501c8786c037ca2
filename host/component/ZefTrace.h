#pragma once

#include <functional>
#include <string>

// A named trace. Created off (mode 0); it writes once it is switched on by name.
class ZefTrace {
 public:
  // `iOutput` is "STDERR" or the path of a file to append to; `iSize` is not a limit on lines.
  ZefTrace(const char* iName, const char* iComment, int iMode, const char* iOutput, int iSize);
  ~ZefTrace();
  ZefTrace(const ZefTrace&) = delete;
  ZefTrace& operator=(const ZefTrace&) = delete;

  // Writes one line, the text unchanged. Ignored once the trace was destroyed: objects may outlive
  // the library whose trace they write on.
  void TraPutLN(const char* iLine);
  // Whether a line would be written or tapped now.
  bool IsHeard() const;
};

// Receives each line with the name of its trace, whether the trace is on or not.
using TraceTap = std::function<void(const std::string& iTrace, const char* iLine)>;

// Switches traces of this name on or off, those yet to be created, too.
void SwitchTrace(const char* iName, bool iOn);
bool IsTraceOn(const char* iName);
// True while a trace of this name exists.
bool IsTraceRegistered(const char* iName);
// Receives the lines that would go to standard error, in its place; an empty one restores that.
void DivertTraces(std::function<void(const char*)> iReceiver);
// Installs the tap, replacing the former; an empty one removes it.
void TapTraces(TraceTap iTap);
