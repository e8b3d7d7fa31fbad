#include "virtualcockpit/Replay.h"

#include "config/ConfigFile.h"
#include "platform/AtomicFile.h"

namespace tvx::vc {
namespace {

constexpr std::size_t kLargestFile = std::size_t{64} << 20;

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

Replay::Replay(const Trace& trace, Cockpit& cockpit, const Peer& program, QObject* parent)
    : QObject(parent), trace_(trace), cockpit_(cockpit), program_(program) {
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
      return;  // yokes are not drawn from a trace
  }
}

void Replay::FromHardware(const TraceEntry& entry) {
  HardwareLine* line = nullptr;
  if (entry.source == TraceSource::GaugeBus) line = &cockpit_.GaugeLine();
  if (entry.source == TraceSource::EngineCluster) line = cockpit_.ClusterLine();
  if (entry.source == TraceSource::IOModule1) line = cockpit_.IOModuleLine(1);
  if (entry.source == TraceSource::IOModule2) line = cockpit_.IOModuleLine(2);
  if (line != nullptr) line->Say(entry.bytes);
}

}  // namespace tvx::vc
