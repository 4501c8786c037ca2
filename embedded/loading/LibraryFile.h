#pragma once

#include <filesystem>

namespace embedded {

// InputError unless the file is a shared library of this machine with all its bytes. The system's
// own loader looks at less: a library that is cut short would end the process.
void CheckLibraryFile(const std::filesystem::path& iFile);

}  // namespace embedded
