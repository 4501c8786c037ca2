#include <gmock/gmock.h>

#include "tests/fuzz/Targets.h"
#include "tests/import/Lists.h"

namespace tests {

namespace {

// A row of a list is kept or dropped.
std::size_t RowsOf(const biwplan::WeldList& list) {
  std::size_t rows = list.dropped.size();
  for (const biwplan::WeldRow& weld : list.welds) {
    rows += std::max<std::size_t>(weld.points.size(), 1);
  }
  return rows;
}

}  // namespace

void FuzzLists(std::string_view iBytes) {
  auto files = FilesIn(iBytes);
  embedded::Owned<embedded::Document> document;
  const std::string error = ErrorOf([&] {
    const biwplan::PartsList parts = Parts(files["parts.csv"]);
    const biwplan::WeldList welds = Welds(files["welds.csv"], parts);
    EXPECT_EQ(RowsOf(welds), welds.rowsRead);
    const biwplan::ProcessList process = Process(files["process.csv"], parts);
    document = biwplan::BuildDocument(parts, welds, process);
  });
  if (document) return ExpectStored(*document);
  EXPECT_THAT(error, testing::ContainsRegex("^(parts|welds|process).csv"));
}

}  // namespace tests
