#include "simlink/aircraft/AircraftName.h"

#include "base/Rounding.h"

namespace tvx {
namespace {

std::string PathOfLetter(int letter) {
  const bool icao = letter < AircraftName::kIcaoLetters;
  const int number = icao ? letter : letter - AircraftName::kIcaoLetters;
  return (icao ? "sim/aircraft/view/acf_ICAO[" : "sim/aircraft/view/acf_relative_path[") +
         std::to_string(number) + "]";
}

}  // namespace

void AircraftName::Tick(bool wanted) {
  if (!wanted) {
    Closing();
    known_.reset();
    return;
  }
  if (!sim_.UdpOpen()) return;
  if (!asked_) return Ask();
  const std::int64_t now = clock_.MonotonicMs();
  if (now - changedMs_ < kSettledMs) return;
  const auto icao = TextOf(0, kIcaoLetters);
  const auto path = TextOf(kIcaoLetters, kPathLetters);
  if (!icao || (!path && now - askedMs_ < kNoPathMs)) return;
  Aircraft aircraft{*icao, path.value_or("")};
  aircraft.File.erase(0, aircraft.File.find_last_of("/\\") + 1);  // npos + 1 is 0
  if (!aircraft.Icao.empty() || !aircraft.File.empty()) known_ = aircraft;
}

void AircraftName::Ask() {
  asked_ = true;
  askedMs_ = changedMs_ = clock_.MonotonicMs();
  come_.reset();
  for (int letter = 0; letter < kLetters; ++letter) {
    sim_.KeepDataref(PathOfLetter(letter), 1, kFirstIdentifier + letter);
  }
}

void AircraftName::Closing() {
  if (!asked_) return;
  asked_ = false;
  for (int letter = 0; letter < kLetters; ++letter) {
    sim_.CancelDataref(PathOfLetter(letter), kFirstIdentifier + letter);
  }
}

bool AircraftName::Take(int identifierOnWire, float value) {
  const int letter = identifierOnWire - kFirstIdentifier;
  if (!asked_ || letter < 0 || letter >= kLetters) return false;
  const auto at = static_cast<std::size_t>(letter);
  const Byte byte = RoundTo<Byte>(static_cast<double>(value)).value_or(0);
  if (come_[at] && letters_[at] == byte) return true;
  come_.set(at);
  letters_[at] = byte;
  changedMs_ = clock_.MonotonicMs();
  return true;
}

std::optional<std::string> AircraftName::TextOf(int first, int letters) const {
  std::string text;
  for (int i = first; i < first + letters; ++i) {
    const auto at = static_cast<std::size_t>(i);
    if (!come_[at]) return std::nullopt;
    if (letters_[at] == 0) break;
    text += static_cast<char>(letters_[at]);
  }
  return text;
}

}  // namespace tvx
