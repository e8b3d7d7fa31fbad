// A trace, played again: the drawn instruments move as they did, and a program that listens hears the
// simulator and the instruments as they spoke.
#pragma once

#include <QObject>
#include <QTimer>

#include "trace/TraceFile.h"
#include "virtualcockpit/Cockpit.h"
#include "virtualcockpit/pace/Clock.h"
#include "virtualcockpit/sim/UdpPort.h"
#include "virtualcockpit/yokes/YokeLine.h"

namespace tvx::vc {

// Reads a trace and its configuration. False with the reason in words.
bool LoadTrace(const std::string& file, Trace& trace, ConfigModel& model, std::string& error);

class Replay : public QObject {
  Q_OBJECT
 public:
  // The cockpit is one whose own simulator is off; its instruments, and `yokes`, those that its configuration
  // names, do not answer by themselves any more. All must outlive the replay. `program`: where the recorded
  // simulator's datagrams are sent.
  Replay(const Trace& trace, Cockpit& cockpit, const std::vector<std::unique_ptr<YokeLine>>& yokes,
         const Peer& program, QObject* parent = nullptr);

  // From the beginning, in the time it took.
  void Start();
  // Plays what is due `ms` after the beginning.
  void PlayUntil(std::int64_t ms);
  bool Ended() const { return next_ >= trace_.entries.size(); }

 private:
  void Play(const TraceEntry& entry);
  void ToHardware(const TraceEntry& entry);
  void FromHardware(const TraceEntry& entry);
  YokeLine* YokeOf(TraceSource source) const;

  static constexpr int kTickMs = 10;
  const Trace& trace_;
  Cockpit& cockpit_;
  std::array<YokeLine*, 2> yokes_{};  // null where the configuration names none
  const Peer program_;
  SystemClock clock_;
  UdpPort port_;
  QTimer timer_;
  std::size_t next_ = 0;
  std::int64_t beganMs_ = 0;
};

}  // namespace tvx::vc
