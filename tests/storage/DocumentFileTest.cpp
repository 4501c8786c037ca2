#include <gmock/gmock.h>

#include "embedded/Error.h"
#include "embedded/storage/DocumentFile.h"
#include "tests/storage/DocumentFileSample.h"
#include "tests/support/ReferenceAudit.h"

namespace {

using namespace embedded;
using tests::Describe;
using tests::RichDocument;

class DocumentFileTest : public tests::ReferenceAudit {};

TEST_F(DocumentFileTest, KeepsEverythingAndGivesTheSameBytesAgain) {
  const Owned<Document> document = RichDocument();
  const std::string text = WriteDocument(*document);
  const Owned<Document> again = ReadDocument(text, "door.json");
  EXPECT_EQ(Describe(*again), Describe(*document));
  EXPECT_EQ(WriteDocument(*again), text);
}

}  // namespace
