// A seeded random user of the whole program: starts life after life, each a process of its own, and looks how
// it ends. scripts/monkey builds and calls it, in a folder for what it leaves.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <cstdio>
#include <memory>
#include <random>
#include <vector>

#include "tools/monkey/Live.h"
#include "tools/monkey/Tally.h"

namespace {

using tvx::monkey::Tally;

constexpr int kLookMs = 10;
constexpr int kMostLooks = 180'000 / kLookMs;  // at a life; time in which nothing runs at all does not count
constexpr int kEnoughFaults = 40;

struct Running {
  std::uint64_t seed;
  QDir folder;
  QProcess process;
  int looks = 0;
};

std::unique_ptr<Running> StartLife(std::uint64_t seed) {
  auto life = std::make_unique<Running>();
  life->seed = seed;
  life->folder = QDir("life-" + QString::number(seed)).absolutePath();
  life->folder.removeRecursively();
  life->folder.mkpath(".");
  life->process.setWorkingDirectory(life->folder.path());
  life->process.setProcessChannelMode(QProcess::MergedChannels);
  life->process.setStandardOutputFile(life->folder.filePath(Tally::kOutput));
  life->process.start(QCoreApplication::applicationFilePath(), {"--live", QString::number(seed)});
  return life;
}

// The folder of a life with a fault stays.
void EndLife(Running& life, Tally& tally) {
  const bool killed = life.process.state() != QProcess::NotRunning;
  if (killed) {
    life.process.kill();
    life.process.waitForFinished();
  }
  const bool crashed = life.process.exitStatus() == QProcess::CrashExit;
  const int status = crashed ? -life.process.exitCode() : life.process.exitCode();
  if (tally.Add({life.seed, status, killed, life.folder.path()})) life.folder.removeRecursively();
}

// `lives` from the seed on, or as many as `seconds` hold where it is 0; `jobs` at a time.
bool Run(std::uint64_t seed, int lives, double seconds, std::size_t jobs) {
  Tally tally;
  QElapsedTimer time;
  time.start();
  std::vector<std::unique_ptr<Running>> running;
  const std::uint64_t last = seed + static_cast<std::uint64_t>(lives);
  const auto more = [&] {
    if (tally.Faults() >= kEnoughFaults) return false;
    return lives > 0 ? seed < last : static_cast<double>(time.elapsed()) < seconds * 1000;
  };
  while (more() || !running.empty()) {
    while (more() && running.size() < jobs) running.push_back(StartLife(seed++));
    for (auto& life : running) {
      const bool over =
          life->process.waitForFinished(kLookMs) || life->process.state() == QProcess::NotRunning;
      if (!over && ++life->looks < kMostLooks) continue;
      EndLife(*life, tally);
      life.reset();
    }
    std::erase(running, nullptr);
  }
  tally.Print(static_cast<double>(time.elapsed()) / 1000);
  return tally.Faults() == 0;
}

std::uint64_t FreshSeed() {
  constexpr std::uint64_t kRound = 1'000'000;  // room for the lives of one run
  return std::random_device{}() % kRound * kRound;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && QByteArray(argv[1]) == "--live")
    return tvx::monkey::Live(QByteArray(argv[2]).toULongLong(), argc, argv);
  const QCoreApplication application(argc, argv);
  QCommandLineParser options;
  options.addHelpOption();
  options.addOptions({{"seconds", "How long to start new lives (60).", "N", "60"},
                      {"seed", "The seed of the first life; without it a fresh one.", "N"},
                      {"life", "Only the life with this seed.", "SEED"},
                      {"jobs", "How many live at a time (4); most of a life is waiting.", "N", "4"}});
  options.process(application);
  const bool one = options.isSet("life");
  const QString given = options.value(one ? "life" : "seed");
  const std::uint64_t seed = given.isEmpty() ? FreshSeed() : given.toULongLong();
  std::printf("From seed %llu on.\n", static_cast<unsigned long long>(seed));
  const auto jobs = static_cast<std::size_t>(std::max(1, options.value("jobs").toInt()));
  return Run(seed, one ? 1 : 0, options.value("seconds").toDouble(), jobs) ? 0 : 1;
}
