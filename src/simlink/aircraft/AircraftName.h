// Which aircraft the simulator flies.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <optional>
#include <string>

#include "base/Bytes.h"
#include "simlink/OtherValues.h"
#include "simlink/SimCom.h"

namespace tvx {

struct Aircraft {
  std::string Icao;  // "C172"
  std::string File;  // "trainer.acf"; empty where the simulator does not tell
  bool operator==(const Aircraft&) const = default;
};

// The simulator has texts as arrays of bytes, and tells one byte a request: the ICAO type and the path of the
// aircraft's file, each letter once a second. A text counts once its letters up to the final zero have come
// and have stayed for a while, so that half of one aircraft's name and half of the next one's are never taken
// together.
class AircraftName final : public OtherValues {
 public:
  static constexpr int kIcaoLetters = 8, kPathLetters = 120;
  static constexpr int kLetters = kIcaoLetters + kPathLetters;
  // Identifiers of the letters, which the wire carries as they stand, and which no port has.
  static constexpr std::int32_t kFirstIdentifier = 240 * 256;
  static constexpr std::int64_t kSettledMs = 2500;
  static constexpr std::int64_t kNoPathMs = 6000;  // an X-Plane that does not know the path is taken without

  AircraftName(SimCom& sim, const Clock& clock) : sim_(sim), clock_(clock) {}

  // About once a second. `wanted`: asks for the letters while the link is open; otherwise they are cancelled.
  void Tick(bool wanted);
  // The last aircraft that was told wholly; std::nullopt before.
  const std::optional<Aircraft>& Known() const { return known_; }

  bool Take(int identifierOnWire, float value) override;
  void Closing() override;

 private:
  void Ask();
  // From letter `first` on; std::nullopt where a letter has not come.
  std::optional<std::string> TextOf(int first, int letters) const;

  SimCom& sim_;
  const Clock& clock_;
  std::array<Byte, kLetters> letters_{};
  std::bitset<kLetters> come_;
  bool asked_ = false;
  std::int64_t askedMs_ = 0, changedMs_ = 0;
  std::optional<Aircraft> known_;
};

}  // namespace tvx
