#include "virtualcockpit/panel/ModuleFaces.h"

#include "config/NameTables.h"
#include "virtualcockpit/panel/AltimeterFace.h"
#include "virtualcockpit/panel/AttitudeFace.h"
#include "virtualcockpit/panel/AudioFace.h"
#include "virtualcockpit/panel/AutopilotFace.h"
#include "virtualcockpit/panel/CardFaces.h"
#include "virtualcockpit/panel/ClockFace.h"
#include "virtualcockpit/panel/DmeFace.h"
#include "virtualcockpit/panel/Faces.h"
#include "virtualcockpit/panel/NeedleFace.h"
#include "virtualcockpit/panel/RadioFaces.h"
#include "virtualcockpit/panel/Segments.h"
#include "virtualcockpit/panel/Theme.h"
#include "virtualcockpit/panel/TransponderFace.h"
#include "virtualcockpit/panel/TrimFace.h"
#include "virtualcockpit/panel/VorFace.h"

namespace tvx::vc {
namespace {

QString NameOf(const ConfigModel& model, int function) {
  const FunctionRecord* record = model.FunctionOf(function);
  return record && function > 0 ? QString::fromStdString(record->ShortName).toUpper() : QString();
}

QString KindOf(int type) {
  // The table's built-in names, whatever the file holds.
  static const ConfigModel names = [] {
    ConfigModel built;
    FillNameTables(built);
    return built;
  }();
  std::string name = "Type " + std::to_string(type);
  GetGaugetypeName(names, type, name);
  return QString::fromStdString(name).trimmed();
}

// Two rows of eight.
QPointF LampAt(int lamp) {
  return {-50.75 + lamp % 8 * 14.5, lamp < 8 ? -46.0 : -20.0};
}
constexpr int kAnalogueClick = 64;

// A face for the kind of device, where the device is of that kind.
template <typename Kind, typename Face, typename... More>
InstrumentWidget* FaceFor(Device& device, const More&... more, QWidget* parent) {
  auto* kind = dynamic_cast<Kind*>(&device);
  return kind ? new Face(*kind, more..., parent) : nullptr;
}

}  // namespace

IoModuleFace::IoModuleFace(IoModuleDevice& device, const ConfigModel& model, QWidget* parent)
    : InstrumentWidget(device, QStringLiteral("IO MODULE"), parent), gauge_(device) {
  const GaugeRecord& record = model.Gauges[device.Id().gaugeID];
  legend1_ = NameOf(model, record.GaugeFunction1);
  legend2_ = NameOf(model, record.GaugeFunction2);
  for (int i = 0; i < IoModuleDevice::kAnalogues; ++i) {
    knobs_[static_cast<std::size_t>(i)] = &AddKnob(
        {-50.75 + i * 14.5, 50}, 6.5, {}, QStringLiteral("Analogue input %1: turn the wheel").arg(i),
        [this, i](int clicks) { gauge_.SetAnalogue(i, gauge_.Analogue(i) + clicks * kAnalogueClick); });
  }
}

void IoModuleFace::DrawDial(QPainter& painter) {
  const QColor dim = Ink(QColor(0xb9, 0xbd, 0xc0));
  const QString lamps = legend1_.isEmpty() ? QStringLiteral("LAMPS") : legend1_;
  Text(painter, {0, -66}, 9, lamps, dim, true, 90);
  for (int i = 0; i < IoModuleDevice::kLamps; ++i) {
    Text(painter, LampAt(i) + QPointF(0, 10.5), 6.5, QString::number(i + 1), dim);
  }
  const QString number = legend2_.isEmpty() ? QStringLiteral("NUMBER") : legend2_;
  Text(painter, {0, 31}, 8, number, dim, true, 80);
  Text(painter, {0, 66}, 8, QStringLiteral("ANALOGUE 0-7"), dim, true, 80);
}

void IoModuleFace::DrawMoving(QPainter& painter) {
  const double level = 0.25 + 0.75 * gauge_.Brightness() / IoModuleDevice::kBrightest;
  for (int i = 0; i < IoModuleDevice::kLamps; ++i) {
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
  for (int i = 0; i < IoModuleDevice::kAnalogues; ++i) {
    knobs_[static_cast<std::size_t>(i)]->angle = -140 + gauge_.Analogue(i) * 280.0 / 4095;
  }
}

QString IoModuleFace::Words() const {
  QStringList on;
  for (int i = 0; i < IoModuleDevice::kLamps; ++i) {
    if (gauge_.Lamp(i)) on << QString::number(i + 1);
  }
  return on.isEmpty() ? QStringLiteral("no lamp lit") : QStringLiteral("lamps %1").arg(on.join(' '));
}

PlainFace::PlainFace(PlainDevice& device, QWidget* parent)
    : InstrumentWidget(device, KindOf(device.Id().type), parent), gauge_(device) {}

void PlainFace::DrawDial(QPainter& painter) {
  const QStringList words = Caption().split(' ');
  const auto half = (words.size() + 1) / 2;
  Text(painter, {0, -48}, 12, QStringList(words.mid(0, half)).join(' '), Ink(), true, 104);
  Text(painter, {0, -34}, 12, QStringList(words.mid(half)).join(' '), Ink(), true, 124);
  Text(painter, {0, -19}, 8.5, QStringLiteral("last value of each command"), Ink(QColor(0xb9, 0xbd, 0xc0)),
       false, 136);
}

void PlainFace::DrawMoving(QPainter& painter) {
  int line = 0;
  for (int command = 0; command < 16 && line < 10; ++command) {
    if (!gauge_.Value(command)) continue;
    const QPointF at(line % 2 == 0 ? -30 : 30, -2 + line / 2 * 14);
    Text(painter, at, 11.5, QStringLiteral("%1: %2").arg(command).arg(*gauge_.Value(command)), Ink());
    ++line;
  }
}

InstrumentWidget* MakeFace(Device& device, const ConfigModel& model, QWidget* parent) {
  InstrumentWidget* face = nullptr;
  const auto take = [&face](InstrumentWidget* made) { return (face = made) != nullptr; };
  if (take(FaceFor<NeedleDevice, NeedleFace, ConfigModel>(device, model, parent)) ||
      take(FaceFor<AltimeterDevice, AltimeterFace>(device, parent)) ||
      take(FaceFor<AttitudeDevice, AttitudeFace>(device, parent)) ||
      take(FaceFor<HeadingDevice, HeadingFace>(device, parent)) ||
      take(FaceFor<VorDevice, VorFace>(device, parent)) ||
      take(FaceFor<AdfDevice, AdfFace>(device, parent)) ||
      take(FaceFor<RmiDevice, RmiFace>(device, parent)) ||
      take(FaceFor<ClockDevice, ClockFace>(device, parent)) ||
      take(FaceFor<RadioDevice, RadioFace, ConfigModel>(device, model, parent)) ||
      take(FaceFor<ComNavDevice, ComNavFace, ConfigModel>(device, model, parent)) ||
      take(FaceFor<TransponderDevice, TransponderFace>(device, parent)) ||
      take(FaceFor<DmeDevice, DmeFace>(device, parent)) ||
      take(FaceFor<AutopilotDevice, AutopilotFace>(device, parent)) ||
      take(FaceFor<AudioDevice, AudioFace>(device, parent)) ||
      take(FaceFor<TrimDevice, TrimFace>(device, parent)) ||
      take(FaceFor<IoModuleDevice, IoModuleFace, ConfigModel>(device, model, parent))) {
    return face;
  }
  return new PlainFace(static_cast<PlainDevice&>(device), parent);
}

}  // namespace tvx::vc
