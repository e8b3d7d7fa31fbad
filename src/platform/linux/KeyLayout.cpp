#include <xkbcommon/xkbcommon.h>

#include <array>
#include <cstdlib>
#include <string_view>

#include "platform/linux/UinputKeys.h"

namespace tvx {
namespace {

// The value of NAME="value" or NAME=value in a file of such lines.
std::string ValueIn(std::string_view text, std::string_view name) {
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    if (!line.starts_with(name) || line.size() <= name.size() || line[name.size()] != '=') continue;
    line.remove_prefix(name.size() + 1);
    if (line.size() >= 2 && line.front() == '"' && line.back() == '"') line = line.substr(1, line.size() - 2);
    return std::string(line);
  }
  return {};
}

std::string EnvironmentOr(const char* variable, std::string otherwise) {
  const char* value = std::getenv(variable);
  return value != nullptr ? value : otherwise;
}

std::string FirstOf(const std::string& list) {
  return list.substr(0, list.find(','));
}

}  // namespace

LayoutNames ReadLayoutNames(const std::string& keyboardFile) {
  LayoutNames names;
  names.Model = EnvironmentOr("XKB_DEFAULT_MODEL", ValueIn(keyboardFile, "XKBMODEL"));
  names.Layout = FirstOf(EnvironmentOr("XKB_DEFAULT_LAYOUT", ValueIn(keyboardFile, "XKBLAYOUT")));
  names.Variant = FirstOf(EnvironmentOr("XKB_DEFAULT_VARIANT", ValueIn(keyboardFile, "XKBVARIANT")));
  names.Options = EnvironmentOr("XKB_DEFAULT_OPTIONS", ValueIn(keyboardFile, "XKBOPTIONS"));
  return names;
}

struct KeyLayout::Map {
  xkb_context* context = nullptr;
  xkb_keymap* keymap = nullptr;

  ~Map() {
    xkb_keymap_unref(keymap);
    xkb_context_unref(context);
  }
};

KeyLayout::KeyLayout(const LayoutNames& names) : map_(std::make_unique<Map>()) {
  map_->context = xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES);
  if (map_->context == nullptr) return;
  xkb_context_set_log_level(map_->context, XKB_LOG_LEVEL_CRITICAL);
  const xkb_rule_names rules{"evdev", names.Model.c_str(), names.Layout.c_str(), names.Variant.c_str(),
                             names.Options.c_str()};
  map_->keymap = xkb_keymap_new_from_names(map_->context, &rules, XKB_KEYMAP_COMPILE_NO_FLAGS);
}

KeyLayout::~KeyLayout() = default;

bool KeyLayout::Known() const {
  return map_->keymap != nullptr;
}

std::optional<KeyPlace> KeyLayout::Find(KeySymbol symbol) const {
  if (!Known()) return std::nullopt;
  constexpr std::array<KeyPlace, 4> kLevels{{{}, {0, true, false}, {0, false, true}, {0, true, true}}};
  const auto first = static_cast<int>(xkb_keymap_min_keycode(map_->keymap));
  const auto last = static_cast<int>(xkb_keymap_max_keycode(map_->keymap));
  for (const bool mainBlock : {true, false}) {
    for (std::size_t level = 0; level < kLevels.size(); ++level) {
      for (int code = first; code <= last; ++code) {
        if (InMainBlock(code - kXCodeOffset) != mainBlock) continue;
        const xkb_keysym_t* symbols = nullptr;
        const int count = xkb_keymap_key_get_syms_by_level(map_->keymap, static_cast<xkb_keycode_t>(code), 0,
                                                           static_cast<xkb_level_index_t>(level), &symbols);
        if (count != 1 || symbols[0] != symbol) continue;
        KeyPlace place = kLevels[level];
        place.Code = code - kXCodeOffset;
        return place;
      }
    }
  }
  return std::nullopt;
}

}  // namespace tvx
