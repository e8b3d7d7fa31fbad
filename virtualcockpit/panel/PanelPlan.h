// How the instruments of a panel are set out in the room there is.
#pragma once

#include <span>
#include <vector>

namespace tvx::vc {

// A block of large round instruments and a block of small ones, above or beside each other.
struct PanelPlan {
  double size = 0;  // of a large instrument, in pixels
  int largeColumns = 0, smallColumns = 0;
  bool beside = false;
};
inline constexpr double kSmallPart = 0.72;  // of a large instrument's size
// Of all plans the one with the largest instruments that fits into the room.
PanelPlan PlanPanel(int larges, int smalls, double width, double height);

// The whole panel: the round ones, and the wide units of the radio stack in columns to their right or below.
struct StackPlan {
  PanelPlan rounds;
  int columns = 0;       // of wide units
  double wideWidth = 0;  // of one, in pixels
  bool below = false;
  double Legible() const;  // what is to be as large as possible
};
// `wideHeights` in units of which a wide instrument is 500 wide.
StackPlan PlanStack(int larges, int smalls, std::span<const double> wideHeights, double width, double height);
inline constexpr double kWideUnits = 500;
// The wide instruments shared out to columns of nearly the same height, in their order.
std::vector<std::vector<int>> ColumnsOf(std::span<const double> heights, int columns);
// Numbers of the instruments in each row. `six`: in more than one row of more than three columns, the first
// six stay together as two rows of three, and the next ones stand beside them.
std::vector<std::vector<int>> RowsOf(int count, int columns, bool six);
inline bool KeepsSixTogether(int count, int columns) {
  return count > 6 && columns > 3 && count > columns;
}

}  // namespace tvx::vc
