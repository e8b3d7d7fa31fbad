#include "ffb/pedals/PedalDevices.h"

#include <charconv>
#include <utility>

#include "ffb/pedals/Pedals.h"
#include "platform/AtomicFile.h"

namespace tvx {
namespace {

constexpr int kNumbers = 16;  // that a form offers
constexpr std::string_view kWords = "Joystick number, identity and name of the devices that were chosen.\n";

std::string Quoted(const std::string& name) {
  return '"' + name + '"';
}

// A name from a device may hold anything; in the file it is one line.
std::string OneLine(std::string text) {
  for (char& c : text) {
    if (static_cast<unsigned char>(c) < ' ') c = ' ';
  }
  return text;
}

bool SameDevice(const JoystickInfo& a, const JoystickInfo& b) {
  return a.identity == b.identity;
}

}  // namespace

// A line is "number identity name". One that is not is passed over.
void PedalDevices::KeepIn(std::string file) {
  file_ = std::move(file);
  std::string error;
  const std::string text = ReadWholeFile(file_, error).value_or(std::string());
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    const std::string_view line = std::string_view(text).substr(at, end - at);
    at = end + 1;
    int number = -1;
    const auto [after, fault] = std::from_chars(line.data(), line.data() + line.size(), number);
    if (fault != std::errc() || number < 0 || number >= kNumbers) continue;
    const auto first = static_cast<std::size_t>(after - line.data());
    const std::size_t second = line.find(' ', first + 1);
    if (first == line.size() || second == std::string_view::npos) continue;
    JoystickInfo& info = chosen_[number];
    info.identity = line.substr(first + 1, second - first - 1);
    info.name = line.substr(second + 1);
  }
}

bool PedalDevices::Keep(std::string& error) const {
  if (file_.empty()) return true;
  std::string text(kWords);
  for (const auto& [number, info] : chosen_) {
    text += std::to_string(number) + ' ' + info.identity + ' ' + OneLine(info.name) + '\n';
  }
  return ReplaceFile(file_, text, error);
}

bool PedalDevices::Choose(int number, std::string& error) {
  const JoystickInfo* there = device_.Describe(number);
  if (there == nullptr) return true;
  const auto before = chosen_.find(number);
  if (before != chosen_.end() && SameDevice(before->second, *there)) return true;
  chosen_[number] = *there;
  return Keep(error);
}

PedalState PedalDevices::Look(const YokeRecord& record) {
  const JoystickInfo* there = device_.Describe(record.JoystickNumber);
  if (there == nullptr) return PedalState::Absent;
  const auto chosen = chosen_.find(record.JoystickNumber);
  if (chosen != chosen_.end() && !SameDevice(chosen->second, *there)) return PedalState::Other;
  for (const Byte axis : {record.RudderAxis, record.LeftBrakeAxis, record.RightBrakeAxis}) {
    if (!HasAxis(*there, axis)) return PedalState::NoAxis;
  }
  return PedalState::Usable;
}

std::string PedalDevices::OtherWords(int number, const JoystickInfo& there) {
  const JoystickInfo chosen = chosen_[number];
  std::string words = "Joystick " + std::to_string(number) + " is " + Quoted(there.name) + " now, but " +
                      Quoted(chosen.name) + " was set up. It is not used.";
  if (there.name == chosen.name) {
    words = "Joystick " + std::to_string(number) + " is another " + Quoted(there.name) +
            " than the one that was set up. It is not used.";
  }
  for (int other = 0; other < kNumbers; ++other) {
    const JoystickInfo* candidate = device_.Describe(other);
    if (candidate == nullptr || !SameDevice(*candidate, chosen)) continue;
    return words + " The right one is joystick " + std::to_string(other) + " now.";
  }
  return words;
}

std::string PedalDevices::Words(const YokeRecord& record) {
  const int number = record.JoystickNumber;
  const PedalState state = Look(record);
  const JoystickInfo* there = device_.Describe(number);
  if (there == nullptr) {
    const auto chosen = chosen_.find(number);
    std::string words = chosen == chosen_.end() ? "There is no joystick " + std::to_string(number) + "."
                                                : Quoted(chosen->second.name) + " (joystick " +
                                                      std::to_string(number) + ") is not connected.";
    const std::string trouble = device_.Trouble();
    return trouble.empty() ? words : words + ' ' + trouble;
  }
  const JoystickInfo info = *there;
  if (state == PedalState::Other) return OtherWords(number, info);
  if (state == PedalState::NoAxis) {
    for (const Byte axis : {record.RudderAxis, record.LeftBrakeAxis, record.RightBrakeAxis}) {
      if (!HasAxis(info, axis)) return NoAxisWords(info, axis);
    }
  }
  return Quoted(info.name) + ", " + std::to_string(info.axes) + (info.axes == 1 ? " axis" : " axes");
}

}  // namespace tvx
