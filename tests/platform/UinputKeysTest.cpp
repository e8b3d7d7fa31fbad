#include "platform/linux/KeyInjectors.h"
#include "platform/linux/KeySymbols.h"
#include "platform/linux/UinputKeys.h"
#include "tests/Test.h"
#include "tests/fakes/FakeKeyInjector.h"
#include "tests/fakes/ScratchFolder.h"

namespace tvx {
namespace {

// The codes of the keys that go down; those that come up, negative.
std::vector<int> Keys(const std::optional<std::vector<input_event>>& events) {
  std::vector<int> keys;
  if (!events) return keys;
  for (std::size_t i = 0; i + 1 < events->size(); i += 2) {
    const input_event& key = (*events)[i];
    if (key.type != EV_KEY || (*events)[i + 1].type != EV_SYN) return {0};
    keys.push_back(key.value != 0 ? key.code : -key.code);
  }
  return keys;
}

TEST(UinputKeys, KeysOfAKeyStrokeByLayout) {
  const KeyStroke y{NamedKey::Character, 'y'}, brace{NamedKey::Character, '}'};
  const struct {
    const char* layout;
    KeyStroke key;
    std::vector<int> keys;
  } cases[] = {
      {"us", y, {KEY_Y, -KEY_Y}},
      {"de", y, {KEY_Z, -KEY_Z}},
      {"us", brace, {KEY_LEFTSHIFT, KEY_RIGHTBRACE, -KEY_RIGHTBRACE, -KEY_LEFTSHIFT}},
      {"de", brace, {KEY_RIGHTALT, KEY_0, -KEY_0, -KEY_RIGHTALT}},
      {"de", {NamedKey::Character, '^'}, {KEY_GRAVE, -KEY_GRAVE, KEY_SPACE, -KEY_SPACE}},  // dead
      {"us", {NamedKey::Character, U'\u00e4'}, {}},  // not on this layout
      {"de",
       {NamedKey::F1, 0, true, true},
       {KEY_LEFTCTRL, KEY_LEFTSHIFT, KEY_F1, -KEY_F1, -KEY_LEFTSHIFT, -KEY_LEFTCTRL}},
      // What stands on a key of its own, or on the keypad, is typed on the main block all the same.
      {"us", {NamedKey::Character, '<'}, {KEY_LEFTSHIFT, KEY_COMMA, -KEY_COMMA, -KEY_LEFTSHIFT}},
      {"us", {NamedKey::Character, '('}, {KEY_LEFTSHIFT, KEY_9, -KEY_9, -KEY_LEFTSHIFT}},
      {"us", {NamedKey::Character, '^'}, {KEY_LEFTSHIFT, KEY_6, -KEY_6, -KEY_LEFTSHIFT}},
      {"us", {NamedKey::Help}, {KEY_HELP, -KEY_HELP}},
      {"nonsense", y, {}},
      {"nonsense", {NamedKey::Enter}, {KEY_ENTER, -KEY_ENTER}},
  };
  for (const auto& c : cases) {
    const KeyLayout layout({"evdev", "", c.layout, "", ""});
    EXPECT_EQ(Keys(KernelEvents(c.key, layout)), c.keys) << c.layout << " " << static_cast<int>(c.key.Key);
  }
}

TEST(KeySymbols, AreThoseOfLatin1AndOfNothingElse) {
  for (const char32_t code : {U' ', U'~', U'\u00A0', U'\u00FF'})
    EXPECT_EQ(KeySymbolOf({NamedKey::Character, code}), code);
  for (const char32_t code : {U'\0', U'\t', U'\u007F', U'\u009F', U'\u0100', U'\u20AC'})
    EXPECT_EQ(KeySymbolOf({NamedKey::Character, code}), 0u) << static_cast<unsigned>(code);
}

TEST(UinputKeys, EveryPrintableCharacterStandsOnCommonLayouts) {
  for (const char* name : {"us", "de", "fr", "gb"}) {
    const KeyLayout layout({"evdev", "", name, "", ""});
    for (char32_t character = 0x20; character < 0x7F; ++character)
      EXPECT_TRUE(KernelEvents({NamedKey::Character, character}, layout)) << name << " " << char(character);
  }
}

TEST(UinputKeys, LayoutComesFromTheMachinesFile) {
  for (const char* variable : {"XKB_DEFAULT_LAYOUT", "XKB_DEFAULT_VARIANT"}) unsetenv(variable);
  const LayoutNames names = ReadLayoutNames(
      "# KEYBOARD\nXKBMODEL=\"pc105\"\nXKBLAYOUT=\"de,us\"\nXKBVARIANT=nodeadkeys\nBACKSPACE=\"guess\"");
  EXPECT_EQ(names.Layout, "de");
  EXPECT_EQ(names.Variant, "nodeadkeys");
  setenv("XKB_DEFAULT_LAYOUT", "fr,us", 1);
  EXPECT_EQ(ReadLayoutNames("XKBLAYOUT=de").Layout, "fr") << "the environment counts more";
  unsetenv("XKB_DEFAULT_LAYOUT");
}

TEST(UinputKeys, SaysWhyThereIsNoKeyboard) {
  const ScratchFolder folder;
  std::ofstream("file").put('x');
  const std::pair<const char*, const char*> rows[] = {
      {"/dev/no-such-thing",
       "/dev/no-such-thing is not there. Load the kernel's module for it (sudo modprobe uinput)"},
      {"file", "file: Inappropriate ioctl for device"},
      {".", ".: Is a directory"},
  };
  const KeyStroke enter{NamedKey::Enter};
  for (const auto& [device, words] : rows) {
    UinputKeys keys({"evdev", "", "us", "", ""}, device);
    EXPECT_EQ(keys.Trouble(), words);
    EXPECT_FALSE(keys.Inject({&enter, 1})) << device;
  }
}

TEST(KeyInjectors, TheFirstThatWorksIsTaken) {
  const auto way = [](const char* name, const char* trouble) {
    return KeyInjectorWay{name, [trouble] {
                            auto injector = std::make_unique<FakeKeyInjector>();
                            injector->trouble = trouble;
                            return injector;
                          }};
  };
  const KeyInjectorWay second[] = {way("One", "broken"), way("Two", "")};
  EXPECT_EQ(FirstThatWorks(second)->Trouble(), "");
  const KeyInjectorWay none[] = {way("One", "broken"), way("Two", "not there")};
  EXPECT_EQ(FirstThatWorks(none)->Trouble(),
            "Keystrokes cannot be sent to other windows. One: broken. Two: not there.");
  EXPECT_FALSE(FirstThatWorks(none)->Inject({}));
}

}  // namespace
}  // namespace tvx
