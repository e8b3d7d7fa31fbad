// The receive handler of the gauge bus: checks each reply, keeps its raw text, and hands it to its sender's
// instrument while the cycle runs.
#pragma once

#include <array>
#include <functional>
#include <optional>

#include "core/ProcessCycle.h"
#include "hwbus/gaugebus/Serial.h"

namespace tvx {

class GaugeReceiver final : private GaugeReply {
 public:
  GaugeReceiver(const ConfigModel& model, Serial& serial, ProcessCycle& cycle, SimCom& sim,
                SpecialValues& special)
      : model_(model), serial_(serial), cycle_(cycle), sim_(sim), special_(special) {}

  // One event of the gauge bus port. A break, a framing error or a reply whose envelope is wrong discards
  // what waits; a read of 7 bytes or fewer is ignored. `running` false: only the raw text and the reply flag
  // change. True: the gauge whose GaugeID it carries handles it, unless the configuration says that this is
  // another kind of instrument.
  void OnComm(SerialEvent event, bool running);

  // Told of every well-formed reply, and with std::nullopt of every read that was refused; for the searches
  // and consoles of the configuration.
  using Listener = std::function<void(std::optional<ReplyView>)>;
  Registration SetListener(Listener listener) { return listener_.Give(std::move(listener)); }

  // The last well-formed reply; empty before the first.
  ByteView ReplyText() const { return {replyText_.data(), replyLength_}; }

 private:
  void Dispatch(ReplyView reply);

  // GaugeReply
  const ConfigModel& Model() const override { return model_; }
  SimCom& Sim() override { return sim_; }
  SpecialValues& Special() override { return special_; }
  const FlightValues& Flight() const override { return cycle_.Values(); }
  std::uint32_t TickNumber() const override { return cycle_.TickNumber(); }
  std::uint32_t TicksPerSecond() const override { return cycle_.TicksPerSecond(); }
  std::uint32_t PollRoundTicks() const override { return cycle_.PollRoundTicks(); }
  bool WasTold(int gaugeID, int command, std::int32_t value) const override {
    return cycle_.WasTold(gaugeID, command, value);
  }
  bool WasToldOther(int gaugeID, int command, std::int32_t value) const override {
    return cycle_.WasToldOther(gaugeID, command, value);
  }
  void NoteShown(int gaugeID, int command, std::int32_t value) override {
    cycle_.NoteShown(gaugeID, command, value);
  }
  float& BarometricSetting() override { return cycle_.BarometricSetting(); }
  void PutAirPressure(float inches) override;

  const ConfigModel& model_;
  Serial& serial_;
  ProcessCycle& cycle_;
  SimCom& sim_;
  SpecialValues& special_;
  std::array<Byte, kReplySize> replyText_{};
  std::size_t replyLength_ = 0;
  Callback<std::optional<ReplyView>> listener_;
};

}  // namespace tvx
