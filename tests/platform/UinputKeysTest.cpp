#include <gtest/gtest.h>

#include <cstdlib>

#include "fakes/FakeKeyInjector.h"
#include "platform/linux/KeyInjectors.h"
#include "platform/linux/UinputKeys.h"

namespace tvx {
namespace {

std::vector<std::pair<int, int>> Keys(const std::optional<std::vector<input_event>>& events) {
  std::vector<std::pair<int, int>> keys;
  if (!events) return keys;
  for (std::size_t i = 0; i + 1 < events->size(); i += 2) {
    if ((*events)[i].type != EV_KEY || (*events)[i + 1].type != EV_SYN) return {{-1, -1}};
    keys.emplace_back((*events)[i].code, (*events)[i].value);
  }
  return keys;
}

TEST(UinputKeys, KeysOfAKeyStrokeByLayout) {
  using Pairs = std::vector<std::pair<int, int>>;
  const struct {
    const char* layout;
    KeyStroke key;
    Pairs pairs;
  } cases[] = {
      {"us", {NamedKey::Character, 'y'}, {{KEY_Y, 1}, {KEY_Y, 0}}},
      {"de", {NamedKey::Character, 'y'}, {{KEY_Z, 1}, {KEY_Z, 0}}},
      {"us",
       {NamedKey::Character, '}'},
       {{KEY_LEFTSHIFT, 1}, {KEY_RIGHTBRACE, 1}, {KEY_RIGHTBRACE, 0}, {KEY_LEFTSHIFT, 0}}},
      {"de", {NamedKey::Character, '}'}, {{KEY_RIGHTALT, 1}, {KEY_0, 1}, {KEY_0, 0}, {KEY_RIGHTALT, 0}}},
      {"de",
       {NamedKey::Character, '^'},
       {{KEY_GRAVE, 1}, {KEY_GRAVE, 0}, {KEY_SPACE, 1}, {KEY_SPACE, 0}}},  // dead
      {"us", {NamedKey::Character, U'\u00e4'}, {}},                        // not on this layout
      {"de",
       {NamedKey::F1, 0, true, true},
       {{KEY_LEFTCTRL, 1},
        {KEY_LEFTSHIFT, 1},
        {KEY_F1, 1},
        {KEY_F1, 0},
        {KEY_LEFTSHIFT, 0},
        {KEY_LEFTCTRL, 0}}},
      {"us", {NamedKey::F16}, {{KEY_F16, 1}, {KEY_F16, 0}}},
      {"us", {NamedKey::None}, {}},
      {"nonsense", {NamedKey::Character, 'a'}, {}},
      {"nonsense", {NamedKey::Enter}, {{KEY_ENTER, 1}, {KEY_ENTER, 0}}},
  };
  for (const auto& c : cases) {
    const KeyLayout layout({"evdev", "", c.layout, "", ""});
    EXPECT_EQ(Keys(KernelEvents(c.key, layout)), c.pairs) << c.layout << " " << static_cast<int>(c.key.Key);
  }
}

TEST(UinputKeys, EveryPrintableCharacterStandsOnCommonLayouts) {
  for (const char* name : {"us", "de", "fr", "gb"}) {
    const KeyLayout layout({"evdev", "", name, "", ""});
    for (char32_t character = 0x20; character < 0x7F; ++character) {
      EXPECT_TRUE(KernelEvents({NamedKey::Character, character}, layout)) << name << " " << char(character);
    }
  }
}

TEST(UinputKeys, LayoutComesFromTheMachinesFile) {
  for (const char* variable : {"XKB_DEFAULT_LAYOUT", "XKB_DEFAULT_VARIANT"}) unsetenv(variable);
  const LayoutNames names = ReadLayoutNames(
      "# KEYBOARD\nXKBMODEL=\"pc105\"\nXKBLAYOUT=\"de,us\"\nXKBVARIANT=nodeadkeys\nBACKSPACE=\"guess\"");
  EXPECT_EQ(names.Model, "pc105");
  EXPECT_EQ(names.Layout, "de");
  EXPECT_EQ(names.Variant, "nodeadkeys");
  EXPECT_EQ(names.Options, "");
}

TEST(UinputKeys, WithoutTheDeviceSaysWhatToDo) {
  const UinputKeys keys({}, "/dev/no-such-device");
  EXPECT_EQ(keys.Trouble(),
            "/dev/no-such-device is not there. Load the kernel's module for it (sudo modprobe uinput)");
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
