#include "virtualcockpit/panel/InstrumentPanel.h"

#include <algorithm>
#include <cmath>

#include "virtualcockpit/panel/Theme.h"

namespace tvx::vc {
namespace {

constexpr double kSmallPart = 0.72;  // of a large instrument's size
constexpr double kMargin = 12;
constexpr double kLargest = 520;
constexpr double kWidestGap = 0.08;  // between instruments, of their size

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

InstrumentPanel::InstrumentPanel(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("instrumentPanel"));
  setMinimumSize(320, 260);
}

void InstrumentPanel::Add(InstrumentWidget* instrument) {
  instrument->setParent(this);
  instruments_.push_back(instrument);
  instrument->show();
  Arrange();
}

void InstrumentPanel::Advance(double seconds) {
  for (InstrumentWidget* instrument : instruments_) instrument->Advance(seconds);
}

void InstrumentPanel::Arrange() {
  std::vector<InstrumentWidget*> larges, smalls;
  for (InstrumentWidget* instrument : instruments_)
    (instrument->Large() ? larges : smalls).push_back(instrument);
  if (instruments_.empty()) return;
  const QRectF room(kMargin, kMargin, std::max(1.0, width() - 2 * kMargin),
                    std::max(1.0, height() - 2 * kMargin));
  const PanelPlan plan = PlanPanel(static_cast<int>(larges.size()), static_cast<int>(smalls.size()),
                                   room.width(), room.height());
  const double small = plan.size * kSmallPart;
  QRectF first = room;
  QRectF second = room;
  if (plan.beside && !larges.empty() && !smalls.empty()) {
    // What is left over in the width is shared out by the blocks' own widths.
    const double part =
        plan.largeColumns * plan.size / (plan.largeColumns * plan.size + plan.smallColumns * small);
    first.setWidth(room.width() * part);
    second.setLeft(first.right());
  } else if (!larges.empty() && !smalls.empty()) {
    const auto rows = [](std::size_t count, int columns) {
      return std::ceil(static_cast<double>(count) / columns);
    };
    const double high = rows(larges.size(), plan.largeColumns) * plan.size;
    const double part = high / (high + rows(smalls.size(), plan.smallColumns) * small);
    first.setHeight(room.height() * part);
    second.setTop(first.bottom());
  }
  Place(larges, first, plan.largeColumns, plan.size);
  Place(smalls, second, plan.smallColumns, small);
}

// Places a group in rows of nearly the same length in the middle of the block, spread a little where there is
// room.
void InstrumentPanel::Place(const std::vector<InstrumentWidget*>& group, const QRectF& block, int columns,
                            double size) {
  if (group.empty() || columns < 1) return;
  const int count = static_cast<int>(group.size());
  const int rows = (count + columns - 1) / columns;
  const double gapX = std::clamp((block.width() - columns * size) / columns, 0.0, size * kWidestGap);
  const double gapY = std::clamp((block.height() - rows * size) / rows, 0.0, size * kWidestGap);
  double y = block.center().y() - (rows * size + (rows - 1) * gapY) / 2;
  int next = 0;
  for (int row = 0; row < rows; ++row) {
    const int here = (count - next + rows - row - 1) / (rows - row);
    double x = block.center().x() - (here * size + (here - 1) * gapX) / 2;
    for (int i = 0; i < here; ++i, ++next) {
      const int pixels = std::max(1, static_cast<int>(size) - 4);
      group[static_cast<std::size_t>(next)]->setGeometry(static_cast<int>(x) + 2, static_cast<int>(y) + 2,
                                                         pixels, pixels);
      x += size + gapX;
    }
    y += size + gapY;
  }
}

void InstrumentPanel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QLinearGradient metal(0, 0, 0, height());
  metal.setColorAt(0, theme::kPanelTop);
  metal.setColorAt(1, theme::kPanelBottom);
  painter.fillRect(rect(), metal);
  if (!instruments_.empty()) return;
  painter.setPen(theme::kDim);
  painter.setFont(theme::FontOf(18));
  painter.drawText(rect(), Qt::AlignCenter, QStringLiteral("The configuration has no gauges"));
}

}  // namespace tvx::vc
