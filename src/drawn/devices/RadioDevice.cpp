#include "drawn/devices/RadioDevice.h"

#include <algorithm>

#include "drawn/Gaugetypes.h"
#include "drawn/Wire.h"

namespace tvx::drawn {
namespace {

namespace command {
constexpr int kActive = 4, kStandby = 5;
}
namespace place {
constexpr std::size_t kActive = 7, kStandby = 10;
constexpr std::size_t kFirstActive = 7, kSecondActive = 10, kFirstStandby = 13, kSecondStandby = 16,
                      kValid = 23;  // of the unit with two radios
}  // namespace place
constexpr int kNotValid = 0x20;
constexpr int kBandMask = 3, kComBand = 0, kNavBand = 1;  // of the option bits
constexpr int kLargestFrequency = 65535;

struct BandLimits {
  int lowest, highest;  // of the coarse digits, in coarse steps
  int coarse, fine;     // steps
};
constexpr BandLimits LimitsOf(Band band) {
  switch (band) {
    case Band::Com:
      return {18, 36, 1000, 25};
    case Band::Nav:
      return {8, 17, 1000, 50};
    case Band::Adf:
      return {1, 17, 1000, 10};
  }
  return {0, 0, 1000, 10};
}

Band BandOf(const Device::Identity& identity) {
  if (identity.type == gaugetype::kAdfRadio) return Band::Adf;
  const int kind = identity.options & kBandMask;
  return kind == kComBand ? Band::Com : kind == kNavBand ? Band::Nav : Band::Adf;
}

// The simulator counts in 10 kHz: a frequency that comes back without its last 5 kHz is still the same one.
int Taken(const FrequencyPair& pair, int own, std::int32_t value) {
  const int told = std::clamp(value, 0, kLargestFrequency);
  return pair.band != Band::Adf && told / 10 == own / 10 ? own : told;
}

}  // namespace

FrequencyPair FrequencyPair::Standard(Band band) {
  switch (band) {
    case Band::Com:
      return {band, 18500, 21700};
    case Band::Nav:
      return {band, 10300, 13400};
    case Band::Adf:
      return {band, 3620, 3950};
  }
  return {};
}

void FrequencyPair::TurnCoarse(int clicks) {
  const BandLimits limits = LimitsOf(band);
  const int digits =
      OnCircle(standby / limits.coarse - limits.lowest + clicks, limits.highest - limits.lowest + 1);
  standby = (limits.lowest + digits) * limits.coarse + standby % limits.coarse;
}

void FrequencyPair::TurnFine(int clicks) {
  const BandLimits limits = LimitsOf(band);
  const int steps = limits.coarse / limits.fine;
  const int place = OnCircle(standby % limits.coarse / limits.fine + clicks, steps);
  standby = standby / limits.coarse * limits.coarse + place * limits.fine;
}

RadioDevice::RadioDevice(const Identity& identity)
    : Device(identity), pair_(FrequencyPair::Standard(BandOf(identity))) {}

void RadioDevice::OnCommand(int number, std::int32_t value) {
  if (HandRules()) return;
  if (number == command::kActive) pair_.active = Taken(pair_, pair_.active, value);
  if (number == command::kStandby) pair_.standby = Taken(pair_, pair_.standby, value);
}

void RadioDevice::Swap() {
  pair_.Swap();
  HandMoved();
}
void RadioDevice::TurnCoarse(int clicks) {
  pair_.TurnCoarse(clicks);
  HandMoved();
}
void RadioDevice::TurnFine(int clicks) {
  pair_.TurnFine(clicks);
  HandMoved();
}

void RadioDevice::FillReply(Reply& reply) {
  PutLetters(reply, 'A', 'S');
  PutWord(reply, place::kActive, pair_.active);
  PutWord(reply, place::kStandby, pair_.standby);
}

ComNavDevice::ComNavDevice(const Identity& identity)
    : Device(identity), radios_{FrequencyPair::Standard(Band::Com), FrequencyPair{Band::Com, 23450, 27800}} {}

void ComNavDevice::Swap(int number) {
  radios_[static_cast<std::size_t>(number & 1)].Swap();
  Changed();
}
void ComNavDevice::TurnCoarse(int number, int clicks) {
  radios_[static_cast<std::size_t>(number & 1)].TurnCoarse(clicks);
  Changed();
}
void ComNavDevice::TurnFine(int number, int clicks) {
  radios_[static_cast<std::size_t>(number & 1)].TurnFine(clicks);
  Changed();
}

// Without power the frequencies are not valid.
void ComNavDevice::FillReply(Reply& reply) {
  PutLetters(reply, 'C', 'S');
  PutWord(reply, place::kFirstActive, radios_[0].active);
  PutWord(reply, place::kSecondActive, radios_[1].active);
  PutWord(reply, place::kFirstStandby, radios_[0].standby);
  PutWord(reply, place::kSecondStandby, radios_[1].standby);
  PutByte(reply, place::kValid, Powered() ? 0 : kNotValid);
}

void ComNavDevice::ReadReply(const Reply& reply) {
  if ((ByteAt(reply, place::kValid) & kNotValid) != 0) return;
  radios_[0].active = WordAt(reply, place::kFirstActive);
  radios_[1].active = WordAt(reply, place::kSecondActive);
  radios_[0].standby = WordAt(reply, place::kFirstStandby);
  radios_[1].standby = WordAt(reply, place::kSecondStandby);
}

}  // namespace tvx::drawn
