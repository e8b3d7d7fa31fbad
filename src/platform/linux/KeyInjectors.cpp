#include "platform/linux/KeyInjectors.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string_view>

#include "platform/linux/UinputKeys.h"
#include "platform/linux/XTestKeys.h"

namespace tvx {
namespace {

class NoKeys final : public KeyInjector {
 public:
  explicit NoKeys(std::string trouble) : trouble_(std::move(trouble)) {}
  bool Inject(std::span<const KeyStroke>) override { return false; }
  std::string Trouble() const override { return trouble_; }

 private:
  std::string trouble_;
};

bool UnderWayland() {
  const auto set = [](const char* variable) {
    const char* value = std::getenv(variable);
    return std::string_view(value != nullptr ? value : "");
  };
  return !set("WAYLAND_DISPLAY").empty() || set("XDG_SESSION_TYPE") == "wayland";
}

std::string TextOf(const char* path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

std::unique_ptr<KeyInjector> FirstThatWorks(std::span<const KeyInjectorWay> ways) {
  std::string trouble = "Keystrokes cannot be sent to other windows.";
  for (const KeyInjectorWay& way : ways) {
    auto injector = way.make();
    const std::string why = injector->Trouble();
    if (why.empty()) return injector;
    trouble.append(" ").append(way.name).append(": ").append(why).append(".");
  }
  return std::make_unique<NoKeys>(std::move(trouble));
}

std::unique_ptr<KeyInjector> MakeKeyInjector() {
  std::array<KeyInjectorWay, 2> ways{{
      {"X server", [] { return std::make_unique<XTestKeys>(); }},
      {"Kernel",
       [] { return std::make_unique<UinputKeys>(ReadLayoutNames(TextOf("/etc/default/keyboard"))); }},
  }};
  if (UnderWayland()) std::reverse(ways.begin(), ways.end());
  return FirstThatWorks(ways);
}

}  // namespace tvx
