#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "embedded/dialog/CatalogStore.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/SourceFiles.h"

namespace {

using namespace embedded;
using testing::HasSubstr;
using testing::Pair;
using tests::ErrorOf;
using tests::ScratchFolder;

TEST(CatalogFileTest, ReadsKeysTextsAndEscapes) {
  const ScratchFolder folder;
  const auto file = folder.Write("a.en.txt",
                                 "\xEF\xBB\xBF# comment = no message\r\n  \r\nTitle =  Zwölf \r\n"
                                 "Lines = one\\ntwo\\t\\\\n = three\\s\nEmpty =");
  EXPECT_THAT(ReadCatalogFile(file),
              testing::ElementsAre(Pair("Empty", ""), Pair("Lines", "one\ntwo\t\\n = three "),
                                   Pair("Title", "Zwölf")));
}

TEST(CatalogFileTest, NamesFileAndLineOfWhatIsNoMessage) {
  const ScratchFolder folder;
  const std::pair<std::string, std::string> cases[] = {
      {"a = b\nno equals sign\n", "bad.en.txt, line 2: "},
      {"\n\n = text\n", "bad.en.txt, line 3: "},
      {"a = 1\nb = 2\na = 3", "bad.en.txt, line 3: "},
      {"a = \\q", "bad.en.txt, line 1: "},
      {"a = text\\", "bad.en.txt, line 1: "},
      {"a = \xFF\xFE", "bad.en.txt, line 1: "},
      {std::string("a = \0b", 6), "bad.en.txt, line 1: "},
      {"a = " + std::string(1 << 20, 'x'), "1 MiB"},
  };
  for (const auto& [bytes, error] : cases) {
    const auto file = folder.Write("bad.en.txt", bytes);
    EXPECT_THAT(ErrorOf([&] { ReadCatalogFile(file); }), HasSubstr(error)) << bytes.substr(0, 20);
  }
  EXPECT_THROW(ReadCatalogFile(folder.Path()), InputError);
  EXPECT_THROW(ReadCatalogFile(folder.Path() / "none.txt"), InputError);
}

TEST(CatalogStoreTest, TakesFromEnglishWhatTheLanguageLacksOrHasMalformed) {
  const ScratchFolder folder;
  folder.Write("Cmd.en.txt", "Yes = yes\nNo = no");
  folder.Write("Cmd.de.txt", "Yes = ja");
  folder.Write("Bad.en.txt", "Yes = yes");
  folder.Write("Bad.de.txt", "Ja");
  CatalogStore store;
  store.AddFolder(folder.Path());
  store.Check("Bad");
  store.SetLanguage("de");
  EXPECT_EQ(*store.Find("Cmd", "Yes") + *store.Find("Cmd", "No"), "jano");
  EXPECT_EQ(store.Find("Cmd", "Perhaps"), nullptr);
  EXPECT_FALSE(store.Has("None"));
  EXPECT_EQ(store.Find("None", "Yes"), nullptr);
  EXPECT_TRUE(store.Has("Bad"));
  EXPECT_EQ(*store.Find("Bad", "Yes"), "yes");
  EXPECT_THAT(ErrorOf([&] { store.Check("Bad"); }), HasSubstr("Bad.de.txt, line 1"));
  EXPECT_THAT(ErrorOf([&] { store.Check("None"); }), HasSubstr("None.en.txt"));
  for (const char* const language : {"", "../de", "a.b", "averyverylonglanguage"}) {
    EXPECT_THROW(store.SetLanguage(language), InputError) << language;
  }
  EXPECT_EQ(*store.Find("Cmd", "Yes"), "ja");
}

TEST(CatalogStoreTest, SearchesTheFoldersInOrderAndReadsAFileOnce) {
  const ScratchFolder folder;
  std::filesystem::create_directories(folder.Path() / "own");
  folder.Write("Cmd.en.txt", "Yes = shipped");
  const auto own = folder.Write("own/Cmd.en.txt", "Yes = own");
  CatalogStore store;
  for (const char* const name : {"missing", "own", ""}) store.AddFolder(folder.Path() / name);
  EXPECT_EQ(*store.Find("Cmd", "Yes"), "own");
  std::filesystem::remove(own);
  EXPECT_EQ(*store.Find("Cmd", "Yes"), "own");
}

TEST(ShippedCatalogsTest, HoldEveryMessageInBothLanguages) {
  const std::pair<std::string, std::string> catalogs[] = {
      {"TuvKelBIWAssignWeldDlg", "DuplicateWarningId TitleDuplicateWarningId "},
      {"TuvBIWUpdateManufAssemblyCmd",
       "ErrorMessage.Title ErrorMessageForRecursion ErrorMessageProcessFlow "
       "ErrorMessageProductFlow MAIsChild MultipleActsInFlow MultipleProductOutput "
       "WarningMessage.Title WarningMessageInputRemoved "}};
  const auto folder = std::filesystem::path(tests::SourceFile("resources/catalogs"));
  for (const auto& [name, keys] : catalogs) {
    for (const char* const language : {".en.txt", ".de.txt"}) {
      std::string found;
      for (const auto& [key, text] : ReadCatalogFile(folder / (name + language))) {
        if (!text.empty()) found += key + ' ';
      }
      EXPECT_EQ(found, keys) << name << language;
    }
  }
}

}  // namespace
