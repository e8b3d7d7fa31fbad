#include "platform/linux/XTestKeys.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <array>
#include <vector>

namespace tvx {
namespace {

// Without these handlers an X error, or a server that goes away, would end the program. The first two are
// called for every connection of the program. RememberLoss is set for our own connection only; without it,
// the loss of a connection still ends the program.
int IgnoreLoss(Display*) {
  return 0;
}
int IgnoreError(Display*, XErrorEvent*) {
  return 0;
}
void RememberLoss(Display*, void* lost) {
  *static_cast<bool*>(lost) = true;
}

}  // namespace

struct XTestKeys::Keyboard {
  XkbDescPtr map = nullptr;
  XkbStateRec state{};
  unsigned level3Mask = 0;
  int shiftCode = 0, controlCode = 0, level3Code = 0;  // X codes; 0: none

  Keyboard() = default;
  Keyboard(const Keyboard&) = delete;
  Keyboard& operator=(const Keyboard&) = delete;
  ~Keyboard() {
    if (map != nullptr) XkbFreeKeyboard(map, 0, True);
  }
};

namespace {

// A connection that was lost cannot even be closed: Xlib ends the program when it is tried.
void KeepForEver(Display* display) {
  static auto* const lost = new std::vector<Display*>;
  lost->push_back(display);
}

}  // namespace

XTestKeys::XTestKeys(const char* display) {
  display_ = XOpenDisplay(display);
  if (display_ == nullptr) {
    trouble_ = "no X server answers";
    return;
  }
  XSetErrorHandler(IgnoreError);
  XSetIOErrorHandler(IgnoreLoss);
  XSetIOErrorExitHandler(display_, RememberLoss, &lost_);
  int event = 0, error = 0, major = 0, minor = 0;
  if (!XTestQueryExtension(display_, &event, &error, &major, &minor)) {
    trouble_ = "the X server has no XTEST extension; enable it in the server's configuration";
  } else if (!ReadKeyboard()) {
    trouble_ = "the X server tells nothing of its keyboard";
  } else {
    XTestGrabControl(display_, True);  // keys arrive even while another program grabs the server
    XFlush(display_);
  }
}

XTestKeys::~XTestKeys() {
  if (display_ == nullptr) return;
  if (lost_) {
    KeepForEver(display_);
    return;
  }
  KeySym none = NoSymbol;
  for (const int code : spare_) XChangeKeyboardMapping(display_, code, 1, &none, 1);
  XCloseDisplay(display_);
}

bool XTestKeys::ReadKeyboard() {
  auto keyboard = std::make_unique<Keyboard>();
  keyboard->map = XkbGetMap(display_, XkbAllClientInfoMask, XkbUseCoreKbd);
  if (keyboard->map == nullptr || keyboard->map->map == nullptr || lost_) return false;
  if (XkbGetState(display_, XkbUseCoreKbd, &keyboard->state) != Success) return false;
  keyboard_ = std::move(keyboard);
  keyboard_->shiftCode = CodeOf(XK_Shift_L);
  keyboard_->controlCode = CodeOf(XK_Control_L);
  keyboard_->level3Code = CodeOf(XK_ISO_Level3_Shift);
  if (keyboard_->level3Code != 0) {
    keyboard_->level3Mask = keyboard_->map->map->modmap[keyboard_->level3Code];
  }
  return keyboard_->shiftCode != 0 && keyboard_->controlCode != 0;
}

// The X code of the first key that carries `symbol` without anything held; 0 for none.
int XTestKeys::CodeOf(KeySymbol symbol) const {
  const XkbDescPtr map = keyboard_->map;
  for (int code = map->min_key_code; code <= map->max_key_code; ++code) {
    if (XkbKeyNumSyms(map, code) > 0 && *XkbKeySymsPtr(map, code) == symbol) return code;
  }
  return 0;
}

std::optional<KeyPlace> XTestKeys::FindOnLayout(KeySymbol symbol, bool character) {
  const XkbDescPtr map = keyboard_->map;
  // Locks count: with Caps Lock on, the small letter is the one that needs Shift.
  const unsigned locked = keyboard_->state.locked_mods | keyboard_->state.latched_mods;
  const std::array<KeyPlace, 4> levels{{{}, {0, true, false}, {0, false, true}, {0, true, true}}};
  for (const bool mainBlock : {true, false}) {
    for (const KeyPlace& level : levels) {
      if (level.Level3 && keyboard_->level3Mask == 0) continue;
      // Levels of a named key are reached by other means than Shift (Ctrl and Pause is Break): only its
      // first.
      if (!character && (level.Shift || level.Level3)) continue;
      const unsigned held =
          locked | (level.Shift ? unsigned{ShiftMask} : 0) | (level.Level3 ? keyboard_->level3Mask : 0);
      for (int code = map->min_key_code; code <= map->max_key_code; ++code) {
        if (InMainBlock(code - kXCodeOffset) != mainBlock) continue;
        unsigned used = 0;
        KeySym found = NoSymbol;
        const unsigned core = XkbBuildCoreState(held, keyboard_->state.group);
        if (XkbTranslateKeyCode(map, static_cast<KeyCode>(code), core, &used, &found) && found == symbol) {
          return KeyPlace{code - kXCodeOffset, level.Shift, level.Level3};
        }
      }
    }
  }
  return std::nullopt;
}

// The symbol stays on its key: a window that reads the new keyboard map late would else find the key empty
// again. Only when no key is spare any more does the symbol that was put there first give way.
std::optional<KeyPlace> XTestKeys::PutOnSpareKey(KeySymbol symbol) {
  const XkbDescPtr map = keyboard_->map;
  int code = map->max_key_code;
  while (code >= map->min_key_code && XkbKeyNumSyms(map, code) > 0) --code;
  if (code < map->min_key_code) {
    if (spare_.empty()) return std::nullopt;
    code = spare_.front();
    spare_.erase(spare_.begin());
  }
  // On both levels, so that a Shift that is held as well does not lose it.
  std::array<KeySym, 2> symbols{symbol, symbol};
  XChangeKeyboardMapping(display_, code, 2, symbols.data(), 1);
  XSync(display_, False);
  std::erase(spare_, code);
  spare_.push_back(code);
  return KeyPlace{code - kXCodeOffset, false, false};
}

void XTestKeys::Send(unsigned code, bool down) {
  if (code != 0) XTestFakeKeyEvent(display_, code, down ? True : False, CurrentTime);
}

bool XTestKeys::InjectOne(const KeyStroke& key) {
  const KeySymbol symbol = KeySymbolOf(key);
  if (symbol == 0 || !ReadKeyboard()) return false;
  auto place = FindOnLayout(symbol, key.Key == NamedKey::Character);
  if (!place) place = PutOnSpareKey(symbol);
  if (!place) return false;
  const std::array<unsigned, 4> codes{
      key.Ctrl ? static_cast<unsigned>(keyboard_->controlCode) : 0,
      key.Shift || place->Shift ? static_cast<unsigned>(keyboard_->shiftCode) : 0,
      place->Level3 ? static_cast<unsigned>(keyboard_->level3Code) : 0,
      static_cast<unsigned>(place->Code + kXCodeOffset)};
  for (const unsigned code : codes) Send(code, true);
  for (auto code = codes.rbegin(); code != codes.rend(); ++code) Send(*code, false);
  XFlush(display_);
  return !lost_;
}

bool XTestKeys::Inject(std::span<const KeyStroke> keys) {
  if (display_ == nullptr || lost_ || !trouble_.empty()) return false;
  // No events were asked for, but those that the server sends all the same must not pile up.
  while (!lost_ && XPending(display_) > 0) {
    XEvent event;
    XNextEvent(display_, &event);
  }
  for (const KeyStroke& key : keys) {
    if (lost_ || !InjectOne(key)) return false;
  }
  return true;
}

}  // namespace tvx
