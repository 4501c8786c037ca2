#pragma once

namespace embedded {
class CatalogStore;
}

namespace biwplan {

// Has the catalogs searched in $TUV_RESOURCES, if that is set, and beside the program: in
// share/TuvKelBIWUtils of its installation, or in the resources of the source tree above it.
void AddResources(embedded::CatalogStore& ioCatalogs);

}  // namespace biwplan
