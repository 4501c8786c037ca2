#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "embedded/Error.h"
#include "embedded/dialog/CatalogStore.h"
#include "tests/dialog/CatalogFolder.h"

namespace {

using embedded::Catalog;
using embedded::CatalogStore;
using embedded::InputError;
using embedded::ReadCatalogFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;

// What the error says, or nothing when there is none.
template <class Action>
std::string ErrorOf(const Action& action) {
  try {
    action();
  } catch (const InputError& error) {
    return error.what();
  }
  return "";
}

TEST(CatalogFileTest, ReadsKeysTextsAndEscapes) {
  const CatalogFolder folder;
  const auto file = folder.Write("a.en.txt",
                                 "\xEF\xBB\xBF# comment = no message\r\n"
                                 "  \r\n"
                                 "Title =  Zwölf \r\n"
                                 "Lines = one\\ntwo\\t\\\\n = three\\s\n"
                                 "Empty =");
  EXPECT_THAT(ReadCatalogFile(file),
              ElementsAre(Pair("Empty", ""), Pair("Lines", "one\ntwo\t\\n = three "),
                          Pair("Title", "Zwölf")));
}

TEST(CatalogFileTest, NamesFileAndLineOfWhatIsNoMessage) {
  const CatalogFolder folder;
  const std::pair<std::string, std::string> cases[] = {
      {"a = b\nno equals sign\n", "line 2"},
      {"\n\n = text\n", "line 3"},
      {"a = 1\nb = 2\na = 3", "line 3"},
      {"a = \\q", "line 1"},
      {"a = text\\", "line 1"},
      {"a = \xFF\xFE", "line 1"},
      {std::string("a = \0b", 6), "line 1"},
  };
  for (const auto& [bytes, line] : cases) {
    const auto file = folder.Write("bad.en.txt", bytes);
    EXPECT_THAT(ErrorOf([&] { ReadCatalogFile(file); }), HasSubstr("bad.en.txt, " + line)) << bytes;
  }
}

TEST(CatalogFileTest, RefusesWhatIsNoFileOrTooLarge) {
  const CatalogFolder folder;
  EXPECT_THROW(ReadCatalogFile(folder.Path()), InputError);
  EXPECT_THROW(ReadCatalogFile(folder.Path() / "none.txt"), InputError);
  const auto large = folder.Write("large.txt", "a = " + std::string(1 << 20, 'x'));
  EXPECT_THAT(ErrorOf([&] { ReadCatalogFile(large); }), HasSubstr("1 MiB"));
}

TEST(CatalogFileTest, AnyCutAndAnyWrongByteIsReadOrRefusedByLine) {
  const CatalogFolder folder;
  const std::string whole = "\xEF\xBB\xBF# Ü\nTitle = Zwölf\\n\\\\\r\nOther = \\tzwei\\s\n";
  int refused = 0;
  const auto tryBytes = [&](const std::string& bytes) {
    const auto file = folder.Write("cut.en.txt", bytes);
    const std::string error = ErrorOf([&] { ReadCatalogFile(file); });
    if (error.empty()) return;
    EXPECT_THAT(error, HasSubstr("cut.en.txt, line ")) << bytes;
    ++refused;
  };
  for (std::size_t end = 0; end <= whole.size(); ++end) tryBytes(whole.substr(0, end));
  EXPECT_GT(refused, 10);
  for (std::size_t at = 0; at < whole.size(); ++at) {
    for (const char wrong : {'\0', '\x80', '\xFF', '\\', '\n'}) {
      tryBytes(std::string(whole).replace(at, 1, 1, wrong));
    }
  }
}

TEST(CatalogStoreTest, FallsBackToEnglishForEachMessage) {
  const CatalogFolder folder;
  folder.Write("Cmd.en.txt", "Yes = yes\nNo = no");
  folder.Write("Cmd.de.txt", "Yes = ja");
  folder.Write("EnglishOnly.en.txt", "Yes = yes");
  CatalogStore store;
  store.AddFolder(folder.Path());
  store.SetLanguage("de");
  EXPECT_EQ(*store.Find("Cmd", "Yes"), "ja");
  EXPECT_EQ(*store.Find("Cmd", "No"), "no");
  EXPECT_EQ(store.Find("Cmd", "Perhaps"), nullptr);
  EXPECT_TRUE(store.Has("EnglishOnly"));
  EXPECT_FALSE(store.Has("None"));
  EXPECT_EQ(store.Find("None", "Yes"), nullptr);
  store.SetLanguage("en");
  EXPECT_EQ(*store.Find("Cmd", "Yes"), "yes");
}

TEST(CatalogStoreTest, SearchesTheFoldersInOrderAndReadsAFileOnce) {
  const CatalogFolder folder;
  std::filesystem::create_directories(folder.Path() / "own");
  folder.Write("Cmd.en.txt", "Yes = shipped");
  const auto own = folder.Write("own/Cmd.en.txt", "Yes = own");
  CatalogStore store;
  store.AddFolder(folder.Path() / "missing");
  store.AddFolder(folder.Path() / "own");
  store.AddFolder(folder.Path());
  EXPECT_EQ(*store.Find("Cmd", "Yes"), "own");
  std::filesystem::remove(own);
  EXPECT_EQ(*store.Find("Cmd", "Yes"), "own");
}

TEST(CatalogStoreTest, TreatsAMalformedFileAsMissingAndReportsItWhenChecked) {
  const CatalogFolder folder;
  folder.Write("Cmd.en.txt", "Yes = yes");
  folder.Write("Cmd.de.txt", "Ja");
  CatalogStore store;
  store.AddFolder(folder.Path());
  store.Check("Cmd");
  store.SetLanguage("de");
  EXPECT_EQ(*store.Find("Cmd", "Yes"), "yes");
  EXPECT_THAT(ErrorOf([&] { store.Check("Cmd"); }), HasSubstr("Cmd.de.txt, line 1"));
  EXPECT_THAT(ErrorOf([&] { store.Check("None"); }), HasSubstr("None.en.txt"));
}

TEST(CatalogStoreTest, RefusesLanguagesThatAreNoCode) {
  CatalogStore store;
  store.SetLanguage("pt-BR");
  for (const char* const language : {"", "../de", "a.b", "averyverylonglanguage"}) {
    EXPECT_THROW(store.SetLanguage(language), InputError) << language;
  }
  EXPECT_EQ(store.Language(), "pt-BR");
}

std::vector<std::string> KeysOf(const std::string& file) {
  std::vector<std::string> keys;
  const auto folder = std::filesystem::path(TUV_SOURCE_DIR) / "resources/catalogs";
  for (const auto& [key, text] : ReadCatalogFile(folder / file)) keys.push_back(key);
  return keys;
}

TEST(ShippedCatalogsTest, HoldEveryMessageInBothLanguages) {
  for (const std::string name : {"TuvKelBIWAssignWeldDlg", "TuvBIWUpdateManufAssemblyCmd"}) {
    EXPECT_EQ(KeysOf(name + ".de.txt"), KeysOf(name + ".en.txt"));
  }
  EXPECT_THAT(
      KeysOf("TuvBIWUpdateManufAssemblyCmd.en.txt"),
      testing::UnorderedElementsAre("ErrorMessage.Title", "WarningMessage.Title",
                                    "ErrorMessageProcessFlow", "ErrorMessageProductFlow",
                                    "WarningMessageInputRemoved", "ErrorMessageForRecursion",
                                    "MultipleActsInFlow", "MultipleProductOutput", "MAIsChild"));
}

TEST(ShippedCatalogsTest, KeepTheDuplicateWarningsWording) {
  CatalogStore store;
  store.AddFolder(std::filesystem::path(TUV_SOURCE_DIR) / "resources/catalogs");
  EXPECT_EQ(*store.Find("TuvKelBIWAssignWeldDlg", "TitleDuplicateWarningId"), "WARNING");
  EXPECT_EQ(*store.Find("TuvKelBIWAssignWeldDlg", "DuplicateWarningId"),
            "Duplicated weld assignements to \nthe SAME activity are illegal and\nignored.");
}

}  // namespace
