// The radios: a band with a pair of frequencies, and the instruments that hold one pair or two.
#pragma once

#include <array>

#include "drawn/Device.h"

namespace tvx::drawn {

enum class Band { Com, Nav, Adf };

// Active and standby frequency. COM and NAV in kHz above 100 MHz, an ADF in tenths of a kHz.
struct FrequencyPair {
  Band band = Band::Com;
  int active = 0, standby = 0;

  static FrequencyPair Standard(Band band);
  void Swap() { std::swap(active, standby); }
  // Turns the standby knobs; each keeps its own digits and comes round again at the band's end.
  void TurnCoarse(int clicks);  // MHz; an ADF's hundreds of kHz
  void TurnFine(int clicks);    // 25 kHz, NAV 50 kHz; an ADF's kHz
};

// 110, 111: COM, NAV or ADF by option; 121 an ADF.
class RadioDevice : public Device {
 public:
  explicit RadioDevice(const Identity& identity);
  const FrequencyPair& Frequencies() const { return pair_; }
  void Swap();
  void TurnCoarse(int clicks);
  void TurnFine(int clicks);

 protected:
  void StartAnew() override { pair_.active = pair_.standby = 0; }
  void OnCommand(int command, std::int32_t value) override;
  void FillReply(Reply& reply) override;

 private:
  FrequencyPair pair_;
};

// 120: two radios that keep their own frequencies.
class ComNavDevice : public Device {
 public:
  explicit ComNavDevice(const Identity& identity);
  static constexpr int kRadios = 2;
  const FrequencyPair& Radio(int number) const { return radios_[static_cast<std::size_t>(number & 1)]; }
  void Swap(int number);
  void TurnCoarse(int number, int clicks);
  void TurnFine(int number, int clicks);

 protected:
  void StartAnew() override {}  // it has a memory of its own
  void OnCommand(int, std::int32_t) override {}
  void FillReply(Reply& reply) override;
  void ReadReply(const Reply& reply) override;

 private:
  std::array<FrequencyPair, kRadios> radios_;
};

}  // namespace tvx::drawn
