#include "virtualcockpit/panel/InstrumentPanel.h"

#include <algorithm>
#include <cmath>

#include "virtualcockpit/panel/Theme.h"

namespace tvx::vc {
namespace {

constexpr double kSmallPart = 0.74;  // of a large instrument's size
constexpr double kMargin = 14;
constexpr double kSmallest = 60, kLargest = 520;

int Count(const std::vector<InstrumentWidget*>& all, bool large) {
  return static_cast<int>(
      std::count_if(all.begin(), all.end(), [large](auto* i) { return i->Large() == large; }));
}

}  // namespace

PanelRows RowsFor(int count, double size, double width) {
  if (count <= 0) return {};
  const int most = std::max(1, static_cast<int>(width / size));
  const int rows = (count + most - 1) / most;
  return {rows, (count + rows - 1) / rows};
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
  const double wide = width() - 2 * kMargin;
  const double high = height() - 2 * kMargin;
  const int larges = Count(instruments_, true);
  const int smalls = Count(instruments_, false);
  const auto height = [&](double size) {
    return RowsFor(larges, size, wide).rows * size +
           RowsFor(smalls, size * kSmallPart, wide).rows * size * kSmallPart;
  };
  double size = kSmallest;
  for (double trial = kSmallest; trial <= std::min(kLargest, wide); trial += 2) {
    if (height(trial) <= high) size = trial;
  }
  std::vector<InstrumentWidget*> group;
  const auto pick = [&](bool large) {
    group.clear();
    std::copy_if(instruments_.begin(), instruments_.end(), std::back_inserter(group),
                 [large](auto* i) { return i->Large() == large; });
  };
  double top = kMargin + std::max(0.0, (high - height(size)) / 2);
  pick(true);
  top = Place(group, size, top);
  pick(false);
  Place(group, size * kSmallPart, top);
}

// Places a group in rows of nearly the same length, each in the middle; returns where the next row begins.
double InstrumentPanel::Place(const std::vector<InstrumentWidget*>& group, double size, double top) {
  const int count = static_cast<int>(group.size());
  const PanelRows rows = RowsFor(count, size, width() - 2 * kMargin);
  int next = 0;
  for (int row = 0; row < rows.rows; ++row) {
    const int left = count - next;
    const int here = (left + rows.rows - row - 1) / (rows.rows - row);
    const double gap = std::min(size * 0.06, (width() - 2 * kMargin - here * size) / std::max(1, here));
    double x = (width() - here * size - (here - 1) * gap) / 2;
    for (int i = 0; i < here; ++i, ++next) {
      const int pixels = static_cast<int>(size) - 4;
      group[static_cast<std::size_t>(next)]->setGeometry(static_cast<int>(x) + 2, static_cast<int>(top) + 2,
                                                         pixels, pixels);
      x += size + gap;
    }
    top += size;
  }
  return top;
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
