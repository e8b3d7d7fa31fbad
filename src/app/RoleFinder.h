// Finds out which hardware group an adapter is for, by asking what hangs on it.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "app/RoleInquiry.h"
#include "config/Model.h"
#include "hwbus/gaugebus/Serial.h"
#include "platform/ComPorts.h"
#include "platform/machine/Machine.h"

namespace tvx {

// A port that leads to one adapter, whatever its COM number is.
struct AdapterLine {
  explicit AdapterLine(Machine& machine) : port(machine.MakePortTo([this] { return path; })) {}
  AdapterLine(const AdapterLine&) = delete;
  AdapterLine& operator=(const AdapterLine&) = delete;
  std::string path;
  std::unique_ptr<SerialPort> port;
};

class RoleFinder {
 public:
  RoleFinder(const ConfigModel& model, Serial& serial, const ComPorts& numbers, AdapterLine& line)
      : model_(model), serial_(serial), numbers_(numbers), line_(line), inquiry_(*line.port) {}

  // Asks what hangs on the adapter. The ports of all groups are closed meanwhile, and asked for anew at the
  // end.
  void Ask(const SerialDevice& adapter);
  void Cancel();
  // About every 20 ms.
  void Tick();
  bool Running() const { return inquiry_.Running(); }
  // True once after each change of Words.
  bool Changed();
  // As RoleInquiry's.
  const std::string& Words() const { return words_; }
  // The group that the adapter is for: one that has lost its own, else one without a port, else the first;
  // std::nullopt where that is not known, or the adapter serves its group already.
  struct Offer {
    HardwareGroup group;
    int comNumber;  // the number that the group has and no adapter any more; otherwise 0
  };
  std::optional<Offer> Offered() const;

 private:
  bool Serves() const;
  void End();

  const ConfigModel& model_;
  Serial& serial_;
  const ComPorts& numbers_;
  AdapterLine& line_;
  SerialDevice adapter_;
  RoleInquiry inquiry_;
  std::string words_;
  std::string shown_;  // the words when Changed was last asked
};

}  // namespace tvx
