#pragma once

#include <filesystem>

namespace embedded {
class CatalogStore;
}

namespace biwplan {

// A file or folder of the resources, such as "viewer/scene.html": in $TUV_RESOURCES, if that is
// set, or beside the program: in share/TuvKelBIWUtils of its installation or of the build, or in
// the resources of the source tree above it. Empty where there is none.
std::filesystem::path FindResource(const std::filesystem::path& iName);

// Has the catalogs searched in $TUV_RESOURCES, if that is set, and beside the program.
void AddResources(embedded::CatalogStore& ioCatalogs);

}  // namespace biwplan
