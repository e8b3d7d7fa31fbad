// The numbered data groups of eight values each, fed from the named values.
#pragma once

#include <array>
#include <map>
#include <utility>
#include <vector>

#include "virtualcockpit/sim/DatarefStore.h"

namespace tvx::vc {

inline constexpr int kDataGroups = 139;  // 0..138
inline constexpr int kGroupValues = 8;
inline constexpr float kLeaveAlone = -999.0f;  // in a written group: this value stays as it is

class DataGroups {
 public:
  explicit DataGroups(DatarefStore& store);

  // The eight values of a group 0..138 now; zeros for any other number, and for a value without a source.
  std::array<float, kGroupValues> Values(int group) const;
  // Writes one value (slot 0..7): into the named value that feeds it, otherwise into the group itself, where
  // it stays. False for a place that does not exist or that the flight alone decides.
  bool Write(int group, int slot, double value);
  // Forgets the values that stand in the groups themselves.
  void Reset() { written_.clear(); }

 private:
  struct Feed {
    int place;
    double scale;
  };
  DatarefStore& store_;
  std::map<std::pair<int, int>, Feed> feeds_;
  std::map<std::pair<int, int>, double> written_;
};

}  // namespace tvx::vc
