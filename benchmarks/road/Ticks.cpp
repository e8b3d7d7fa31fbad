// The process cycle: what a tick costs with a full bus.
#include <memory>

#include "benchmarks/road/Road.h"

namespace tvx {
namespace {

constexpr int kNeedle = 1;  // a Gaugetype
constexpr int kMovingFunction = 51;
constexpr int kMovingGroup = 51;

// All values of the moving group go through 0..900.
class MovingRoad : public Road {
 public:
  MovingRoad() {
    DefineFunction(model, kMovingFunction, DataType::Float, kMovingGroup);
    PlateRecord& plate = model.Plates.emplace_back();
    plate.Value[3] = plate.Value[5] = 1000;
    plate.Position[3] = plate.Position[5] = 1079;
  }
  void AddNeedles(int first, int count) {
    for (int id = first; id < first + count; ++id) AddGauge(id, kNeedle, kMovingFunction);
  }
  void Move() {
    clock.Advance(40);  // the time between two ticks, in which the line carries what it can
    value_ = value_ > 900 ? 0 : value_ + 10;
    std::array<float, 8> values{};
    values.fill(value_);
    socket.Waiting = DataDatagram(kMovingGroup, values);
    Receive();
  }

 private:
  float value_ = 0;
};

void RunTicks(benchmark::State& state, MovingRoad& road, bool moving) {
  road.Start();
  for (auto _ : state) {
    if (moving) {
      state.PauseTiming();
      road.Move();
      state.ResumeTiming();
    }
    road.cycle.Tick();
  }
}

void TickOf255Needles(benchmark::State& state, bool moving) {
  const auto road = std::make_unique<MovingRoad>();
  road->AddNeedles(1, 255);
  RunTicks(state, *road, moving);
}
BENCHMARK_CAPTURE(TickOf255Needles, all_moving, true);
BENCHMARK_CAPTURE(TickOf255Needles, none_moving, false);

// One of every instrument and 200 needles, everything moving.
void TickOfAMixedCockpit(benchmark::State& state) {
  const auto road = std::make_unique<MovingRoad>();
  for (int n = 1; n <= 50; ++n) DefineFunction(road->model, n, DataType::Float, kMovingGroup);
  for (const int n : {91, 112, 143, 144, 280, 281}) {
    DefineFunction(road->model, n, DataType::Float, kMovingGroup);
  }
  road->AddNeedles(1, 200);
  int id = 201;
  for (const int type : {2,   3,   4,   5,   6,   8,   10,  101, 103, 104, 105, 106, 107, 108,
                         109, 110, 111, 112, 113, 114, 120, 121, 122, 123, 124, 125, 130, 140}) {
    constexpr int kClusterGauge = 124;  // its Function is the first of eight
    road->AddGauge(id++, type, type == kClusterGauge ? 1 : kMovingFunction).GaugeSetting5 = 7;
  }
  RunTicks(state, *road, true);
}
BENCHMARK(TickOfAMixedCockpit);

}  // namespace
}  // namespace tvx
