#pragma once

#include <string>

namespace biwplan {

// What Graphviz draws of a DOT file, in the format "svg" or "png". Another process does it, so that
// nothing in the file can harm this one. InputError when it fails or takes more than a minute.
std::string Draw(const std::string& iDot, const std::string& iFormat);

}  // namespace biwplan
