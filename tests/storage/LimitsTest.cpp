#include <gmock/gmock.h>

#include "embedded/storage/DocumentFile.h"
#include "tests/storage/DocumentFileSample.h"
#include "tests/support/LoweredLimits.h"
#include "tests/support/Plant.h"
#include "tests/support/ReferenceAudit.h"
#include "tests/support/ScratchFolder.h"

namespace {

using namespace embedded;
using testing::HasSubstr;
using tests::ErrorOf;

class LimitsTest : public tests::ReferenceAudit {};

// The least limit under which an action ends well.
template <class Action>
std::size_t LeastFor(std::size_t JsonLimits::*limit, const Action& action) {
  std::size_t refused = 0;
  std::size_t accepted = std::size_t{1} << 24;
  while (accepted - refused > 1) {
    JsonLimits limits;
    limits.*limit = refused + (accepted - refused) / 2;
    const tests::LoweredLimits lowered(limits);
    (ErrorOf(action).empty() ? accepted : refused) = limits.*limit;
  }
  return accepted;
}

TEST_F(LimitsTest, WriterAndReaderRefuseTheSameDocuments) {
  const tests::ScratchFolder folder;
  const auto file = folder.Write("door.json", "former");
  for (const Owned<Document>& document :
       {tests::RichDocument(), tests::Plant::OfSize(70).Document(),
        MakeOwned<Document>(Document::Kind::Neither, "Empty")}) {
    const std::string text = WriteDocument(*document);
    const auto write = [&] { WriteDocument(*document); };
    const auto read = [&] { ReadDocument(text, "door.json"); };
    for (const auto limit : {&JsonLimits::bytes, &JsonLimits::values}) {
      const std::size_t least = LeastFor(limit, write);
      EXPECT_EQ(LeastFor(limit, read), least);
      JsonLimits limits;
      limits.*limit = least - 1;
      const tests::LoweredLimits lowered(limits);
      EXPECT_THAT(ErrorOf([&] { SaveDocument(*document, file); }),
                  HasSubstr("the document would have more than " + std::to_string(least - 1)));
      EXPECT_EQ(tests::BytesOf(file), "former");
    }
    EXPECT_EQ(LeastFor(&JsonLimits::bytes, write), text.size());
  }
}

TEST_F(LimitsTest, WhatHasLeftOrIsOfAnotherDocumentIsNoItem) {
  tests::Plant other;
  tests::Plant here;
  Document& document = *here.Document();
  Activity& op10 = here.Operation("OP10");
  Activity& op20 = here.Operation("OP20");
  here.Assign(op10, here.Weld("STAYS"));
  const ZefBaseUnknown_var weld = here.Weld("GOES").Identity();
  const ZefBaseUnknown_var gone = op20.Identity();
  here.Assign(op10, op20);
  const std::string before = WriteDocument(document);
  EXPECT_THAT(before, HasSubstr("\"activity\": \"OP20\""));
  document.RemoveFeature(weld.Get());
  document.RemoveActivity(op20);
  const std::string after = WriteDocument(document);
  EXPECT_EQ(WriteDocument(*ReadDocument(after, "door.json")), after);
  for (const ZefBaseUnknown_var& item :
       {weld, gone, ZefBaseUnknown_var(other.Weld("FOREIGN").Identity()),
        ZefBaseUnknown_var(other.Part("P9").Identity()),
        ZefBaseUnknown_var(MakeOwned<MfgAssembly>("MA", MembershipPointer())->Identity())}) {
    ZefBaseUnknown_var linked;
    EXPECT_EQ(op10.AddItem(item, linked), E_FAIL);
    ZefBaseUnknown* link = nullptr;
    EXPECT_EQ(op10.AddItemLink(link, item, nullptr, "", 1, 2), E_FAIL);
    EXPECT_EQ(link, nullptr);
    EXPECT_EQ(WriteDocument(document), after);
  }
}

}  // namespace
