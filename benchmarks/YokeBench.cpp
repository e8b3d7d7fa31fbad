// The yokes' cycle: what one costs, and how punctual it is on the event loop, idle and while every cycle also
// carries other work.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "platform/qt/QtHost.h"
#include "tests/ffb/YokeRig.h"

namespace tvx {
namespace {

void YokeCycle(benchmark::State& state) {
  test::YokeRig rig(2);
  rig.SetValue(6, 120);
  rig.Start();
  rig.Run(3000);
  for (auto _ : state) {
    rig.clock.Advance(1);
    rig.pair.ProcessTimer_Tick();
    state.PauseTiming();
    rig.Deliver();
    rig.socket.TakeSent();
    state.ResumeTiming();
  }
}
BENCHMARK(YokeCycle);

// Lateness of each cycle against the one before it, microseconds beside 40 ms, for five seconds. The argument
// is the number of threads that keep the processor busy meanwhile.
void YokeCycleJitter(benchmark::State& state) {
  int argumentCount = 1;
  char name[] = "YokeBench";
  char* arguments[] = {name, nullptr};
  QCoreApplication application(argumentCount, arguments);
  std::atomic<bool> busy = true;
  std::vector<std::thread> load;
  for (int i = 0; i < state.range(0); ++i) {
    load.emplace_back([&busy] {
      volatile unsigned work = 0;
      while (busy) work = work + 1;
    });
  }
  std::vector<double> offs;
  for (auto _ : state) {
    QtTimer timer(QStringLiteral("Yokes.ProcessTimer"));
    QElapsedTimer clock;
    clock.start();
    double last = 0;
    const Registration ticks = timer.OnTick([&] {
      const double now = static_cast<double>(clock.nsecsElapsed()) / 1000;
      if (last > 0) offs.push_back(std::abs(now - last - 1000.0 * YokePair::kIntervalMs));
      last = now;
      if (offs.size() >= 125) QCoreApplication::quit();
    });
    timer.SetInterval(YokePair::kIntervalMs);
    timer.SetEnabled(true);
    QCoreApplication::exec();
  }
  busy = false;
  for (std::thread& thread : load) thread.join();
  std::sort(offs.begin(), offs.end());
  const auto at = [&](double share) {
    return offs[static_cast<std::size_t>(share * double(offs.size() - 1))];
  };
  state.counters["p50_us"] = at(0.5);
  state.counters["p99_us"] = at(0.99);
  state.counters["max_us"] = offs.back();
}
BENCHMARK(YokeCycleJitter)->Arg(0)->Arg(2)->Arg(8)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tvx

BENCHMARK_MAIN();
