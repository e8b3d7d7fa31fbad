// The process cycle: what a tick costs with a full bus.
#include <benchmark/benchmark.h>

#include <initializer_list>

#include "tests/fakes/CockpitRig.h"

namespace tvx {
namespace {

constexpr int kMovingFunction = 51;

// Takes everything and keeps nothing, so that only the program is measured.
class NullPort final : public SerialPort {
 public:
  void SetHandler(Handler) override {}
  void SetReceiveThreshold(std::size_t) override {}
  bool Open(int) override { return true; }
  void Close() override {}
  SerialState State() const override { return SerialState::Open; }
  std::string Device() const override { return {}; }
  bool Write(ByteView bytes) override {
    benchmark::DoNotOptimize(bytes.data());
    return true;
  }
  std::size_t Read(std::span<Byte>) override { return 0; }
  std::size_t Waiting() const override { return 0; }
  void DiscardInput() override {}
  void DiscardOutput() override {}
  std::optional<bool> CarrierDetect() const override { return std::nullopt; }
};

struct BenchRig : CockpitRig {
  NullPort port;
  Serial bus{model, {&port, &port, &port, &port, &port, &port}, boxes, loop};
  ProcessCycle tick{model, sim, bus, special};

  void Prepare() {
    Start();  // opens the link; its own cycle is not used
    tick.PrepareGauges();
    tick.StartRun();
    for (int i = 0; i < 3; ++i) tick.Tick();
  }
  void AddNeedles(int first, int count) {
    Define(kMovingFunction);
    const auto plate = static_cast<Byte>(AddPlate(0, 1000, 1079));
    for (int id = first; id < first + count; ++id) {
      GaugeRecord& gauge = AddGauge(id, 1);
      gauge.GaugeFunction1 = kMovingFunction;
      gauge.GaugeSetting3 = plate;
    }
  }
};

void TickOf255Needles(benchmark::State& state, bool moving) {
  BenchRig rig;
  rig.AddNeedles(1, 255);
  rig.Prepare();
  float value = 0;
  for (auto _ : state) {
    if (moving) {
      state.PauseTiming();
      value = value > 900 ? 0 : value + 10;
      rig.Set(kMovingFunction, value);
      state.ResumeTiming();
    }
    rig.tick.Tick();
  }
}
BENCHMARK_CAPTURE(TickOf255Needles, all_moving, true);
BENCHMARK_CAPTURE(TickOf255Needles, none_moving, false);

// One of every instrument and 200 needles, everything moving.
void TickOfAMixedCockpit(benchmark::State& state) {
  BenchRig rig;
  for (int n = 1; n <= 50; ++n) rig.Define(n);
  for (const int n : {91, 112, 143, 144, 280, 281}) rig.Define(n);
  rig.AddNeedles(1, 200);
  int id = 201;
  for (const int type : {2,   3,   4,   5,   6,   8,   10,  101, 103, 104, 105, 106, 107, 108,
                         109, 110, 111, 112, 113, 114, 120, 121, 122, 123, 124, 125, 130, 140}) {
    GaugeRecord& gauge = rig.AddGauge(id++, type);
    gauge.GaugeFunction1 = type == 124 ? 1 : kMovingFunction;
    gauge.GaugeSetting5 = 7;
  }
  rig.Prepare();
  float value = 0;
  for (auto _ : state) {
    state.PauseTiming();
    value = value > 900 ? 0 : value + 10;
    for (const int n : {2, 3, 4, 5, 20, 26, 27, 31, 33, kMovingFunction}) rig.Set(n, value);
    state.ResumeTiming();
    rig.tick.Tick();
  }
}
BENCHMARK(TickOfAMixedCockpit);

}  // namespace
}  // namespace tvx

BENCHMARK_MAIN();
