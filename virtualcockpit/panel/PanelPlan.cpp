#include "virtualcockpit/panel/PanelPlan.h"

#include <algorithm>
#include <numeric>

namespace tvx::vc {
namespace {

constexpr double kLargest = 520;
// A wide unit reads as well as a large dial when it is this part of a dial's size higher.
constexpr double kWideToLarge = 0.43;
constexpr double kWidest = 640, kNarrowest = 80, kWidthStep = 6;
constexpr int kMostColumns = 4;

double TallestOf(std::span<const double> heights, int columns) {
  double tallest = 0;
  for (const auto& column : ColumnsOf(heights, columns)) {
    double sum = 0;
    for (const int i : column) sum += heights[static_cast<std::size_t>(i)];
    tallest = std::max(tallest, sum);
  }
  return tallest;
}

}  // namespace

PanelPlan PlanPanel(int larges, int smalls, double width, double height) {
  PanelPlan best;
  const auto rows = [](int count, int columns) { return columns == 0 ? 0 : (count + columns - 1) / columns; };
  for (int large = std::min(larges, 1); large <= larges; ++large) {
    for (int small = std::min(smalls, 1); small <= smalls; ++small) {
      const double largeHigh = rows(larges, large);
      const double smallHigh = rows(smalls, small) * kSmallPart;
      const double smallWide = small * kSmallPart;
      const double beside = std::min(width / (large + smallWide), height / std::max(largeHigh, smallHigh));
      const double stacked =
          std::min(width / std::max<double>(large, smallWide), height / (largeHigh + smallHigh));
      for (const bool side : {false, true}) {
        const double size = std::min(side ? beside : stacked, kLargest);
        if (size > best.size * 1.02) best = {size, large, small, side};
      }
    }
  }
  return best;
}

double StackPlan::Legible() const {
  if (columns == 0) return rounds.size;
  const double wide = wideWidth * kWideToLarge;
  return rounds.size > 0 ? std::min(rounds.size, wide) : wide;
}

StackPlan PlanStack(int larges, int smalls, std::span<const double> wideHeights, double width,
                    double height) {
  StackPlan best;
  if (wideHeights.empty()) {
    best.rounds = PlanPanel(larges, smalls, width, height);
    return best;
  }
  const bool anyRound = larges + smalls > 0;
  const int most = std::min(kMostColumns, static_cast<int>(wideHeights.size()));
  for (int columns = 1; columns <= most; ++columns) {
    const double units = TallestOf(wideHeights, columns);
    for (double wide = kNarrowest; wide <= kWidest && wide * columns <= width; wide += kWidthStep) {
      const double high = units * wide / kWideUnits;
      if (high > height) break;
      for (const bool below : {false, true}) {
        StackPlan plan{{}, columns, wide, below};
        if (anyRound) {
          plan.rounds = below ? PlanPanel(larges, smalls, width, height - high)
                              : PlanPanel(larges, smalls, width - wide * columns, height);
          if (plan.rounds.size <= 0) continue;
        }
        if (plan.Legible() > best.Legible() * 1.005) best = plan;
      }
    }
  }
  if (best.columns == 0) best = {PlanPanel(larges, smalls, width, height), 1, kNarrowest, true};
  return best;
}

std::vector<std::vector<int>> ColumnsOf(std::span<const double> heights, int columns) {
  std::vector<std::vector<int>> shared(static_cast<std::size_t>(std::max(columns, 1)));
  const double share = std::accumulate(heights.begin(), heights.end(), 0.0) / std::max(columns, 1);
  double sum = 0;
  for (std::size_t i = 0; i < heights.size(); ++i) {
    const auto column = static_cast<std::size_t>((sum + heights[i] / 2) / std::max(share, 1e-9));
    shared[std::min(column, shared.size() - 1)].push_back(static_cast<int>(i));
    sum += heights[i];
  }
  return shared;
}

std::vector<std::vector<int>> RowsOf(int count, int columns, bool six) {
  std::vector<std::vector<int>> rows;
  int next = 0;
  if (six && KeepsSixTogether(count, columns)) {
    rows = {{0, 1, 2}, {3, 4, 5}};
    next = 6;
    for (int place = 0; place < 2 * (columns - 3) && next < count; ++place) {
      rows[static_cast<std::size_t>(place % 2)].push_back(next++);
    }
  }
  const int left = (count - next + columns - 1) / std::max(columns, 1);
  for (int row = 0; row < left; ++row) {
    const int here = (count - next + left - row - 1) / (left - row);
    rows.emplace_back();
    for (int i = 0; i < here; ++i) rows.back().push_back(next++);
  }
  return rows;
}

}  // namespace tvx::vc
