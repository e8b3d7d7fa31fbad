#include "platform/SerialDevices.h"

namespace tvx {

namespace {

constexpr const char* kThisProgram = "this program";

std::string Enumerated(const std::vector<std::string>& names) {
  std::string words;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i > 0) words += i + 1 == names.size() ? " and " : ", ";
    words += names[i];
  }
  return words;
}

}  // namespace

const std::string& SerialDevice::LastingName() const {
  const std::string& name = twin || byName.empty() ? bySocket : byName;
  return name.empty() ? path : name;
}

std::string SerialDevice::Words() const {
  std::string words = adapter;
  if (!serialNumber.empty()) words += (words.empty() ? "serial " : ", serial ") + serialNumber;
  if (twin) words += (words.empty() ? "" : ", ") + std::string("one of several alike: known by its socket");
  return words + (words.empty() ? "" : ", ") + path;
}

std::string SerialDevice::UserWords() const {
  return Enumerated(users);
}

std::string SerialDevice::OtherUserWords() const {
  std::vector<std::string> others = users;
  std::erase(others, kThisProgram);
  return Enumerated(others);
}

std::string SerialDevice::StateWords() const {
  if (!mayOpen) {
    return "no permission; " + AdviceOnPermission(group).clause;
  }
  if (!users.empty()) {
    const std::string others = OtherUserWords();
    const bool shared = !others.empty() && others != UserWords();
    return "in use by " + UserWords() + (shared ? "; bytes get lost while two read it" : "");
  }
  if (foundBusy) return "busy: a program of another user has it";
  if (usersUnknown) return "plugged in";
  return allUsersSeen ? "free" : "not in use by any program of yours";
}

}  // namespace tvx
