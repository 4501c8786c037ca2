#include "tests/support/SourceFiles.h"

namespace tests {

std::string SourceFile(const std::string& path) { return TUV_SOURCE_DIR "/" + path; }

}  // namespace tests
