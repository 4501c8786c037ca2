#pragma once

#include <string>

#include "embedded/model/Document.h"

namespace biwplan {

// A manufacturing assembly by key or, where no key fits, by name; InputError as for Names.
embedded::MfgAssembly& AssemblyOf(const embedded::Document& iDocument, const std::string& iName);
// A part or a manufacturing assembly.
ZefBaseUnknown_var ItemOf(const embedded::Document& iDocument, const std::string& iName);

// "MA-1 Front floor", or the key alone when the assembly has no other name.
std::string TitleOf(const embedded::MfgAssembly& iAssembly);

}  // namespace biwplan
