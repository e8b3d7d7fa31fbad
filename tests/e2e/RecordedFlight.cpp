#include "tests/e2e/RecordedFlight.h"

#include <sstream>
#include <utility>

#include "config/ConfigFile.h"
#include "config/FunctionNumbers.h"

namespace tvx::e2e {
namespace {

constexpr std::string_view kHex = "0123456789abcdef";

std::string FromHex(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < text.size(); i += 2)
    bytes += static_cast<char>(kHex.find(text[i]) * 16 + kHex.find(text[i + 1]));
  return bytes;
}

}  // namespace

std::vector<RecordedTick> ReadRecording(const std::string& text) {
  std::vector<RecordedTick> ticks;
  RecordedTick tick;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("S ")) tick.datagrams.push_back(FromHex(std::string_view(line).substr(2)));
    if (!line.starts_with("G")) continue;
    tick.bus = FromHex(std::string_view(line).substr(std::min<std::size_t>(2, line.size())));
    ticks.push_back(std::move(tick));
    tick = {};
  }
  return ticks;
}

bool RecordedCockpit::Load(const std::string& configFile) {
  model.ConfigFileName = configFile;
  ConfigFile(model, boxes).LoadConfigFile();
  OpenLinks();
  // The recorded datagrams carry the numbers of ports, of a time when the cockpit of the tests did not open
  // these two Functions among the standard ports.
  FunctionRecord &time = model.Functions[functions::kTimeOfDay],
                 &temperature = model.Functions[functions::kOutsideTemperature];
  const FunctionRecord theTime = std::exchange(time, {}), theTemperature = std::exchange(temperature, {});
  cycle.OpenStandardPorts();
  time = theTime;
  temperature = theTemperature;
  StartCycle();
  return !model.ConfigLoadFailed;
}

std::string RecordedCockpit::Play(const Texts& datagrams) {
  for (const std::string& datagram : datagrams) socket.Deliver(datagram);
  // A line that is not overloaded: it has carried the tick before.
  PassTick();
  Bus().Writes.clear();
  cycle.Tick();
  std::string sent;
  for (const auto& write : Bus().Writes) sent.append(write.begin(), write.end());
  return sent;
}

}  // namespace tvx::e2e
