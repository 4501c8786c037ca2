#include "embedded/storage/DocumentFile.h"

#include "embedded/storage/DocumentReader.h"
#include "embedded/storage/DocumentWriter.h"
#include "embedded/storage/FileReplacement.h"
#include "embedded/storage/JsonLimits.h"
#include "embedded/storage/JsonTree.h"

namespace embedded {

namespace fs = std::filesystem;

Owned<Document> ReadDocument(std::string_view iText, const std::string& iName) {
  return BuildDocument(JsonTree(iText, iName), FollowLinks(iName).parent_path());
}

Owned<Document> LoadDocument(const fs::path& iFile) {
  return ReadDocument(ReadWholeFile(iFile, JsonLimits::Current().bytes), iFile.string());
}

std::string WriteDocument(const Document& iDocument, const fs::path& iFolder) {
  return DocumentWriter(iDocument, iFolder).Write();
}

std::vector<std::string> SaveDocument(const Document& iDocument, const fs::path& iFile) {
  return ReplaceFile(iFile, WriteDocument(iDocument, FollowLinks(iFile).parent_path()));
}

}  // namespace embedded
