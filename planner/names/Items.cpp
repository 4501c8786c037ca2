#include "planner/names/Items.h"

#include "embedded/Error.h"
#include "planner/import/RowFault.h"
#include "planner/names/Names.h"
#include "planner/names/Nearest.h"

namespace biwplan {

namespace {

// Null when there is none.
embedded::MfgAssembly* FindAssembly(const embedded::Document& document, const std::string& name) {
  if (embedded::MfgAssembly* const assembly = document.FindAssembly(name)) return assembly;
  embedded::MfgAssembly* found = nullptr;
  for (const auto& assembly : document.Assemblies()) {
    if (assembly->OwnName() != name) continue;
    if (found) {
      throw embedded::InputError("several assemblies are called " + Quoted(name) +
                                 "; name one of them by its key, such as " + found->Key());
    }
    found = assembly.Get();
  }
  return found;
}

}  // namespace

embedded::MfgAssembly& AssemblyOf(const embedded::Document& iDocument, const std::string& iName) {
  if (embedded::MfgAssembly* const assembly = FindAssembly(iDocument, iName)) return *assembly;
  NearestNames nearest(iName);
  for (const auto& assembly : iDocument.Assemblies()) {
    nearest.Offer(assembly->Key());
    nearest.Offer(assembly->OwnName());
  }
  throw embedded::InputError("there is no assembly " + Quoted(iName) + nearest.Hint() +
                             "; 'assemblies' lists them");
}

ZefBaseUnknown_var ItemOf(const embedded::Document& iDocument, const std::string& iName) {
  if (embedded::MfgAssembly* const assembly = FindAssembly(iDocument, iName)) {
    return assembly->Identity();
  }
  return Names(iDocument).PartOf(iName).Identity();
}

std::string TitleOf(const embedded::MfgAssembly& iAssembly) {
  const std::string& name = iAssembly.OwnName();
  const bool isPlain = name.empty() || name == iAssembly.Key();
  return isPlain ? iAssembly.Key() : iAssembly.Key() + " " + name;
}

}  // namespace biwplan
