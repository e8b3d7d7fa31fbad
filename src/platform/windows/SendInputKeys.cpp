#include "platform/windows/SendInputKeys.h"

#include "platform/windows/KeyInputs.h"
#include "platform/windows/calls/WinApi.h"

namespace tvx {
namespace {

class FocusLayout final : public KeyboardLayout {
 public:
  FocusLayout() : layout_(GetKeyboardLayout(GetWindowThreadProcessId(GetForegroundWindow(), nullptr))) {}

  std::optional<Place> Find(char32_t character) const override {
    const SHORT found = VkKeyScanExW(static_cast<wchar_t>(character), layout_);
    const int states = (found >> 8) & 0xFF;
    if (found == -1 || states > 7) return std::nullopt;  // beyond Alt there are keys of other scripts
    return Place{static_cast<std::uint16_t>(found & 0xFF), (states & 1) != 0, (states & 2) != 0,
                 (states & 4) != 0};
  }
  std::uint16_t ScanCode(std::uint16_t virtualKey) const override {
    return static_cast<std::uint16_t>(MapVirtualKeyExW(virtualKey, MAPVK_VK_TO_VSC, layout_));
  }

 private:
  HKL layout_;
};

INPUT InputOf(const KeyEvent& event) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = event.VirtualKey;
  input.ki.wScan = event.Scan;
  if (event.VirtualKey == 0) input.ki.dwFlags |= KEYEVENTF_UNICODE;
  if (event.Extended) input.ki.dwFlags |= KEYEVENTF_EXTENDEDKEY;
  if (event.Up) input.ki.dwFlags |= KEYEVENTF_KEYUP;
  return input;
}

}  // namespace

bool SendInputKeys::Inject(std::span<const KeyStroke> keys) {
  const FocusLayout layout;
  for (const KeyStroke& key : keys) {
    const auto events = KeyEventsFor(key, layout);
    if (!events) return false;
    std::vector<INPUT> inputs;
    for (const KeyEvent& event : *events) inputs.push_back(InputOf(event));
    const auto count = static_cast<UINT>(inputs.size());
    if (SendInput(count, inputs.data(), sizeof(INPUT)) != count) return false;
  }
  return true;
}

}  // namespace tvx
