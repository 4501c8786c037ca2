#pragma once

#include <filesystem>
#include <string>
#include <vector>

// Looks at a file and answers the names of the libraries that it needs, as "libTuvHost.so.0.1", in
// the file's order. LibraryUnusable unless it is a shared library of this machine with all its
// bytes: the system's own loader looks at less, and a library that is cut short would end the
// process.
std::vector<std::string> LibrariesNeededBy(const std::filesystem::path& iFile);
