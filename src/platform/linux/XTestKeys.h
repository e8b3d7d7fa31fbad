// Keys through the test extension of an X server.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/KeyInjector.h"
#include "platform/linux/KeySymbols.h"

struct _XDisplay;

namespace tvx {

// Types what stands on the user's layout; a symbol that the layout lacks is put on a spare key for as long as
// the program runs. A lost X server ends the typing, not the program.
class XTestKeys final : public KeyInjector {
 public:
  // Connects to the X server `display` (nullptr: the one that DISPLAY names).
  explicit XTestKeys(const char* display = nullptr);
  ~XTestKeys() override;
  XTestKeys(const XTestKeys&) = delete;
  XTestKeys& operator=(const XTestKeys&) = delete;

  bool Inject(std::span<const KeyStroke> keys) override;
  std::string Trouble() const override { return trouble_; }

  // Where a symbol stands on the active layout, as it is now; std::nullopt where it does not.
  std::optional<KeyPlace> FindOnLayout(KeySymbol symbol, bool character);

 private:
  struct Keyboard;
  bool InjectOne(const KeyStroke& key);
  std::optional<KeyPlace> PutOnSpareKey(KeySymbol symbol);
  bool ReadKeyboard();
  void Send(unsigned code, bool down);
  int CodeOf(KeySymbol symbol) const;

  _XDisplay* display_ = nullptr;
  bool lost_ = false;
  std::string trouble_;
  std::unique_ptr<Keyboard> keyboard_;
  std::vector<int> spare_;  // X codes of the keys that a symbol was put on, the oldest first
};

}  // namespace tvx
