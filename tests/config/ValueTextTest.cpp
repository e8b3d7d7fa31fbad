// Numbers as text and back; names; the start-up file.

#include "config/NameTables.h"
#include "config/StartFile.h"
#include "tests/config/Samples.h"

namespace tvx::test::valuetexttest {

template <typename T>
std::string Written(T value) {
  std::string text;
  AppendValue(text, value);
  return text;
}

TEST(ValueText, ReadsNumbers) {
  const std::pair<const char*, double> numbers[] = {{".5", 0.5},
                                                    {"5.", 5},
                                                    {"+7", 7},
                                                    {"-1.25E-03", -0.00125},
                                                    {"-1e-400", 0},
                                                    {"4.9e-324", 5e-324},
                                                    {"0.000e999999999999", 0},
                                                    {"1e-99999999999999999999", 0}};
  for (const auto& [text, value] : numbers) EXPECT_EQ(ParseReal<double>(text), value) << text;
  for (const char* text : {"1e400", "1e99999999999999999999", "inf", "nan", "-inf", "+-1", "", "-", ".",
                           "1,5", "0x10", "1 2", "12abc"})
    EXPECT_EQ(ParseReal<double>(text), std::nullopt) << text;
  // Read as a double and narrowed, this would round twice, and up to the next float.
  EXPECT_EQ(ParseReal<float>("1.00000005960464477540"), 1.00000012f);
  EXPECT_EQ(ParseReal<float>("1.00000005960464477539"), 1.0f);
  EXPECT_EQ(ParseReal<float>("3.5e38"), std::nullopt);
  EXPECT_EQ(ParseReal<float>("1e-46"), 0.0f);
}

TEST(ValueText, RoundsToWholeNumbers) {
  const std::pair<const char*, std::optional<int>> bytes[] = {{"0.5", 0},    {"1.5", 2},  {"255.4", 255},
                                                              {"255.5", {}}, {"-0.5", 0}, {"-0.6", {}},
                                                              {"256", {}},   {"1e2", 100}};
  for (const auto& [text, value] : bytes) {
    const auto read = ParseInteger<Byte>(text);
    EXPECT_EQ(read ? std::optional<int>(*read) : std::nullopt, value) << text;
  }
  EXPECT_EQ(ParseInteger<std::int16_t>("-32768.5"), -32768);
  EXPECT_EQ(ParseInteger<std::int16_t>("32767.5"), std::nullopt);
}

TEST(ValueText, WritesPlainDecimalsThatReadBackToTheSameBits) {
  EXPECT_EQ(Written(0.1f), "0.1");
  EXPECT_EQ(Written(1e-5), "0.00001");
  EXPECT_EQ(Written(-0.0), "-0");
  EXPECT_EQ(Written(1e21), "1000000000000000000000");
  EXPECT_EQ(Written(std::numeric_limits<double>::infinity()), "0");
  EXPECT_EQ(Written(std::numeric_limits<float>::quiet_NaN()), "0");
  EXPECT_EQ(Written(std::string_view("a\"b\0c", 5)), "\"a'bc\"");
  for (const double v :
       {1.0 / 3, 5e-324, std::nextafter(2.2250738585072014e-308, 0.0), 1.7976931348623157e308}) {
    EXPECT_EQ(ParseReal<double>(Written(v)), v);
    EXPECT_EQ(Written(v).find_first_of("eE"), std::string::npos);
  }
  for (const float v : {0.1f, 1e-45f, 3.4028235e38f, 16777217.0f}) EXPECT_EQ(ParseReal<float>(Written(v)), v);
}

TEST(NameTables, BuiltInNamesWinOverTheFilesOwn) {
  ConfigModel model;
  model.Gaugetypes[0] = {102, "slot 0"};
  model.Gaugetypes[5] = {77, "overwritten"};
  model.Gaugetypes[30] = {77, "kept, not found"};
  model.Categories[0] = "x";
  FillNameTables(model);
  EXPECT_EQ((std::tuple{model.Categories[0], model.Categories[11]}), (std::tuple{"", "External"}));
  EXPECT_EQ(model.Gaugetypes[30].Name, "kept, not found");
  for (const auto& [code, expected] : {std::pair{10, "Input/Output module"},
                                       {4, "Large gauge, single needle "},
                                       {102, "unchanged"},
                                       {77, "unchanged"}}) {
    std::string name = "unchanged";
    GetGaugetypeName(model, code, name);
    EXPECT_EQ(name, expected) << code;
  }
}

class StartFile : public InEmptyFolder {};

TEST_F(StartFile, ReadsOnlyWhatIsExactlyRight) {
  const struct {
    const char *content, *path = "Default.cfg";
    int delay = 10;
  } cases[] = {
      {"\"General\"\r\n\"my, own.cfg\"\r\n\"Startdelay\"\r\n3\r\n\"End\"\r\n", "my, own.cfg", 3},
      {"\"General\"\n\"a.cfg\"\n\"Startdelay\"\n 2.5 \n\"End\"", "a.cfg", 2},
      {"\"General\"\r\n\"a.cfg\"\r\n\"Startdelay\"\r\nsoon\r\n\"End\"\r\n"},
      {"\"General\"\r\n\"a.cfg\"\r\n\"StartDelay\"\r\n3\r\n\"End\"\r\n"},
      {"\"General\"\r\n\"a.cfg\"\r\n\"Startdelay\"\r\n3\r\n\"end\"\r\n"},
      {"\"General\"\r\n\"a.cfg\"\r\n\"Startdelay\"\r\n3\r\n"},
      {"\"General\"\r\na.cfg\r\n\"Startdelay\"\r\n3\r\n\"End\"\r\n"},
  };
  for (const auto& c : cases) {
    Put(kStartFileName, c.content);
    ConfigModel model;
    model.StartDelay = 77;
    EXPECT_EQ(ReadStartFile(model), c.path) << c.content;
    EXPECT_EQ(model.StartDelay, c.delay) << c.content;
  }
}

TEST_F(StartFile, IsWrittenInFiveLines) {
  ConfigModel model;
  model.StartDelay = -5;
  EXPECT_TRUE(WriteStartFile(model, "folder/my.cfg"));
  EXPECT_EQ(FileContent(kStartFileName),
            "\"General\"\r\n\"folder/my.cfg\"\r\n\"Startdelay\"\r\n-5\r\n\"End\"\r\n");
  EXPECT_FALSE(WriteStartFile(model, "a\"b.cfg")) << "it would name another file when read";
  EXPECT_EQ(ReadStartFile(model), "folder/my.cfg");
}

}  // namespace tvx::test::valuetexttest
