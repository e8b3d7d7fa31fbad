#include "virtualcockpit/panel/InstrumentPanel.h"

#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "drawn/widgets/Theme.h"
#include "virtualcockpit/bus/Drawn.h"

namespace tvx::vc {
namespace {

constexpr double kMargin = 12;
constexpr double kWidestGap = 0.08;    // between instruments, of their size
constexpr double kSmallestDial = 150;  // pixels of a large dial that is still read
constexpr int kHighest = 6000;

std::vector<double> HeightsOf(const std::vector<InstrumentWidget*>& wides) {
  std::vector<double> heights;
  for (const InstrumentWidget* wide : wides) {
    heights.push_back(wide->Extent().height() * kWideUnits / wide->Extent().width());
  }
  return heights;
}

}  // namespace

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

InstrumentPanel::Group InstrumentPanel::GroupOf(bool large, bool wide) const {
  Group group;
  for (InstrumentWidget* instrument : instruments_) {
    if (instrument->Wide() == wide && (wide || instrument->Large() == large)) group.push_back(instrument);
  }
  return group;
}

StackPlan InstrumentPanel::Plan(double width, double height) const {
  return PlanStack(static_cast<int>(GroupOf(true, false).size()),
                   static_cast<int>(GroupOf(false, false).size()), HeightsOf(GroupOf(false, true)),
                   std::max(1.0, width - 2 * kMargin), std::max(1.0, height - 2 * kMargin));
}

int InstrumentPanel::HeightFor(int width, int height) const {
  int high = std::max(height, minimumHeight());
  if (instruments_.empty()) return high;
  while (high < kHighest && Plan(width, high).Legible() < kSmallestDial) high += 40;
  // Where the width is what lacks, no height helps.
  return high < kHighest ? high : std::max(height, minimumHeight());
}

void InstrumentPanel::Arrange() {
  if (instruments_.empty()) return;
  const QRectF room(kMargin, kMargin, std::max(1.0, width() - 2 * kMargin),
                    std::max(1.0, height() - 2 * kMargin));
  const StackPlan plan = Plan(width(), height());
  QRectF rounds = room;
  if (plan.columns > 0) {
    const bool any = plan.rounds.size > 0;
    QRectF stack = room;
    if (any && plan.below) {
      double high = 0;
      const std::vector<double> heights = HeightsOf(GroupOf(false, true));
      for (const auto& column : ColumnsOf(heights, plan.columns)) {
        double sum = 0;
        for (const int i : column) sum += heights[static_cast<std::size_t>(i)];
        high = std::max(high, sum * plan.wideWidth / kWideUnits);
      }
      rounds.setBottom(room.bottom() - high);
      stack.setTop(rounds.bottom());
    } else if (any) {
      rounds.setRight(room.right() - plan.columns * plan.wideWidth);
      stack.setLeft(rounds.right());
    }
    ArrangeStack(plan, stack);
  }
  ArrangeRounds(plan.rounds, rounds);
  // Each draws the part of the panel that shows beside it, so that nothing below it is painted.
  for (InstrumentWidget* instrument : instruments_) instrument->SetBackdrop(Metal(instrument->y()));
}

void InstrumentPanel::ArrangeRounds(const PanelPlan& plan, const QRectF& room) {
  const Group larges = GroupOf(true, false);
  const Group smalls = GroupOf(false, false);
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

// The units of the stack stand on each other without a gap wider than a finger's breadth.
void InstrumentPanel::ArrangeStack(const StackPlan& plan, const QRectF& room) {
  const Group wides = GroupOf(false, true);
  const std::vector<double> heights = HeightsOf(wides);
  const double scale = plan.wideWidth / kWideUnits;
  double x = room.center().x() - plan.columns * plan.wideWidth / 2;
  for (const auto& column : ColumnsOf(heights, plan.columns)) {
    double sum = 0;
    for (const int i : column) sum += heights[static_cast<std::size_t>(i)] * scale;
    const double gap =
        column.size() > 1
            ? std::clamp((room.height() - sum) / static_cast<double>(column.size() - 1), 0.0, 10.0)
            : 0;
    double y = room.center().y() - (sum + gap * (static_cast<double>(column.size()) - 1)) / 2;
    for (const int i : column) {
      const double high = heights[static_cast<std::size_t>(i)] * scale;
      wides[static_cast<std::size_t>(i)]->setGeometry(
          QRectF(x + 4, y + 1, plan.wideWidth - 4, high - 2).toRect());
      y += high + gap;
    }
    x += plan.wideWidth;
  }
}

// Places a group in rows in the middle of the block, spread a little where there is room.
void InstrumentPanel::Place(const Group& group, const QRectF& block, int columns, double size) {
  if (group.empty() || columns < 1) return;
  const int count = static_cast<int>(group.size());
  const auto rows = RowsOf(count, columns, group.front()->Large());
  const double gapX = std::clamp((block.width() - columns * size) / columns, 0.0, size * kWidestGap);
  const double gapY = std::clamp(
      (block.height() - static_cast<double>(rows.size()) * size) / static_cast<double>(rows.size()), 0.0,
      size * kWidestGap);
  const int pixels = std::max(1, static_cast<int>(size) - 4);
  double y = block.center().y() - (static_cast<double>(rows.size()) * (size + gapY) - gapY) / 2;
  for (std::size_t row = 0; row < rows.size(); ++row) {
    // The two rows of the six begin below each other.
    const bool six = group.front()->Large() && KeepsSixTogether(count, columns) && row < 2;
    const auto here = static_cast<double>(six ? rows[0].size() : rows[row].size());
    double x = block.center().x() - (here * (size + gapX) - gapX) / 2;
    for (const int i : rows[row]) {
      group[static_cast<std::size_t>(i)]->setGeometry(static_cast<int>(x) + 2, static_cast<int>(y) + 2,
                                                      pixels, pixels);
      x += size + gapX;
    }
    y += size + gapY;
  }
}

QBrush InstrumentPanel::Metal(int from) const {
  QLinearGradient metal(0, -from, 0, height() - from);
  metal.setColorAt(0, theme::kPanelTop);
  metal.setColorAt(1, theme::kPanelBottom);
  return metal;
}

void InstrumentPanel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), Metal(0));
  if (!instruments_.empty()) return;
  painter.setPen(theme::kDim);
  painter.setFont(theme::FontOf(18));
  painter.drawText(rect(), Qt::AlignCenter, QStringLiteral("The configuration has no gauges"));
}

PanelScroll::PanelScroll(InstrumentPanel* panel, QWidget* parent) : QScrollArea(parent), panel_(panel) {
  setObjectName(QStringLiteral("panelScroll"));
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setWidget(panel);
  setMinimumSize(320, 260);
}

void PanelScroll::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  const QSize room = viewport()->size();
  panel_->resize(room.width(), panel_->HeightFor(room.width(), room.height()));
}

}  // namespace tvx::vc
