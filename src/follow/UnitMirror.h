// The engine cluster, the IO modules and the yokes as they can be drawn: what the program told them last, and
// what they reported last. Looks at what the program keeps anyway, and sends nothing.
#pragma once

#include <array>
#include <vector>

#include "drawn/units/ClusterState.h"
#include "drawn/units/IOModuleState.h"
#include "drawn/units/YokeState.h"
#include "follow/RoadMaker.h"

namespace tvx {

struct UnitName {
  enum class Kind { Cluster, Module, Yoke };
  Kind kind = Kind::Cluster;
  int number = 1;  // of the module or the yoke, 1 or 2
  bool operator==(const UnitName&) const = default;
};

class UnitMirror {
 public:
  // The parts outlive it.
  explicit UnitMirror(const FollowedParts& parts) : parts_(parts) {}

  // Those that the configuration has, in this order: engine cluster, modules, yokes.
  std::vector<UnitName> Configured() const;
  // Takes over what was sent and reported since.
  void Refresh();
  // Whether it was told or has reported anything.
  bool Known(const UnitName& unit) const;

  const drawn::ClusterState& ClusterNow() const { return cluster_; }
  const drawn::IOModuleState& ModuleNow(int number) const { return modules_[PlaceOf(number)]; }
  const drawn::YokeState& YokeNow(int number) const { return yokes_[PlaceOf(number)]; }

 private:
  static std::size_t PlaceOf(int number) { return number == 2 ? 1 : 0; }
  void RefreshCluster();
  void RefreshModule(int number);
  void RefreshYoke(int number);

  const FollowedParts& parts_;
  drawn::ClusterState cluster_;
  std::array<drawn::IOModuleState, 2> modules_{};
  std::array<drawn::YokeState, 2> yokes_{};
  std::array<bool, 2> yokeKnown_{};  // also after the line has forgotten its answers
};

}  // namespace tvx
