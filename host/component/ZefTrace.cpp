#include "host/component/ZefTrace.h"

#include <cstdio>
#include <fstream>
#include <set>
#include <unordered_map>
#include <utility>

namespace {

struct Channel {
  std::string name;
  std::string output;
};

// Outlives every trace, so that a line on a destroyed one is recognised.
struct Traces {
  std::unordered_map<const ZefTrace*, Channel> live;
  std::set<std::string> on;
  TraceTap tap;
  std::function<void(const char*)> receiver;
  bool listening = false;
};

Traces& TheTraces() {
  static Traces* const traces = new Traces;
  return *traces;
}

void ListenAsNeeded() { TheTraces().listening = TheTraces().tap || !TheTraces().on.empty(); }

void Write(const Channel& channel, const char* line) {
  if (channel.output == "STDERR") {
    const auto& receiver = TheTraces().receiver;
    receiver ? receiver(line) : static_cast<void>(std::fprintf(stderr, "%s\n", line));
    return;
  }
  std::ofstream(channel.output, std::ios::app) << line << '\n';
}

}  // namespace

ZefTrace::ZefTrace(const char* iName, const char*, int iMode, const char* iOutput, int) {
  TheTraces().live[this] = {iName, iOutput ? iOutput : "STDERR"};
  if (iMode != 0) SwitchTrace(iName, true);
}

ZefTrace::~ZefTrace() { TheTraces().live.erase(this); }

void ZefTrace::TraPutLN(const char* iLine) {
  Traces& traces = TheTraces();
  if (!traces.listening || !iLine) return;
  const auto channel = traces.live.find(this);
  if (channel == traces.live.end()) return;
  if (traces.tap) traces.tap(channel->second.name, iLine);
  if (traces.on.contains(channel->second.name)) Write(channel->second, iLine);
}

bool ZefTrace::IsHeard() const {
  const Traces& traces = TheTraces();
  if (!traces.listening) return false;
  const auto channel = traces.live.find(this);
  return channel != traces.live.end() && (traces.tap || traces.on.contains(channel->second.name));
}

void SwitchTrace(const char* iName, bool iOn) {
  if (iOn) {
    TheTraces().on.insert(iName);
  } else {
    TheTraces().on.erase(iName);
  }
  ListenAsNeeded();
}

bool IsTraceOn(const char* iName) { return TheTraces().on.contains(iName); }

bool IsTraceRegistered(const char* iName) {
  for (const auto& [trace, channel] : TheTraces().live) {
    if (channel.name == iName) return true;
  }
  return false;
}

void DivertTraces(std::function<void(const char*)> iReceiver) {
  TheTraces().receiver = std::move(iReceiver);
}

void TapTraces(TraceTap iTap) {
  TheTraces().tap = std::move(iTap);
  ListenAsNeeded();
}
