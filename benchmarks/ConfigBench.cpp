// Loading and saving a full configuration, from and to text and from and to the disk.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "config/ConfigFile.h"
#include "tests/fakes/FakeHost.h"

namespace tvx {
namespace {

// Every table full, with values of the length that real ones have.
ConfigModel FullModel() {
  ConfigModel model;
  model.General.ConfigHeader = BuildConfigHeader("X-Plane", "12.11.00", "2024-06-01 12:00:00");
  model.IOModuleInputs.resize(161);
  for (std::size_t i = 0; i < 160; ++i) {
    model.IOModuleInputs[i].Input = static_cast<std::int16_t>(1000 + i);
    model.IOModuleInputs[i].FunctionNr = static_cast<std::int16_t>(i + 51);
    model.IOModuleInputs[i].OffOnValue = 0.25f;
  }
  for (std::size_t i = 0; i < model.Functions.size(); ++i) {
    FunctionRecord& f = model.Functions[i];
    f.ShortName = "Function " + std::to_string(i);
    f.FullName =
        "#1:sim/cockpit2/gauges/indicators/airspeed_kts_pilot\r\n"
        "#2:sim/cockpit2/gauges/indicators/airspeed_kts_copilot\r\n";
    f.FunctionNr = static_cast<std::int16_t>(i);
    f.ComboDT = static_cast<Byte>(DataType::XplaneDataref);
    f.BoxAdd = 17.777779f;
    f.Multiplier = f.Devider = 1.8f;
    f.boxMaximumValue = 1023;
    f.XPVal1 = f.XPVal2 = 20;
  }
  for (std::size_t i = 1; i < model.Gauges.size(); ++i) {
    model.Gauges[i] = {4, 1, 12, static_cast<Byte>(i % 40), static_cast<std::int16_t>(i), 1, 0, 0, 0, 0, 0};
  }
  model.Plates.resize(40);
  for (auto& plate : model.Plates) {
    plate.Name = "Airspeed 40-200 kt";
    for (std::size_t k = 2; k < PlateRecord::kStoredPoints; ++k) {
      plate.Value[k] = static_cast<double>(k) * 8.333;
      plate.Position[k] = static_cast<std::int16_t>(k * 43);
    }
  }
  return model;
}

void WriteText(benchmark::State& state) {
  const ConfigModel model = FullModel();
  std::size_t bytes = 0;
  for (auto _ : state) bytes += WriteConfigText(model).size();
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes));
}
BENCHMARK(WriteText)->Unit(benchmark::kMicrosecond);

void ReadText(benchmark::State& state) {
  const std::string text = WriteConfigText(FullModel());
  ConfigModel model;
  FakeMessageBoxes boxes;
  std::string error;
  for (auto _ : state) {
    if (ReadConfigText(text, model, boxes, error) != ConfigReadResult::Loaded) {
      state.SkipWithError(error.c_str());
      break;
    }
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
BENCHMARK(ReadText)->Unit(benchmark::kMicrosecond);

// In the current folder, so that it tells what that disk does; the file is removed again.
constexpr char kFileName[] = "ConfigBench.cfg";

void SaveToDisk(benchmark::State& state) {
  ConfigModel model = FullModel();
  model.ConfigFileName = kFileName;
  FakeMessageBoxes boxes;
  ConfigFile file(model, boxes);
  for (auto _ : state) {
    if (!file.SaveConfigFile()) {
      state.SkipWithError("cannot save");
      break;
    }
  }
  std::filesystem::remove(kFileName);
}
BENCHMARK(SaveToDisk)->Unit(benchmark::kMicrosecond)->UseRealTime();

void LoadFromDisk(benchmark::State& state) {
  ConfigModel model = FullModel();
  model.ConfigFileName = kFileName;
  FakeMessageBoxes boxes;
  ConfigFile file(model, boxes);
  file.SaveConfigFile();
  for (auto _ : state) {
    file.LoadConfigFile();
    if (model.ConfigLoadFailed) {
      state.SkipWithError("cannot load");
      break;
    }
  }
  std::filesystem::remove(kFileName);
}
BENCHMARK(LoadFromDisk)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace
}  // namespace tvx

BENCHMARK_MAIN();
