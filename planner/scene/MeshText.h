#pragma once

#include <string>

namespace biwplan {

// What a library is given of a mesh file, so that no file makes it open others or collect names
// without end. Each throws a std::runtime_error whose text says what would be right.

// The lines of points and faces of an OBJ file.
std::string ObjShape(const std::string& iBytes);
// An STL file as it is, unless it is in too many pieces.
std::string StlShape(std::string iBytes);

}  // namespace biwplan
