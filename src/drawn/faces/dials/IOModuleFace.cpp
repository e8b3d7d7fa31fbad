#include "drawn/faces/dials/IOModuleFace.h"

#include "drawn/widgets/Segments.h"
#include "drawn/widgets/Theme.h"

namespace tvx::drawn {
namespace {

QString NameOf(const ConfigModel& model, int function) {
  const FunctionRecord* record = model.FunctionOf(function);
  return record && function > 0 ? QString::fromStdString(record->ShortName).toUpper() : QString();
}

// Two rows of eight.
QPointF LampAt(int lamp) {
  return {-50.75 + lamp % 8 * 14.5, lamp < 8 ? -46.0 : -20.0};
}
constexpr int kAnalogueClick = 64;
constexpr double kLeftStop = -140, kKnobTravel = 280;  // degrees

}  // namespace

IOModuleFace::IOModuleFace(IOModuleDevice& device, const ConfigModel& model, QWidget* parent)
    : InstrumentWidget(device, QStringLiteral("IO MODULE"), parent), gauge_(device) {
  const GaugeRecord& record = model.Gauges[device.Id().gaugeID];
  legend1_ = NameOf(model, record.GaugeFunction1);
  legend2_ = NameOf(model, record.GaugeFunction2);
  for (int i = 0; i < IOModuleDevice::kAnalogues; ++i) {
    knobs_[static_cast<std::size_t>(i)] = &AddKnob(
        {-50.75 + i * 14.5, 50}, 6.5, {}, QStringLiteral("Analogue input %1: turn the wheel").arg(i),
        [this, i](int clicks) { gauge_.SetAnalogue(i, gauge_.Analogue(i) + clicks * kAnalogueClick); });
  }
}

QRectF IOModuleFace::Move(double, bool told) {
  for (int i = 0; i < IOModuleDevice::kAnalogues; ++i) {
    knobs_[static_cast<std::size_t>(i)]->angle =
        kLeftStop + gauge_.Analogue(i) * kKnobTravel / IOModuleDevice::kLargestAnalogue;
  }
  return told ? Everything() : QRectF();
}

void IOModuleFace::DrawDial(QPainter& painter) {
  const QColor dim = Ink(QColor(0xb9, 0xbd, 0xc0));
  const QString lamps = legend1_.isEmpty() ? QStringLiteral("LAMPS") : legend1_;
  Text(painter, {0, -66}, 9, lamps, dim, true, 90);
  for (int i = 0; i < IOModuleDevice::kLamps; ++i) {
    Text(painter, LampAt(i) + QPointF(0, 10.5), 6.5, QString::number(i + 1), dim);
  }
  const QString number = legend2_.isEmpty() ? QStringLiteral("NUMBER") : legend2_;
  Text(painter, {0, 31}, 8, number, dim, true, 80);
  Text(painter, {0, 66}, 8, QStringLiteral("ANALOGUE 0-7"), dim, true, 80);
}

void IOModuleFace::DrawMoving(QPainter& painter) {
  const double level = 0.25 + 0.75 * gauge_.Brightness() / IOModuleDevice::kBrightest;
  for (int i = 0; i < IOModuleDevice::kLamps; ++i) {
    const QPointF at = LampAt(i);
    const bool on = gauge_.Lamp(i);
    if (on) {
      QRadialGradient glow(at, 12);
      glow.setColorAt(0, QColor(0xff, 0xc0, 0x40, static_cast<int>(190 * level)));
      glow.setColorAt(1, QColor(0xff, 0xc0, 0x40, 0));
      painter.setPen(Qt::NoPen);
      painter.setBrush(glow);
      painter.drawEllipse(at, 12, 12);
    }
    painter.setPen(QPen(QColor(0x5a, 0x5f, 0x66), 1));
    const QColor dark(0x2a, 0x22, 0x14);
    painter.setBrush(on ? theme::Mix(dark, QColor(0xff, 0xd2, 0x70), level) : dark);
    painter.drawEllipse(at, 4.4, 4.4);
  }
  const QRectF box(-34, 4, 68, 21);
  painter.setPen(QPen(QColor(0x3a, 0x3e, 0x43), 1.2));
  painter.setBrush(QColor(0x06, 0x04, 0x03));
  painter.drawRoundedRect(box, 2, 2);
  DrawSegments(painter, box.adjusted(4, 4, -4, -4), QString::number(gauge_.Number()),
               QColor(0xff, 0x8a, 0x2a));
}

QString IOModuleFace::Words() const {
  QStringList on;
  for (int i = 0; i < IOModuleDevice::kLamps; ++i) {
    if (gauge_.Lamp(i)) on << QString::number(i + 1);
  }
  return on.isEmpty() ? QStringLiteral("no lamp lit") : QStringLiteral("lamps %1").arg(on.join(' '));
}

}  // namespace tvx::drawn
