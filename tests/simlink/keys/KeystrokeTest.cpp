#include "simlink/keys/Keystroke.h"
#include "simlink/keys/KeystrokeSequence.h"
#include "tests/Test.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeKeyInjector.h"

namespace tvx::keystroketest {

std::int16_t Code(int bits) {
  return static_cast<std::int16_t>(static_cast<std::uint16_t>(bits));
}

TEST(Keystroke, SequenceOfACode) {
  const std::pair<int, std::string_view> cases[] = {
      {0x4041, ""},    {0xC000, ""},    {0x2600, ""},      {0xD600, "^+{F1}"}, {0x2500, "{F16}"},
      {0x017B, "{{}"}, {0x012B, "{+}"}, {0xC12B, "^+{+}"}, {0x01E4, "\xE4"},
  };
  for (const auto& [code, sequence] : cases) {
    EXPECT_EQ(KeySequence(Code(code)), sequence) << std::hex << code;
    EXPECT_EQ(JoinKeystroke(SplitKeystroke(Code(code))), Code(code)) << std::hex << code;
  }
}

// Every code that types something comes through its own syntax as the key it names.
TEST(Keystroke, EveryCodeIsUnderstoodByTheParser) {
  for (int name = 2; name < kNamedKeys; ++name) {
    for (const int held : {0, 0x4000, 0x8000, 0xC000}) {
      const auto keys = ParseKeySequence(KeySequence(Code(held | name << 8)));
      ASSERT_TRUE(keys && keys->size() == 1) << KeyNames[static_cast<std::size_t>(name)];
      const KeyStroke expected{static_cast<NamedKey>(name), 0, (held & 0x8000) != 0, (held & 0x4000) != 0};
      EXPECT_EQ(keys->front(), expected) << name;
    }
  }
  for (char32_t character = 0x20; character <= 0xFF; ++character) {
    const auto keys = ParseKeySequence(KeySequence(Code(0x0100 | static_cast<int>(character))));
    const bool typed = character < 0x7F || character >= 0xA0;
    ASSERT_EQ(keys.has_value(), typed) << static_cast<int>(character);
    if (typed) {
      EXPECT_EQ(*keys, (std::vector<KeyStroke>{{NamedKey::Character, character}}));
    }
  }
}

TEST(Keystroke, ParserOfSequences) {
  using Keys = std::vector<KeyStroke>;
  const std::pair<std::string_view, Keys> cases[] = {
      {"", {}},
      {"aB", {{NamedKey::Character, 'a'}, {NamedKey::Character, 'B'}}},
      {"^+{F1}x", {{NamedKey::F1, 0, true, true}, {NamedKey::Character, 'x'}}},
      {"+^{UP}", {{NamedKey::Up, 0, true, true}}},
      {"{}}", {{NamedKey::Character, '}'}}},
      {"{{}", {{NamedKey::Character, '{'}}},
      {"{a}", {{NamedKey::Character, 'a'}}},
      {"\r\t\b\x1B", {{NamedKey::Enter}, {NamedKey::Tab}, {NamedKey::Backspace}, {NamedKey::Esc}}},
  };
  for (const auto& [text, keys] : cases) EXPECT_EQ(ParseKeySequence(text), keys) << text;
  for (const char* bad : {"{", "}", "{}", "{F1", "{f1}", "{F17}", "{NONE}", "{KEYSTROKE}", "^", "a+", "%",
                          "~", "(", ")", "[", "]", "\x01", "\x80", "a\x7F"})
    EXPECT_FALSE(ParseKeySequence(bad)) << bad;
}

struct KeystrokesTest : testing::Test {
  FakeKeyInjector injector;
  FakeMessageBoxes boxes;
  bool minimized = true;
  Keystrokes keystrokes{injector, boxes, [this] { return minimized; }};
};

TEST_F(KeystrokesTest, InjectsOnlyWhileTheStatusFormIsMinimized) {
  for (const int noKey : {0xC000, 0x3F00}) keystrokes.SendKeystroke(Code(noKey));
  keystrokes.SendKeystroke(0x0800);
  EXPECT_EQ(injector.keys, std::vector{KeyStroke{NamedKey::Enter}});
  EXPECT_TRUE(boxes.shown.empty());

  minimized = false;
  keystrokes.SendKeystroke(0x0800);
  EXPECT_EQ(injector.keys.size(), 1u);
  EXPECT_EQ(boxes.shown, (Texts{"Keystroke received from IO module: {ENTER}\r\n"
                                "To send to FS this window must be minimized"}));
  keystrokes.SendKeystroke(0x01E4);
  EXPECT_TRUE(Holds(boxes.shown.back(), "module: \xC3\xA4\r\n")) << "beyond ASCII";
}

}  // namespace tvx::keystroketest
