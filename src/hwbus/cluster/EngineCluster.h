// The engine cluster: many needles on a port of its own, all of them in one frame a tick.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "base/NumberFormat.h"
#include "config/Model.h"
#include "hwbus/HardwarePorts.h"
#include "hwbus/StaleInput.h"
#include "hwbus/cluster/EngineClusterFrame.h"
#include "platform/Host.h"
#include "simlink/SimCom.h"

namespace tvx {

class EngineCluster {
 public:
  static constexpr std::size_t kOptionsSetting = kECChannels;  // the record behind those of the channels

  struct Timers {
    Timer& ProcessTimer;  // TransferInterval; while running
    Timer& Timer1000ms;
  };
  EngineCluster(const ConfigModel& model, SimCom& sim, HardwarePorts& hardware, MessageBoxes& boxes,
                const Clock& clock, Timers timers);

  bool Configured() const { return hardware_.Configured(HardwareGroup::EngineCluster); }
  // Asks for the serial port unless it is open; says so when there is none.
  void OpenCommPort();
  // Opens the simulator port of each enabled channel, under the cluster's opener code.
  void OpenPorts();
  // Forgets the simulator's ports. They are closed elsewhere, with all others.
  void ForgetPorts();
  void cmdRun_Click();
  void cmdStop_Click();
  // Moves one needle, 0..14, at once; its value is the raw one. No effect for another needle.
  void MoveSingleNeedle(int needle, int value);
  // The next cycle sends the recalibration frame, the one after it zeroes.
  void Recalibrate();
  // The next frame asks the cluster to start anew.
  void ResetCluster() { lighting_.OneShot |= kECReset; }
  // The cockpit's lighting: the instrument lights are on; the bus has power.
  void SetLighting(bool instrumentLights, bool powered);
  // Takes the edited configuration over: the options at once, a channel's other Function while running or by
  // the next run. Enabled, Plate and version are read from the model each tick.
  void TakeSettings();

  void MSComm1_OnComm(SerialEvent event);
  void ProcessTimer_Tick();
  void Timer1000ms_Tick();

  // --- what the forms show ---
  bool Running() const { return running_; }
  std::string StatusText() const;
  const ShortText& boxValue(int channel) const { return boxValue_[static_cast<std::size_t>(channel)]; }
  const std::string& boxUnitReply() const { return boxUnitReply_; }
  bool ChannelEnabled(int channel) const;
  // The position last sent to a channel's needle.
  int Position(int channel) const { return position_[static_cast<std::size_t>(channel)]; }
  bool DualEngine() const;
  int NeedleOf(int channel) const { return ECNeedleOfChannel(channel, DualEngine()); }
  // What an enabled channel's Function says now; std::nullopt while halted and where it has no value.
  std::optional<double> Value(int channel) const;
  // The simulator port of a channel; kNoPort where it has none.
  Port PortOf(int channel) const { return ports_[static_cast<std::size_t>(channel)]; }
  // The needle position 0..1079 for a value: its place on the channel's Plate; without a Plate the value
  // itself.
  int PositionOf(int channel, double value) const;
  bool Recalibrating() const { return ecMode_ != ECMode::Normal || hold_ > 0; }
  // The frame that left last, and when the needles were last told to find their stops, on the clock's count;
  // std::nullopt before.
  const std::optional<ECFrame>& SentFrame() const { return sent_; }
  std::optional<std::int64_t> RecalibratedMs() const { return recalibratedMs_; }

 private:
  enum class ECMode { Normal, RecalibrationRequested, Recalibrating };

  SerialPort& Line() { return hardware_.PortOf(HardwareGroup::EngineCluster); }
  const EngineClusterRecord& Channel(int channel) const {
    return model_.EngineCluster[static_cast<std::size_t>(channel)];
  }
  void TellOpenError();
  void ReadOptions();
  void FollowFunctions();
  void FillNeedles(ECFrame& frame);
  bool Send(const ECFrame& frame);

  const ConfigModel& model_;
  SimCom& sim_;
  HardwarePorts& hardware_;
  MessageBoxes& boxes_;
  const Clock& clock_;
  Timers timers_;
  Registration events_;  // of the line
  bool running_ = false;
  bool openErrorDue_ = false;  // the port was asked for, and who asked is told when there is none
  ECMode ecMode_ = ECMode::Normal;
  int hold_ = 0;  // seconds for which the cluster is taken to sweep
  ECLighting lighting_;
  ECVersionText ecVersion_;
  StaleInput input_;
  bool portsOpen_ = false;
  std::array<Port, kECChannels> ports_{};
  std::array<std::int16_t, kECChannels> portFunction_{};  // that the port was asked for; 0: none
  std::array<ShortText, kECChannels> boxValue_{};
  std::array<int, kECChannels> position_{};
  std::string boxUnitReply_;
  std::optional<ECFrame> sent_;
  std::optional<std::int64_t> recalibratedMs_;
};

}  // namespace tvx
