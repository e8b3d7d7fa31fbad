// Keys through the kernel: a keyboard of our own that any desktop reads.
#pragma once

#include <linux/input.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/KeyInjector.h"
#include "platform/linux/KeySymbols.h"

namespace tvx {

// Which layout the desktop reads its keyboards with. Empty fields mean the standard.
struct LayoutNames {
  std::string Rules, Model, Layout, Variant, Options;
};
// The layout that the environment (XKB_DEFAULT_LAYOUT and so on) names, or else the lines of the text of
// /etc/default/keyboard. Where several are named, the first.
LayoutNames ReadLayoutNames(const std::string& keyboardFile);

// Where symbols stand on a layout.
class KeyLayout {
 public:
  explicit KeyLayout(const LayoutNames& names);
  ~KeyLayout();
  KeyLayout(const KeyLayout&) = delete;
  KeyLayout& operator=(const KeyLayout&) = delete;
  // False where no such layout is known; Find gives std::nullopt then.
  bool Known() const;
  std::optional<KeyPlace> Find(KeySymbol symbol) const;

 private:
  struct Map;
  std::unique_ptr<Map> map_;
};

// What the kernel is told so that a key is typed: each key down and up again, each followed by a report.
// std::nullopt where no key of the layout gives it.
std::optional<std::vector<input_event>> KernelEvents(const KeyStroke& key, const KeyLayout& layout);

class UinputKeys final : public KeyInjector {
 public:
  explicit UinputKeys(const LayoutNames& names, const std::string& device = "/dev/uinput");
  ~UinputKeys() override;
  UinputKeys(const UinputKeys&) = delete;
  UinputKeys& operator=(const UinputKeys&) = delete;

  bool Inject(std::span<const KeyStroke> keys) override;
  std::string Trouble() const override { return trouble_; }

 private:
  void Open(const std::string& device);
  bool MakeKeyboard();

  KeyLayout layout_;
  int fd_ = -1;
  std::string trouble_;
};

}  // namespace tvx
