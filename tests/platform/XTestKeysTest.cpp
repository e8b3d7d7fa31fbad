// Keys typed into a real window of a real X server and read back.
#include <X11/keysym.h>

#include "platform/linux/XTestKeys.h"
#include "tests/Test.h"
#include "tests/platform/VirtualDisplay.h"

namespace tvx {
namespace {

struct XTestKeysTest : testing::Test {
  void SetUp() override {
    if (!display.Started()) GTEST_SKIP() << display.Trouble();
  }
  ReadKey Typed(XTestKeys& keys, const KeyStroke& key) {
    if (!keys.Inject({&key, 1})) return {};
    return display.NextKey();
  }
  void ExpectCharacters(XTestKeys& keys, char32_t first, char32_t last) {
    for (char32_t character = first; character <= last; ++character) {
      const ReadKey read = Typed(keys, {NamedKey::Character, character});
      // The keysyms of Latin-1 are its codes.
      EXPECT_EQ(std::tuple(read.symbol, read.ctrl), std::tuple(static_cast<unsigned long>(character), false));
      EXPECT_TRUE(character >= 0x7F || read.text == std::string(1, static_cast<char>(character)))
          << read.text;
    }
  }
  VirtualDisplay display;
};

TEST_F(XTestKeysTest, EveryNamedKeyWithAndWithoutModifiers) {
  XTestKeys keys(display.Name().c_str());
  ASSERT_EQ(keys.Trouble(), "");
  // In the order of their names.
  const unsigned long symbols[] = {
      XK_BackSpace, XK_Pause,       XK_Caps_Lock, XK_Delete, XK_Down,     XK_End,       XK_Return,  XK_Escape,
      XK_Help,      XK_Home,        XK_Insert,    XK_Left,   XK_Num_Lock, XK_Page_Down, XK_Page_Up, XK_Print,
      XK_Right,     XK_Scroll_Lock, XK_Tab,       XK_Up,     XK_F1,       XK_F2,        XK_F3,      XK_F4,
      XK_F5,        XK_F6,          XK_F7,        XK_F8,     XK_F9,       XK_F10,       XK_F11,     XK_F12,
      XK_F13,       XK_F14,         XK_F15,       XK_F16};
  auto key = NamedKey::Backspace;
  for (const unsigned long symbol : symbols) {
    const ReadKey plain = Typed(keys, {key});
    EXPECT_EQ(plain.symbol, symbol) << static_cast<int>(key);
    EXPECT_FALSE(plain.ctrl || plain.shift) << static_cast<int>(key);
    const ReadKey held = Typed(keys, {key, 0, true, true});
    EXPECT_TRUE(held.ctrl && held.shift) << static_cast<int>(key);
    key = static_cast<NamedKey>(static_cast<int>(key) + 1);
  }
}

TEST_F(XTestKeysTest, EveryPrintableCharacterOnEveryLayout) {
  for (const char* layout : {"us", "de", "fr", "ru,us"}) {
    ASSERT_TRUE(display.SetLayout(layout)) << "setxkbmap is not installed";
    SCOPED_TRACE(layout);
    XTestKeys keys(display.Name().c_str());
    ExpectCharacters(keys, 0x20, 0x7E);
  }
}

TEST_F(XTestKeysTest, CharactersThatTheLayoutLacksGoOnSpareKeys) {
  const int spare = display.SpareKeys();
  {
    XTestKeys keys(display.Name().c_str());
    for (const char32_t character : {U'\u00e4', U'\u00fc', U'\u00e4', U'\u00a7', U'\u00a3', U'\u00c9'})
      ExpectCharacters(keys, character, character);
    EXPECT_EQ(display.SpareKeys(), spare - 5);
  }
  EXPECT_EQ(display.SpareKeys(), spare) << "they are left as they were";
}

TEST_F(XTestKeysTest, CapsLockDoesNotChangeWhatIsTyped) {
  XTestKeys keys(display.Name().c_str());
  Typed(keys, {NamedKey::CapsLock});
  ExpectCharacters(keys, 'A', 'C');
  ExpectCharacters(keys, 'a', 'c');
  ExpectCharacters(keys, '1', '3');
}

TEST_F(XTestKeysTest, OutlivesItsServer) {
  XTestKeys keys(display.Name().c_str());
  display.Kill();
  const KeyStroke key{NamedKey::Enter};
  EXPECT_FALSE(keys.Inject({&key, 1}));
  EXPECT_FALSE(keys.Inject({&key, 1}));
}

TEST(XTestKeys, WithoutAServerSaysSo) {
  XTestKeys keys(":4711");
  const KeyStroke key{NamedKey::Enter};
  EXPECT_FALSE(keys.Inject({&key, 1}));
  EXPECT_EQ(keys.Trouble(), "no X server answers");
}

}  // namespace
}  // namespace tvx
