#pragma once

#include <filesystem>

#include "embedded/model/Document.h"
#include "embedded/model/Owned.h"
#include "embedded/storage/JsonTree.h"

namespace embedded {

// A new document from a JSON tree; paths in it begin at `iFolder`. Whatever the document would
// refuse, or would take although it makes no sense, is an InputError that names the place.
Owned<Document> BuildDocument(const JsonTree& iTree, const std::filesystem::path& iFolder);

// Its parts, each from the list of that name. References lead to parts that are read before.
void ReadProducts(Document& ioDocument, const JsonValue& iList,
                  const std::filesystem::path& iFolder);
void ReadProductRoots(Document& ioDocument, const JsonValue& iList);
void ReadFeatures(Document& ioDocument, const JsonValue& iList);
// Assemblies without their children and producers.
void AddAssemblies(Document& ioDocument, const JsonValue& iList);
// The outputs of the activities, and the children and producers of the assemblies.
void ReadOutputs(Document& ioDocument, const JsonValue& iActivities, const JsonValue& iAssemblies);
void ReadChildren(Document& ioDocument, const JsonValue& iAssemblies);
void ReadLinks(Document& ioDocument, const JsonValue& iList);

}  // namespace embedded
