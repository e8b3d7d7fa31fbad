// An X server without a screen, with a window of ours that has the keyboard focus.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// Xlib's own header is kept out: its macros clash with everything.
struct _XDisplay;
union _XEvent;

namespace tvx {

// One key as a window gets it.
struct ReadKey {
  unsigned long symbol = 0;
  std::string text;  // Latin-1
  bool ctrl = false, shift = false;
};

class VirtualDisplay {
 public:
  VirtualDisplay();
  ~VirtualDisplay();
  VirtualDisplay(const VirtualDisplay&) = delete;
  VirtualDisplay& operator=(const VirtualDisplay&) = delete;

  // False where no X server could be started; why is in Trouble().
  bool Started() const { return display_ != nullptr; }
  const std::string& Trouble() const { return trouble_; }
  const std::string& Name() const { return name_; }
  // Gives the keyboard another layout; false where setxkbmap is missing.
  bool SetLayout(const std::string& layout);
  // The next key pressed in the window, modifiers apart, once it is up again; an empty one when none comes in
  // time.
  ReadKey NextKey();
  // How many keys carry no symbol.
  int SpareKeys();
  // Ends the server; the connections to it break.
  void Kill();

 private:
  bool StartServer();
  bool OpenWindow();
  bool NextEvent(_XEvent& event);

  struct End {
    void operator()(std::FILE* process) const { pclose(process); }
  };
  int server_ = -1;
  std::unique_ptr<std::FILE, End> said_;  // what the server says; waits for its end
  std::string name_, trouble_;
  _XDisplay* display_ = nullptr;
};

}  // namespace tvx
