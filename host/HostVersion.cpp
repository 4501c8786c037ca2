#include "host/HostVersion.h"

#include <string>

const char* HostVersion() {
  static const std::string version = std::to_string(kHostVersionMajor) + "." +
                                     std::to_string(kHostVersionMinor) + "." +
                                     std::to_string(kHostVersionPatch);
  return version.c_str();
}
