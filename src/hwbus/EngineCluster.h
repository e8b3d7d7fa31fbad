// The engine cluster: many needles on a port of its own, all of them in one frame a tick.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "base/NumberFormat.h"
#include "config/Model.h"
#include "hwbus/EngineClusterFrame.h"
#include "hwbus/Serial.h"
#include "simlink/SimCom.h"

namespace tvx {

class EngineCluster {
 public:
  struct Timers {
    Timer& ProcessTimer;  // TransferInterval; while running
    Timer& Timer1000ms;
  };
  EngineCluster(const ConfigModel& model, SimCom& sim, Serial& serial, MessageBoxes& boxes, Timers timers);

  bool Configured() const { return serial_.ComNumber(HardwareGroup::EngineCluster) > 0; }
  // Opens the serial port unless it is open; says so where there is none.
  void OpenCommPort();
  // Opens the simulator port of each enabled channel, under the cluster's opener code.
  void OpenPorts();
  void cmdRun_Click();
  void cmdStop_Click();
  // Moves one needle, 0..14, at once; its value is the raw one. Nothing for another needle.
  void MoveSingleNeedle(int needle, int value);
  // The next cycle sends the recalibration frame, the one after it zeroes.
  void Recalibrate();
  // The next frame asks the cluster to start anew.
  void ResetCluster() { lighting_.OneShot |= kECReset; }
  // The cockpit's lighting: the instrument lights are on; the bus has power.
  void SetLighting(bool instrumentLights, bool powered);
  // Takes the options of the configuration (setting 8) over: after they were edited.
  void ReadOptions();

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
  bool Recalibrating() const { return ecMode_ != 0 || hold_ > 0; }

  std::int16_t ECReplyReceived = 0;

 private:
  const EngineClusterRecord& Channel(int channel) const {
    return model_.EngineCluster[static_cast<std::size_t>(channel)];
  }
  std::uint16_t NeedleValue(int channel, double value) const;
  void FillNeedles(ECFrame& frame);
  void DiscardRemnant();

  const ConfigModel& model_;
  SimCom& sim_;
  Serial& serial_;
  MessageBoxes& boxes_;
  Timers timers_;
  bool running_ = false;
  std::int16_t ecMode_ = 0;  // 0 normal, 1 recalibration requested, 2 in progress
  int hold_ = 0;             // seconds for which the cluster is taken to sweep
  ECLighting lighting_;
  ECVersionText ecVersion_;
  std::size_t waitingBefore_ = 0;
  std::array<Port, kECChannels> ports_{};
  std::array<ShortText, kECChannels> boxValue_{};
  std::array<int, kECChannels> position_{};
  std::string boxUnitReply_;
};

}  // namespace tvx
