#include "platform/AtomicFile.h"
#include "simlink/references/ReferenceList.h"
#include "simlink/references/ReferenceListImport.h"
#include "tests/Test.h"
#include "tests/fakes/ScratchFolder.h"

namespace tvx::referencelisttest {

TEST(ListFile, HoldsTitleCountAndEntriesHoweverTheyAreParted) {
  const std::tuple<const char*, Texts, std::size_t> rows[] = {
      {"T\n2\na/b\nc/d", {"a/b", "c/d"}, 2},
      {"  \"T\" , 2 , \"a/b\" ,c/d", {"a/b", "c/d"}, 2},
      {"\xEF\xBB\xBFT,\"2\"\n\n\na/b\n\nc/d\n", {"a/b", "c/d"}, 2},
      {"T,1,a/b,c/d", {"a/b"}, 1},                           // more than was promised
      {"T,3\r\na/b\r\n", {"a/b"}, 3},                        // and less
      {"T,2,\"with, comma\",\"\"", {"with, comma", ""}, 2},  // an empty text in quotes is one
      {"T,2,,a/b", {"", "a/b"}, 2},                          // and one between commas
      {"T,1,\"never\nended", {"never\nended"}, 1},
      {"T,4294967295,a/b", {"a/b"}, 4294967295u},
  };
  for (const auto& [text, entries, promised] : rows) {
    const auto content = ParseListFile(text, "T");
    ASSERT_TRUE(content) << text;
    EXPECT_EQ(content->entries, entries) << text;
    EXPECT_EQ(content->promised, promised) << text;
  }
}

TEST(ListFile, IsIncorrectWithoutItsTitleOrACount) {
  for (const char* text : {"", "T", "T,x", "T,-1", "T,4294967296", "t,1,a/b", "Tt,1,a/b", "\"T"})
    EXPECT_FALSE(ParseListFile(text, "T")) << text;
}

TEST(Entry, IsAPathOfVisibleCharacters) {
  for (const char* good : {"a/b", "sim/x_[12]", "laminar/B738/a-b.c"}) EXPECT_TRUE(IsEntry(good)) << good;
  for (const std::string& bad :
       {std::string(), std::string("no_slash"), std::string("a/b c"), std::string("/a/b"),
        std::string("a/b\r\n"), std::string("a/\"b"), std::string("a/#1:b"), std::string("a/\xC3\xA4"),
        std::string("a/\0b", 4), "a/" + std::string(399, 'x'), std::string(kSearchFoundNothing)})
    EXPECT_FALSE(IsEntry(bad)) << bad;
}

struct InFolder : testing::Test, ScratchFolder {
  static Texts Shown(const ReferenceList& list) {
    Texts lines;
    for (std::size_t i = 0; i < list.Lines(); ++i) lines.push_back(list.Line(i));
    return lines;
  }
};

TEST_F(InFolder, AMissingOrIncorrectFileIsOneLine) {
  ReferenceList list;
  for (const bool there : {false, true}) {
    if (there) Put(kCommandsFile.name, "List of Xplane References,1\r\na/b\r\n");
    list.Load(kCommandsFile);
    list.Filter("sim/", "anything");
    EXPECT_EQ(Shown(list),
              Texts{"=============== File with X-Plane commands (Xplane_commands.txt) not found or Incorrect "
                    "==============="});
    EXPECT_FALSE(list.PathAt(0));
    EXPECT_FALSE(list.Found());
  }
}

TEST_F(InFolder, FilterAndSearchKeepTheNumbers) {
  Put(kReferencesFile.name,
      "List of Xplane References,5\r\nsim/cockpit/Alt_ft\r\nsim/cockpit2/alt\r\nsim/world/alt_ft\r\n"
      "SIM/cockpit/alt\r\n");
  ReferenceList list;
  list.Load(kReferencesFile);
  EXPECT_EQ(list.Short(), 1u);
  const std::tuple<const char*, const char*, Texts> rows[] = {
      {"sim/cockpit", "", {"0000 sim/cockpit/Alt_ft", "0001 sim/cockpit2/alt"}},
      {"", " ft ALT ", {"0000 sim/cockpit/Alt_ft", "0002 sim/world/alt_ft"}},
      {"", "zulu alt", {"===== Not Found ====="}}};
  for (const auto& [prefix, search, lines] : rows) {
    list.Filter(prefix, search);
    EXPECT_EQ(Shown(list), lines) << prefix << '+' << search;
  }
  EXPECT_FALSE(list.PathAt(0));
  list.Filter("sim/world", "");
  list.Load(kReferencesFile);
  EXPECT_EQ(list.PathAt(0), "sim/world/alt_ft") << "a filter must survive loading";
  EXPECT_FALSE(list.PathAt(1));
}

const char* const kDataRefs =
    "2 1210 Mon Nov 24 10:10:21 2025\n\n"
    "sim/a/airspeed\tfloat\tn\tkts\tAirspeed, \"shown\"\r\n"
    "sim/a/n1\tfloat[16]\ty\tpercent\tof each engine\n"
    "sim/a/one[2]  float[4]  y\n"
    "sim/a/airspeed\tint\ty\n"
    "sim/a/bare";

TEST_F(InFolder, ImportMakesBothListsOfTheSimulatorsOwn) {
  EXPECT_EQ(ParseXplaneReferences(kDataRefs),
            (Texts{"sim/a/airspeed", "sim/a/n1[0]", "sim/a/one[2]", "sim/a/bare"}));
  const char* commands = "A\n800\nCOMMANDS\n\nsim/none/none     Do nothing.\nsim/x/y\t\tText a/b\n";
  EXPECT_EQ(ParseXplaneCommands(commands), (Texts{"sim/none/none", "sim/x/y"}));
  EXPECT_EQ(ParseXplaneReferences("I\r2\rsim/a/b\tint\rsim/c/d\tint[2]\r"), (Texts{"sim/a/b", "sim/c/d[0]"}));

  for (const std::filesystem::path place : {"x1", "x2/plugins"}) {
    Put(place / "DataRefs.txt", kDataRefs);
    Put(place / "Commands.txt", commands);
    const ImportResult result = ImportXplaneLists(place.begin()->string());
    EXPECT_TRUE(result.Complete()) << result.words;
  }
  std::string error;
  EXPECT_EQ(ReadWholeFile(kCommandsFile.name, error),
            "\"List of Xplane Commands\",2\r\n\"sim/none/none\"\r\n\"sim/x/y\"\r\n");
}

TEST_F(InFolder, AnImportThatFindsNothingLeavesTheListsAlone) {
  Put(kReferencesFile.name, "List of Xplane References,1\r\nold/one\r\n");
  Put("x/DataRefs.txt", "not at all\na list of names\n");
  const ImportResult result = ImportXplaneLists("x");
  EXPECT_EQ(result.references + result.commands, 0u);
  EXPECT_EQ(result.words,
            "\"x/DataRefs.txt\" holds no data references.\r\nCommands.txt was not found there.");
  ReferenceList list;
  list.Load(kReferencesFile);
  EXPECT_EQ(list.Line(0), "0000 old/one");
  EXPECT_FALSE(std::filesystem::exists(kCommandsFile.name));
}

}  // namespace tvx::referencelisttest
