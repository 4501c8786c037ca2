#pragma once

#include <string>

namespace biwplan {

// A page that shows a scene, given as binary glTF, without any other file. InputError where the
// viewer was not built.
std::string PageOf(const std::string& iGlb);

}  // namespace biwplan
