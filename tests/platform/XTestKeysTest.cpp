// Keys typed into a real window of a real X server and read back.
#include <X11/keysym.h>
#include <gtest/gtest.h>

#include "platform/VirtualDisplay.h"
#include "platform/linux/XTestKeys.h"

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
      EXPECT_EQ(read.symbol, static_cast<unsigned long>(character));  // the keysyms of Latin-1 are its codes
      if (character < 0x7F) {
        EXPECT_EQ(read.text, std::string(1, static_cast<char>(character)));
      }
      EXPECT_FALSE(read.ctrl);
    }
  }
  VirtualDisplay display;
};

TEST_F(XTestKeysTest, EveryNamedKeyWithAndWithoutModifiers) {
  XTestKeys keys(display.Name().c_str());
  ASSERT_EQ(keys.Trouble(), "");
  std::vector<std::pair<NamedKey, unsigned long>> expected{{NamedKey::Backspace, XK_BackSpace},
                                                           {NamedKey::Break, XK_Pause},
                                                           {NamedKey::Delete, XK_Delete},
                                                           {NamedKey::Down, XK_Down},
                                                           {NamedKey::End, XK_End},
                                                           {NamedKey::Enter, XK_Return},
                                                           {NamedKey::Esc, XK_Escape},
                                                           {NamedKey::Help, XK_Help},
                                                           {NamedKey::Home, XK_Home},
                                                           {NamedKey::Insert, XK_Insert},
                                                           {NamedKey::Left, XK_Left},
                                                           {NamedKey::PageDown, XK_Page_Down},
                                                           {NamedKey::PageUp, XK_Page_Up},
                                                           {NamedKey::PrintScreen, XK_Print},
                                                           {NamedKey::Right, XK_Right},
                                                           {NamedKey::ScrollLock, XK_Scroll_Lock},
                                                           {NamedKey::Tab, XK_Tab},
                                                           {NamedKey::Up, XK_Up},
                                                           {NamedKey::CapsLock, XK_Caps_Lock},
                                                           {NamedKey::NumLock, XK_Num_Lock}};
  for (int f = 0; f < 16; ++f)
    expected.emplace_back(static_cast<NamedKey>(static_cast<int>(NamedKey::F1) + f), XK_F1 + f);
  for (const auto& [key, symbol] : expected) {
    const ReadKey plain = Typed(keys, {key});
    EXPECT_EQ(plain.symbol, symbol) << static_cast<int>(key);
    EXPECT_FALSE(plain.ctrl || plain.shift) << static_cast<int>(key);
    const ReadKey held = Typed(keys, {key, 0, true, true});
    EXPECT_TRUE(held.ctrl && held.shift) << static_cast<int>(key);
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
  XTestKeys keys(display.Name().c_str());
  for (const char32_t character : {U'\u00e4', U'\u00fc', U'\u00e4', U'\u00a7', U'\u00a3', U'\u00c9'}) {
    ExpectCharacters(keys, character, character);
  }
}

TEST_F(XTestKeysTest, CapsLockDoesNotChangeWhatIsTyped) {
  XTestKeys keys(display.Name().c_str());
  Typed(keys, {NamedKey::CapsLock});
  ExpectCharacters(keys, 'A', 'C');
  ExpectCharacters(keys, 'a', 'c');
  ExpectCharacters(keys, '1', '3');
}

TEST_F(XTestKeysTest, AControlCharacterIsNotTyped) {
  XTestKeys keys(display.Name().c_str());
  const KeyStroke both[] = {{NamedKey::Character, 1}, {NamedKey::Enter}};
  EXPECT_FALSE(keys.Inject(both));
  EXPECT_TRUE(display.NothingWaits());
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
