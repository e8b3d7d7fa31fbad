// A reply from the gauge bus: what it costs until the simulator was written to.
#include <memory>

#include "benchmarks/road/Road.h"

namespace tvx {
namespace {

constexpr int kGauge = 12;
constexpr int kHeadingIndicator = 105;  // a Gaugetype
constexpr int kBugFunction = 51;
constexpr int kOptionKnobs = 1;  // the knobs report

// A knob that is turned further from reply to reply.
void ReplyOfATurnedKnob(benchmark::State& state) {
  const auto road = std::make_unique<Road>();
  DefineFunction(road->model, kBugFunction, DataType::Float);
  road->AddGauge(kGauge, kHeadingIndicator, kBugFunction).GaugeSetting5 = kOptionKnobs;
  road->Start();
  auto& reply = road->line.Reply;
  reply[1] = kGauge;
  reply[2] = kHeadingIndicator;
  reply[kReplySize - 1] = 0xFF;
  for (auto _ : state) {
    reply[10] = static_cast<Byte>(reply[10] ^ 0x40);  // of the bug's setting
    road->receiver.OnComm(SerialEvent::Received, true);
  }
}
BENCHMARK(ReplyOfATurnedKnob);

}  // namespace
}  // namespace tvx
