// The configuration model: what the configuration forms edit, the file keeps, and every other part reads.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/Version.h"
#include "config/FunctionTable.h"
#include "config/Records.h"

namespace tvx {

inline constexpr int kGaugetypeSlots = 128;
inline constexpr int kGauges = 256;  // GaugeIDs 0..255
inline constexpr int kEngineClusterSettings = 11;
inline constexpr int kCategories = 12;

// Run-time connection state of a GaugeID (not stored in the file).
enum class GaugeConnection : Byte { Unknown = 0, NotConnected = 1, Connected = 2 };

// One object, made by the program's entry and passed by reference; filled from a configuration file
// (ConfigFile.h).
struct ConfigModel {
  std::string ProgramTitle{kProgramTitle};
  std::string ConfigFileName = "Default.cfg";
  std::int16_t StartDelay = 10;  // s
  bool ConfigLoadFailed = false;
  std::string LastAnswer;      // answer code of the last Yes/No question
  bool ConfigChanged = false;  // a setting was changed since loading or saving

  GeneralRecord General;
  std::vector<IOModuleRecord> IOModuleInputs =
      std::vector<IOModuleRecord>(1);  // IOMCount records and one spare
  FunctionTable Functions;
  std::array<GaugetypeRecord, kGaugetypeSlots> Gaugetypes{};
  std::array<std::string, kCategories> Categories{};
  std::array<GaugeRecord, kGauges> Gauges{};
  std::array<EngineClusterRecord, kEngineClusterSettings> EngineCluster{};
  std::vector<PlateRecord> Plates;  // PlateCount of them
  GeneralFFBRecord GeneralFFB;
  YokeRecord Yoke1;
  YokeRecord Yoke2;

  std::array<GaugeConnection, kGauges> GaugeState{};

  // Number of IO module records.
  int IOMCount() const { return static_cast<int>(IOModuleInputs.size()) - 1; }
  int PlateCount() const { return static_cast<int>(Plates.size()); }
  // The Plate; null for a number that no Plate has.
  const PlateRecord* PlateOf(int number) const {
    return number >= 0 && number < PlateCount() ? &Plates[static_cast<std::size_t>(number)] : nullptr;
  }
  // The Function; null for a number outside 0..300.
  const FunctionRecord* FunctionOf(int number) const {
    return number >= 0 && number < kFunctions ? &Functions[static_cast<std::size_t>(number)] : nullptr;
  }
  bool HasEngineCluster() const { return General.ComPortEC > 0; }
  bool HasIOModule1() const { return General.ComPortIOM1 > 0; }
  bool HasIOModule2() const { return General.ComPortIOM2 > 0; }
  bool HasYoke1() const { return General.ComPortYoke1 > 0; }
  bool HasYoke2() const { return General.ComPortYoke2 > 0; }
};

}  // namespace tvx
