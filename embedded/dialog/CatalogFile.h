#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace embedded {

// The texts of a message catalog by key.
using Catalog = std::map<std::string, std::string, std::less<>>;

// Reads a catalog: UTF-8 text with one message a line, `key = text`, where blanks around key and
// text do not count. In the text \n is a line break, \t a tab, \s a blank (for blanks at the ends)
// and \\ a backslash. Lines that begin with # and blank lines are passed over. InputError with file
// and line for anything else, for a key that stands there twice, and for more than 1 MiB.
Catalog ReadCatalogFile(const std::filesystem::path& iFile);

}  // namespace embedded
