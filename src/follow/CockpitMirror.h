// The gauges of the configuration as instruments that can be drawn: each knows what the real one was told
// last, and what its last answer said. Looks at what the program keeps anyway, and sends nothing.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "drawn/Device.h"
#include "follow/RoadMaker.h"

namespace tvx {

class CockpitMirror {
 public:
  // The parts outlive it.
  explicit CockpitMirror(const FollowedParts& parts) : parts_(parts) { Rebuild(); }

  // Whether the configuration has other gauges, faces or names since they were made.
  bool Outdated() const;
  // Makes them anew, in the order of their GaugeIDs; the ones before are gone. They know nothing yet.
  void Rebuild();
  // Takes over what was sent and answered since.
  void Refresh();

  std::size_t Count() const { return made_.size(); }
  drawn::Device& At(std::size_t place) { return *made_[place].device; }
  // Whether it was told or has answered anything.
  bool Known(std::size_t place) const {
    return made_[place].device->Heard() > 0 || made_[place].device->Answers() > 0;
  }

 private:
  // What the face of a gauge is made from.
  struct Likeness {
    int gaugeID = 0;
    GaugeRecord record;
    std::array<PlateRecord, 2> plates;
    std::array<std::string, 2> names;
    bool operator==(const Likeness&) const = default;
  };
  struct Made {
    Likeness likeness;
    std::unique_ptr<drawn::Device> device;
    // By command: the value, and when it left.
    std::array<std::optional<std::pair<std::int32_t, std::int64_t>>, drawn::Device::kCommands> told{};
    std::optional<drawn::Reply> answer{};
  };
  std::vector<Likeness> Likenesses() const;
  void TakeAnswer(Made& made);

  const FollowedParts& parts_;
  std::vector<Made> made_;
};

}  // namespace tvx
