// The simulator ports of an IO module's definitions.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "config/Model.h"
#include "simlink/SimCom.h"

namespace tvx {

class IOModulePorts {
 public:
  // Of module 1 or 2, whose ports are opened under the opener code.
  IOModulePorts(const ConfigModel& model, SimCom& sim, int module, std::int16_t opener)
      : model_(model), sim_(sim), module_(module), opener_(opener) {}

  // Opens the port of each definition.
  void Open();
  // They were closed elsewhere, with all others.
  void Forget();
  // The definitions have changed: each finds its port again, and one whose Function is new gets a port at
  // once. A port that no definition uses any more stays open until all are closed. No effect while none is
  // open.
  void Assign();

  // The value that a definition's Function has now, by the definition's number; std::nullopt before one came.
  std::optional<double> Known(int definitionNr) const;
  // For a lamp: the value as it is read, also before the first one came.
  bool Read(int definitionNr, float& value) const;
  void Put(int definitionNr, float value);
  // kNoPort where the definition has none.
  Port PortOf(int definitionNr) const;

  // What an encoder has written, for the clicks that follow.
  void NoteStep(int definitionNr, float value, std::int64_t nowMs);
  // The last step of an encoder on the same Function, where it was no longer than half a second ago.
  std::optional<double> LastStep(int definitionNr, std::int64_t nowMs) const;

 private:
  struct Target {
    std::int16_t function = 0, sequence = 0;
    bool read = false;
    Port port = kNoPort;
    float written = 0;  // by an encoder, and when
    std::int64_t writtenMs = std::numeric_limits<std::int64_t>::min() / 2;
  };
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  std::size_t OpenTarget(const IOModuleRecord& definition, bool reads);
  std::size_t IndexOf(int definitionNr) const;

  const ConfigModel& model_;
  SimCom& sim_;
  const int module_;
  const std::int16_t opener_;
  bool open_ = false;
  std::vector<Target> targets_;
  std::vector<std::size_t> targetOf_;  // of each definition, by its number less 1
};

}  // namespace tvx
