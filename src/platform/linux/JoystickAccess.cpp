#include "platform/linux/JoystickAccess.h"

#include <unistd.h>

#include <fstream>
#include <sstream>

namespace tvx {
namespace {

// The word of a line of handlers that begins so; empty where there is none.
std::string HandlerOf(const std::string& handlers, const std::string& stem) {
  std::istringstream words(handlers);
  for (std::string word; words >> word;) {
    if (word.starts_with(stem)) return word;
  }
  return {};
}

}  // namespace

// A device is a paragraph: N: Name="...", H: Handlers=event5 js0. What has a js handler is a joystick.
std::string UnreadableJoystick(const std::string& list, const std::string& devices) {
  std::ifstream in(list);
  std::string name;
  for (std::string line; std::getline(in, line);) {
    constexpr std::string_view kName = "N: Name=", kHandlers = "H: Handlers=";
    if (line.starts_with(kName)) name = line.substr(kName.size());
    if (!line.starts_with(kHandlers)) continue;
    const std::string handlers = line.substr(kHandlers.size());
    const std::string event = HandlerOf(handlers, "event");
    if (HandlerOf(handlers, "js").empty() || event.empty()) continue;
    const std::string path = devices + event;
    if (access(path.c_str(), F_OK) != 0 || access(path.c_str(), R_OK) == 0) continue;
    return name + " is connected, but this user may not read " + path +
           ": log in at this computer's screen, or let an administrator add you to the group \"input\".";
  }
  return {};
}

}  // namespace tvx
