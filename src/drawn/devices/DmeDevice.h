// The DME indicators: 113 with a selector of the receiver, 123 with a source and a frequency of its own.
#pragma once

#include "drawn/Device.h"
#include "drawn/Gaugetypes.h"

namespace tvx::drawn {

class DmeDevice : public Device {
 public:
  enum class Source { Dme = 1, Nav1 = 2, Nav2 = 3 };

  using Device::Device;
  bool HasFrequency() const { return Id().type == gaugetype::kDmeWithFrequency; }
  bool Received() const { return received_; }
  std::int32_t Distance() const { return distance_; }  // tenths of a nautical mile
  std::int32_t Speed() const { return speed_; }        // kt
  std::int32_t Minutes() const { return minutes_; }
  int ToldSource() const { return toldSource_; }  // as the program tells it
  int Frequency() const { return frequency_; }    // kHz above 100 MHz

  // 113: the chosen receiver, 1 or 2.
  int Receiver() const { return receiver_; }
  void TurnReceiver(int clicks);
  // 123: whom its frequency is for.
  Source Chosen() const { return source_; }
  void TurnSource(int clicks);
  void TurnCoarse(int clicks);
  void TurnFine(int clicks);

 protected:
  void StartAnew() override;
  void OnCommand(int command, std::int32_t value) override;
  void FillReply(Reply& reply) override;
  void ReadReply(const Reply& reply) override;

 private:
  std::int32_t distance_ = 0, speed_ = 0, minutes_ = 0;
  bool received_ = false;
  int toldSource_ = 0;
  int frequency_ = 10300;
  bool setByHand_ = false;
  int receiver_ = 1;
  Source source_ = Source::Dme;
};

}  // namespace tvx::drawn
