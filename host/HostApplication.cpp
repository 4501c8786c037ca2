#include "host/HostApplication.h"

#include <cstdlib>

namespace {

HostApplication*& TheApplication() {
  // Never destroyed: entry points are asked until the process ends.
  static HostApplication* const none = new HostApplication;
  static HostApplication* application = none;
  if (!application) application = none;
  return application;
}

}  // namespace

HostApplication::~HostApplication() = default;

const char* HostApplication::Environment(const char* iName) {
  return iName ? std::getenv(iName) : nullptr;
}

void HostApplication::Install(HostApplication* iApplication) { TheApplication() = iApplication; }

HostApplication& HostApplication::Installed() { return *TheApplication(); }
