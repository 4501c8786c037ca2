#include "host/HostApplication.h"

#include <cstdlib>

namespace {

HostApplication*& TheApplication() {
  static HostApplication none;
  static HostApplication* application = &none;
  if (!application) application = &none;
  return application;
}

}  // namespace

HostApplication::~HostApplication() = default;

const char* HostApplication::Environment(const char* iName) { return std::getenv(iName); }

void HostApplication::Install(HostApplication* iApplication) { TheApplication() = iApplication; }

HostApplication& HostApplication::Installed() { return *TheApplication(); }
