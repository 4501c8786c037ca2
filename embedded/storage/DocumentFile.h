#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/model/Document.h"
#include "embedded/model/Owned.h"

namespace embedded {

// Process document files: JSON as docs/document-format.md describes it. Everything that a document
// holds survives; the same document gives the same bytes. What fails is an InputError.

// A new document. Nothing else changes, whatever the file holds; the error names the file, the
// place in it as JSON pointer and what would be right. A process database that cannot be opened is
// no error: Document::Lost says why.
Owned<Document> LoadDocument(const std::filesystem::path& iFile);
// The same from text. `iName` names it in errors, and its folder is where paths in it begin.
Owned<Document> ReadDocument(std::string_view iText, const std::string& iName);

// Replaces the file as a whole: whatever interrupts it leaves all of the former file or all of the
// new one, as ReplaceFile does it.
std::vector<std::string> SaveDocument(const Document& iDocument,
                                      const std::filesystem::path& iFile);
// The text that is saved. Paths in it are relative to `iFolder`, empty for the current one.
std::string WriteDocument(const Document& iDocument, const std::filesystem::path& iFolder = {});

}  // namespace embedded
