#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

#include "platform/windows/KeyInputs.h"
#include "platform/windows/SendInputKeys.h"
#include "tests/platform/windows/SystemLoop.h"

namespace tvx::test {
namespace {

// A layout with "a" and "A" on one key, "@" behind AltGr, and no "\xE9".
class SmallLayout final : public KeyboardLayout {
 public:
  std::optional<Place> Find(char32_t character) const override {
    if (character == 'a') return Place{0x41, false, false, false};
    if (character == 'A') return Place{0x41, true, false, false};
    if (character == '@') return Place{0x51, false, true, true};
    return std::nullopt;
  }
  std::uint16_t ScanCode(std::uint16_t virtualKey) const override {
    return static_cast<std::uint16_t>(virtualKey + 0x100);
  }
};

// "+10" is virtual key 16 going down, "-10" up, "x" behind it an extended one, "u" a character by itself.
std::string Words(const std::optional<std::vector<KeyEvent>>& events) {
  if (!events) return "none";
  std::string words;
  for (const KeyEvent& event : *events) {
    char text[16];
    const int value = event.VirtualKey != 0 ? event.VirtualKey : event.Scan;
    std::snprintf(text, sizeof text, "%c%02x%s%s ", event.Up ? '-' : '+', value, event.Extended ? "x" : "",
                  event.VirtualKey == 0 ? "u" : "");
    words += text;
    if (event.VirtualKey != 0) {
      EXPECT_EQ(event.Scan, event.VirtualKey + 0x100);
    }
  }
  return words;
}

TEST(KeyInputs, HoldWhatTheyNeedAndLetItGo) {
  struct Case {
    KeyStroke key;
    const char* words;
  };
  using enum NamedKey;
  for (const Case& c : {
           Case{{Character, U'a', false, false}, "+41 -41 "},
           Case{{Character, U'A', false, false}, "+10 +41 -41 -10 "},
           Case{{Character, U'a', true, true}, "+11 +10 +41 -41 -10 -11 "},
           Case{{Character, U'@', false, false}, "+11 +a5x +51 -51 -a5x -11 "},
           Case{{Character, U'\u00E9', false, false}, "+e9u -e9u "},
           Case{{Character, U'\u00E9', true, false}, "none"},
           Case{{None, 0, false, false}, "none"},
           Case{{F1, 0, true, true}, "+11 +10 +70 -70 -10 -11 "},
           Case{{F16, 0, false, false}, "+7f -7f "},
           Case{{Enter, 0, false, false}, "+0d -0d "},
           Case{{Up, 0, false, true}, "+10 +26x -26x -10 "},
           Case{{PrintScreen, 0, false, false}, "+2cx -2cx "},
           Case{{ScrollLock, 0, false, false}, "+91 -91 "},
       }) {
    EXPECT_EQ(Words(KeyEventsFor(c.key, SmallLayout())), c.words);
  }
}

TEST(KeyInputs, EveryNamedKeyIsAnotherOne) {
  std::vector<std::uint16_t> seen;
  for (int i = 2; i < kNamedKeys; ++i) {
    const std::uint16_t key = VirtualKeyOf(static_cast<NamedKey>(i));
    EXPECT_NE(key, 0) << i;
    EXPECT_EQ(std::count(seen.begin(), seen.end(), key), 0) << i;
    seen.push_back(key);
  }
}

// What a window with the focus is told by the system.
struct Typed {
  std::wstring characters;
  std::vector<WPARAM> keys;
};
Typed typed;

LRESULT CALLBACK Listen(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_CHAR) typed.characters += static_cast<wchar_t>(first);
  if (message == WM_KEYDOWN) typed.keys.push_back(first);
  return DefWindowProcW(window, message, first, second);
}

TEST(SendInputKeys, ReachTheWindowWithTheFocus) {
  WNDCLASSW kind{};
  kind.lpfnWndProc = Listen;
  kind.hInstance = GetModuleHandleW(nullptr);
  kind.lpszClassName = L"keys";
  RegisterClassW(&kind);
  const HWND window = CreateWindowExW(0, L"keys", L"keys", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100,
                                      nullptr, nullptr, kind.hInstance, nullptr);
  ASSERT_NE(window, nullptr);
  SetForegroundWindow(window);
  SetFocus(window);
  ASSERT_TRUE(Eventually([&] { return GetFocus() == window && GetForegroundWindow() == window; }));
  std::vector<KeyStroke> keys;
  for (const char32_t character : {U'a', U'A', U'~', U'{', U'%', U'\u00E9', U'\u00FF'})
    keys.push_back({NamedKey::Character, character, false, false});
  keys.push_back({NamedKey::F5, 0, false, false});
  keys.push_back({NamedKey::PageDown, 0, true, true});
  SendInputKeys injector;
  EXPECT_EQ(injector.Trouble(), "");
  EXPECT_TRUE(injector.Inject(keys));
  EXPECT_TRUE(Eventually([] { return !typed.keys.empty() && typed.keys.back() == VK_NEXT; }));
  EXPECT_EQ(typed.characters, L"aA~{%\u00E9\u00FF");
  EXPECT_EQ(std::count(typed.keys.begin(), typed.keys.end(), WPARAM{VK_F5}), 1);
  const KeyStroke impossible[] = {{NamedKey::None, 0, false, false}};
  EXPECT_FALSE(injector.Inject(impossible));
  DestroyWindow(window);
}

}  // namespace
}  // namespace tvx::test
