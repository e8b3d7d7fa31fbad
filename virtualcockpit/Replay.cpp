#include "virtualcockpit/Replay.h"

#include "config/ConfigFile.h"
#include "platform/AtomicFile.h"

namespace tvx::vc {
namespace {

constexpr std::size_t kLargestFile = std::size_t{64} << 20;

// The configuration keeps raw positions less the middle of their range.
constexpr int kRawMiddle = 32768;

std::array<YokeTravel, kYokeAxes> TravelOf(const YokeRecord& yoke) {
  const auto travel = [](int low, int centre, int high) {
    return low == high ? YokeTravel{} : YokeTravel{low + kRawMiddle, centre + kRawMiddle, high + kRawMiddle};
  };
  return {travel(yoke.RollLeft, yoke.RollCentre, yoke.RollRight),
          travel(yoke.PitchForward, yoke.PitchCentre, yoke.PitchBack)};
}

}  // namespace

bool LoadTrace(const std::string& file, Trace& trace, ConfigModel& model, std::string& error) {
  const auto text = ReadWholeFile(file, error, kLargestFile);
  if (!text) return false;
  std::string why;
  auto read = ReadTrace(*text, why);
  if (read) {
    trace = std::move(*read);
    if (LoadConfigurationText(trace.configuration, model, why)) return true;
  }
  error = file + ": " + why;
  return false;
}

Replay::Replay(const Trace& trace, Cockpit& cockpit, const std::vector<std::unique_ptr<YokeLine>>& yokes,
               const Peer& program, QObject* parent)
    : QObject(parent), trace_(trace), cockpit_(cockpit), program_(program) {
  const bool first = cockpit.Model().General.ComPortYoke1 > 0;
  for (std::size_t i = 0; i < yokes.size() && i < yokes_.size(); ++i) {
    yokes_[first ? i : 1] = yokes[i].get();
    yokes[i]->Device().SetFault(YokeFault::Silent);
  }
  // What they answered is in the trace.
  cockpit_.Gauges().SetFault(LineFault::Silent);
  for (Unit* unit : {static_cast<Unit*>(&cockpit_.IOModuleOf(1)), static_cast<Unit*>(&cockpit_.IOModuleOf(2)),
                     static_cast<Unit*>(&cockpit_.Cluster())})
    unit->SetFault(DeviceFault::Silent);
  std::string ignored;  // without a socket the faces move all the same
  port_.Open(0, UdpPort::Buffer::Usual, ignored);
  timer_.setInterval(kTickMs);
  connect(&timer_, &QTimer::timeout, this, [this] {
    PlayUntil(clock_.NowMs() - beganMs_);
    if (Ended()) timer_.stop();
  });
}

void Replay::Start() {
  next_ = 0;
  beganMs_ = clock_.NowMs();
  timer_.start();
}

void Replay::PlayUntil(std::int64_t ms) {
  while (!Ended() && trace_.entries[next_].ms <= ms) Play(trace_.entries[next_++]);
}

void Replay::Play(const TraceEntry& entry) {
  if (entry.source == TraceSource::Simulator) {
    if (!entry.fromProgram) port_.SendTo(entry.bytes, program_);
  } else if (entry.fromProgram) {
    ToHardware(entry);
  } else {
    FromHardware(entry);
  }
}

void Replay::ToHardware(const TraceEntry& entry) {
  const std::int64_t now = clock_.NowMs();
  switch (entry.source) {
    case TraceSource::GaugeBus:
      return cockpit_.Gauges().OnBytes(entry.bytes, now);
    case TraceSource::EngineCluster:
      return cockpit_.Cluster().Receive(entry.bytes, now);
    case TraceSource::IOModule1:
      return cockpit_.IOModuleOf(1).Receive(entry.bytes, now);
    case TraceSource::IOModule2:
      return cockpit_.IOModuleOf(2).Receive(entry.bytes, now);
    default:
      if (YokeLine* yoke = YokeOf(entry.source)) yoke->Device().OnBytes(entry.bytes);
  }
}

YokeLine* Replay::YokeOf(TraceSource source) const {
  if (source == TraceSource::Yoke1) return yokes_[0];
  return source == TraceSource::Yoke2 ? yokes_[1] : nullptr;
}

void Replay::FromHardware(const TraceEntry& entry) {
  HardwareLine* line = nullptr;
  if (entry.source == TraceSource::GaugeBus) line = &cockpit_.GaugeLine();
  if (entry.source == TraceSource::EngineCluster) line = cockpit_.ClusterLine();
  if (entry.source == TraceSource::IOModule1) line = cockpit_.IOModuleLine(1);
  if (entry.source == TraceSource::IOModule2) line = cockpit_.IOModuleLine(2);
  if (YokeLine* yoke = YokeOf(entry.source)) {
    const ConfigModel& model = cockpit_.Model();
    yoke->Device().TakeAnswers(entry.bytes, TravelOf(yoke == yokes_[0] ? model.Yoke1 : model.Yoke2));
    line = yoke;
  }
  if (line != nullptr) line->Say(entry.bytes);
}

}  // namespace tvx::vc
