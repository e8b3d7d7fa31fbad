#include "simlink/aircraft/AircraftSwitch.h"

#include <utility>

#include "platform/AtomicFile.h"

namespace tvx {

std::string AircraftWords(const Aircraft& aircraft) {
  if (aircraft.Icao.empty()) return aircraft.File;
  return aircraft.Icao + (aircraft.File.empty() ? "" : " (" + aircraft.File + ")");
}

AircraftSwitch::AircraftSwitch(const ConfigModel& model, SimCom& sim, MessageBoxes& boxes, const Clock& clock,
                               Host& host)
    : model_(model), sim_(sim), boxes_(boxes), host_(host), name_(sim, clock) {
  std::string error;
  if (const auto text = ReadWholeFile(std::string(kAircraftListName), error)) list_ = ReadAircraftList(*text);
  sim_.SetOtherValues(&name_);
}

void AircraftSwitch::Tick() {
  name_.Tick(list_.On);
  if (!list_.On) {
    decided_.reset();
    words_.clear();
  } else if (!name_.Known()) {
    words_ = "Follows the aircraft: X-Plane has not told which one it flies";
  } else if (name_.Known() != decided_) {
    Decide(*name_.Known());
  }
}

void AircraftSwitch::Decide(const Aircraft& aircraft) {
  const AircraftLine* line = list_.Find(aircraft);
  if (line == nullptr) {
    words_ = "No configuration is listed for " + AircraftWords(aircraft) + "; this one stays";
  } else if (line->File == model_.ConfigFileName) {
    words_ = "For " + AircraftWords(aircraft);
  } else if (!host_.MayChangeConfiguration()) {
    words_ = line->File + " for " + AircraftWords(aircraft) + " waits until the configuration is closed";
    return;
  } else {
    const std::string file = line->File;
    // Loading may ask, and the event loop runs meanwhile: this aircraft is decided about.
    decided_ = aircraft;
    words_ = host_.UseConfiguration(file)
                 ? "For " + AircraftWords(aircraft)
                 : file + " for " + AircraftWords(aircraft) + " cannot be loaded; this one stays";
  }
  decided_ = aircraft;
}

bool AircraftSwitch::SetList(AircraftList list) {
  std::string error;
  if (!ReplaceFile(std::string(kAircraftListName), WriteAircraftList(list), error)) {
    boxes_.Show("The list of aircraft cannot be written: " + error);
    return false;
  }
  list_ = std::move(list);
  decided_.reset();
  return true;
}

}  // namespace tvx
