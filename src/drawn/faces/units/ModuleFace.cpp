#include "drawn/faces/units/ModuleFace.h"

#include <QPainter>
#include <QStringList>

#include "drawn/widgets/Theme.h"
#include "hwbus/iomodule/IOModuleInput.h"

namespace tvx::drawn {
namespace {

constexpr int kColumns = 8, kRows = 6, kLampColumns = 16;
constexpr double kSwitchesPart = 0.62;  // of the width
constexpr double kMargin = 8, kLampsHeight = 46, kLampRow = 18;
constexpr double kLeastFont = 9;
const QColor kLine{0x3d, 0x44, 0x4c}, kEmpty{0x1b, 0x1e, 0x22}, kDefined{0x2c, 0x33, 0x3b};
const QColor kLampOn{0xff, 0xd2, 0x70}, kLampOff{0x2a, 0x22, 0x14};

// Of a part with its rim.
QRect PixelsOf(const QRectF& area) {
  return area.adjusted(-1, -1, 1, 1).toAlignedRect();
}

}  // namespace

ModuleFace::ModuleFace(IOModuleLegend legend, int module, QWidget* parent)
    : UnitFace(tr("IO MODULE %1").arg(module), {470, 210}, parent), legend_(std::move(legend)) {
  setObjectName(QStringLiteral("ioModule%1").arg(module));
}

QRectF ModuleFace::SwitchAt(int index) const {
  const double s = Scale();
  const double wide = (width() * kSwitchesPart - 2 * kMargin * s) / kColumns;
  const double high = (height() - Head() - kLampsHeight * s) / kRows;
  return QRectF(kMargin * s + index % kColumns * wide, Head() + index / kColumns * high, wide, high)
      .adjusted(1, 1, -1, -1);
}

QRectF ModuleFace::AxisAt(int axis) const {
  const double s = Scale();
  const double left = width() * kSwitchesPart + 6 * s;
  const double wide = (width() - left - kMargin * s) / IOModuleState::kAxes;
  return QRectF(left + axis * wide, Head(), wide, height() - Head() - kLampsHeight * s)
      .adjusted(2, 1, -2, -1);
}

QRectF ModuleFace::LampAt(int index) const {
  const double s = Scale();
  const double wide = (width() - 2 * kMargin * s) / kLampColumns;
  return QRectF(kMargin * s + index % kLampColumns * wide,
                height() - (kLampsHeight - 4) * s + index / kLampColumns * kLampRow * s, wide,
                (kLampRow - 1) * s)
      .adjusted(1, 1, -1, -1);
}

int ModuleFace::SwitchUnder(const QPointF& at) const {
  for (int i = 0; i < IOModuleState::kSwitches; ++i) {
    if (SwitchAt(i).contains(at)) return i;
  }
  return -1;
}

int ModuleFace::AxisUnder(const QPointF& at) const {
  for (int axis = 0; axis < IOModuleState::kAxes; ++axis) {
    if (AxisAt(axis).contains(at)) return axis;
  }
  return -1;
}

int ModuleFace::LampUnder(const QPointF& at) const {
  for (int i = 0; i < IOModuleState::kLamps; ++i) {
    if (LampAt(i).contains(at)) return i;
  }
  return -1;
}

QString ModuleFace::SwitchName(int index) {
  return QChar('A' + index / kColumns) + QString::number(index % kColumns + 1);
}

void ModuleFace::DrawSwitch(QPainter& painter, int index) const {
  const auto i = static_cast<std::size_t>(index);
  const bool on = shown_.switches[i], defined = !legend_.switches[i].isEmpty();
  painter.setPen(QPen(legend_.encoder[i] != 0 ? theme::kAmber : kLine, 1));
  painter.setBrush(on ? theme::kAmber : defined ? kDefined : kEmpty);
  painter.drawRoundedRect(SwitchAt(index), 3, 3);
  painter.setPen(on ? QColor(Qt::black) : defined ? theme::kText : theme::kDim);
  painter.drawText(SwitchAt(index), Qt::AlignCenter, SwitchName(index));
}

void ModuleFace::DrawAxis(QPainter& painter, int axis) const {
  const auto i = static_cast<std::size_t>(axis);
  const QRectF slot = AxisAt(axis);
  painter.setPen(QPen(kLine, 1));
  painter.setBrush(kEmpty);
  painter.drawRoundedRect(slot, 3, 3);
  const double y = slot.bottom() - 4 - (slot.height() - 8) * shown_.axes[i] / IOModuleState::kTop;
  painter.setBrush(legend_.axes[i].isEmpty() ? theme::kDim : theme::kAmber);
  painter.drawRoundedRect(QRectF(slot.left() + 1, y - 4, slot.width() - 2, 8), 2, 2);
}

void ModuleFace::DrawLamp(QPainter& painter, int index) const {
  const double glow = 0.45 + 0.55 * shown_.brightness / IOModuleState::kBrightest;
  const bool on = shown_.Lamp(index);
  painter.setPen(QPen(kLine, 1));
  painter.setBrush(on ? theme::Mix(theme::kDial, kLampOn, glow) : kLampOff);
  painter.drawRoundedRect(LampAt(index), 7, 7);
  painter.setPen(on ? QColor(Qt::black) : theme::kDim);
  painter.drawText(LampAt(index), Qt::AlignCenter, QString::number(index + 1));
}

void ModuleFace::Draw(QPainter& painter, const QRegion& within) {
  painter.setFont(theme::FontOf(std::max(kLeastFont, 11 * Scale())));
  for (int i = 0; i < IOModuleState::kSwitches; ++i) {
    if (within.intersects(PixelsOf(SwitchAt(i)))) DrawSwitch(painter, i);
  }
  for (int axis = 0; axis < IOModuleState::kAxes; ++axis) {
    if (within.intersects(PixelsOf(AxisAt(axis)))) DrawAxis(painter, axis);
  }
  for (int i = 0; i < IOModuleState::kLamps; ++i) {
    if (within.intersects(PixelsOf(LampAt(i)))) DrawLamp(painter, i);
  }
}

void ModuleFace::Show(const IOModuleState& now) {
  QRegion changed;
  const auto add = [&changed](const QRectF& area) { changed += PixelsOf(area); };
  for (int i = 0; i < IOModuleState::kSwitches; ++i) {
    const auto index = static_cast<std::size_t>(i);
    if (now.switches[index] != shown_.switches[index]) add(SwitchAt(i));
  }
  for (int axis = 0; axis < IOModuleState::kAxes; ++axis) {
    const auto index = static_cast<std::size_t>(axis);
    if (now.axes[index] != shown_.axes[index]) add(AxisAt(axis));
  }
  const bool level = now.brightness != shown_.brightness;
  for (int i = 0; i < IOModuleState::kLamps; ++i) {
    if (now.Lamp(i) != shown_.Lamp(i) || (level && now.Lamp(i))) add(LampAt(i));
  }
  shown_ = now;
  if (!changed.isEmpty()) update(changed);
}

QString ModuleFace::Words() const {
  QStringList lamps, switches, words;
  for (int i = 0; i < IOModuleState::kLamps; ++i) {
    if (shown_.Lamp(i)) lamps << QString::number(i + 1);
  }
  for (int i = 0; i < IOModuleState::kSwitches; ++i) {
    if (shown_.switches[static_cast<std::size_t>(i)]) switches << SwitchName(i);
  }
  words << (lamps.isEmpty() ? tr("no lamp lit") : tr("lamps %1").arg(lamps.join(' ')));
  words << (switches.isEmpty() ? tr("no switch on") : tr("switches %1").arg(switches.join(' ')));
  for (std::size_t axis = 0; axis < legend_.axes.size(); ++axis) {
    if (!legend_.axes[axis].isEmpty()) words << tr("axis %1 at %2").arg(axis + 1).arg(shown_.axes[axis]);
  }
  return words.join(QStringLiteral(", "));
}

int ModuleFace::PartAt(const QPointF& at) const {
  if (const int index = SwitchUnder(at); index >= 0) return index;
  if (const int axis = AxisUnder(at); axis >= 0) return kIOModuleFirstAnalogue + axis;
  const int lamp = LampUnder(at);
  return lamp < 0 ? -1 : kIOModuleFirstLamp + lamp;
}

QString ModuleFace::TipAt(const QPointF& at) const {
  const auto tip = [](const QString& part, const QString& name, const QString& state) {
    return QStringLiteral("%1, %2: %3").arg(part, name.isEmpty() ? tr("not defined") : name, state);
  };
  if (const int i = SwitchUnder(at); i >= 0) {
    const auto index = static_cast<std::size_t>(i);
    return tip(SwitchName(i), legend_.switches[index], shown_.switches[index] ? tr("on") : tr("off"));
  }
  if (const int i = AxisUnder(at); i >= 0) {
    const auto index = static_cast<std::size_t>(i);
    return tip(tr("Axis %1").arg(i + 1), legend_.axes[index], QString::number(shown_.axes[index]));
  }
  const int i = LampUnder(at);
  if (i < 0) return {};
  return tip(tr("Lamp %1").arg(i + 1), legend_.lamps[static_cast<std::size_t>(i)],
             shown_.Lamp(i) ? tr("lit") : tr("dark"));
}

}  // namespace tvx::drawn
