// What hangs on a serial adapter: asks politely, each kind of hardware with a question of its own that
// changes no setting.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/Bytes.h"
#include "platform/SerialPort.h"

namespace tvx {

enum class AdapterRole { GaugeBus, IOModule, EngineCluster, Yoke };

// Listens first, for hardware that reports by itself; then asks an IO module and the yokes for their report,
// the engine cluster for its version (in the one frame that it takes, with every needle at zero), and the
// gauges, one after the other. The first answer ends it, but for an IO module's: that may hang on the gauge
// bus, beside gauges, so the known gauges are asked too.
class RoleInquiry {
 public:
  // `port` is the inquiry's own while it runs.
  explicit RoleInquiry(SerialPort& port) : port_(port) {}

  // Asks for the port, which leads to the adapter in question. `yokes`: the addresses of the yokes; `gauges`:
  // those of known gauges (0..255), which are asked before all others.
  void Start(int comNumber, const std::vector<Byte>& yokes, const std::vector<int>& gauges);
  // Every 20 ms. Closes the port at the end; to ask everybody takes 16 s.
  void Tick();
  void Cancel();
  bool Running() const { return running_; }
  // What answered; std::nullopt while that is not known, and where nobody did.
  std::optional<AdapterRole> Found() const { return found_; }
  // How it ended or stands, for the user: "is being asked, 10 %", "answers as an IO module"; empty before it
  // began and when it was cancelled.
  const std::string& Words() const { return words_; }

 private:
  enum class Kind { Listen, Module, Yoke, Cluster, Gauge };
  struct Question {
    Kind kind;
    std::vector<Byte> frame;
    int ticks;  // for the answer
  };
  void AddGauge(int address);
  void AskNext();
  void Take(AdapterRole role);
  void End(std::string words);
  std::optional<AdapterRole> Judge() const;

  SerialPort& port_;
  bool running_ = false;
  int ticks_ = 0;  // since the port or the last question was asked
  std::vector<Question> questions_;
  std::size_t next_ = 0;
  std::size_t known_ = 0;  // questions up to the last known gauge
  bool module_ = false;    // an IO module has answered
  std::vector<Byte> answer_;
  std::optional<AdapterRole> found_;
  std::string words_;
};

}  // namespace tvx
