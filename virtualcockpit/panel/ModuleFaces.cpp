#include "virtualcockpit/panel/ModuleFaces.h"

#include "config/NameTables.h"
#include "virtualcockpit/panel/AltimeterFace.h"
#include "virtualcockpit/panel/Faces.h"
#include "virtualcockpit/panel/NeedleFace.h"
#include "virtualcockpit/panel/Theme.h"
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

}  // namespace

IoModuleFace::IoModuleFace(IoModuleDevice& device, const ConfigModel& model, QWidget* parent)
    : InstrumentWidget(device, QStringLiteral("IO MODULE"), parent), gauge_(device) {
  const GaugeRecord& record = model.Gauges[device.Id().gaugeID];
  legend1_ = NameOf(model, record.GaugeFunction1);
  legend2_ = NameOf(model, record.GaugeFunction2);
}

void IoModuleFace::DrawDial(QPainter& painter) {
  Text(painter, {0, -58}, 11, Caption(), Ink(), true);
  const QString lamps = legend1_.isEmpty() ? QStringLiteral("LAMPS") : legend1_;
  Text(painter, {0, 21}, 8, lamps, Ink(QColor(0xb9, 0xbd, 0xc0)), true, 110);
  for (int i = 0; i < IoModuleDevice::kLamps; ++i) {
    const QPointF at(-52.5 + i % 8 * 15, i < 8 ? -30 : -4);
    Text(painter, at + QPointF(0, 11), 6.5, QString::number(i + 1), Ink(QColor(0xb9, 0xbd, 0xc0)));
  }
  const QColor dim = Ink(QColor(0xb9, 0xbd, 0xc0));
  const QString number = legend2_.isEmpty() ? QStringLiteral("NUMBER") : legend2_;
  Text(painter, {-28, 36}, 7.5, number, dim, true, 48);
  Text(painter, {28, 36}, 7.5, QStringLiteral("BRIGHTNESS"), dim, true, 48);
}

void IoModuleFace::DrawMoving(QPainter& painter) {
  for (int i = 0; i < IoModuleDevice::kLamps; ++i) {
    const QPointF at(-52.5 + i % 8 * 15, i < 8 ? -30 : -4);
    const bool on = gauge_.Lamp(i);
    if (on) {
      QRadialGradient glow(at, 12);
      glow.setColorAt(0, QColor(0xff, 0xc0, 0x40, 190));
      glow.setColorAt(1, QColor(0xff, 0xc0, 0x40, 0));
      painter.setPen(Qt::NoPen);
      painter.setBrush(glow);
      painter.drawEllipse(at, 12, 12);
    }
    painter.setPen(QPen(QColor(0x5a, 0x5f, 0x66), 1));
    painter.setBrush(on ? QColor(0xff, 0xd2, 0x70) : QColor(0x2a, 0x22, 0x14));
    painter.drawEllipse(at, 4.4, 4.4);
  }
  const auto window = [&](double x, std::int32_t value) {
    const QRectF box(x - 22, 42, 44, 15);
    painter.setPen(QPen(QColor(0x3a, 0x3e, 0x43), 1.2));
    painter.setBrush(QColor(0x06, 0x04, 0x03));
    painter.drawRoundedRect(box, 2, 2);
    Text(painter, box.center(), 11, QString::number(value), QColor(0xff, 0x8a, 0x2a), true);
  };
  window(-28, gauge_.Value4());
  window(28, gauge_.Value5());
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
  if (auto* needle = dynamic_cast<NeedleDevice*>(&device)) return new NeedleFace(*needle, model, parent);
  if (auto* altimeter = dynamic_cast<AltimeterDevice*>(&device)) return new AltimeterFace(*altimeter, parent);
  if (auto* vor = dynamic_cast<VorDevice*>(&device)) return new VorFace(*vor, parent);
  if (auto* module = dynamic_cast<IoModuleDevice*>(&device)) return new IoModuleFace(*module, model, parent);
  return new PlainFace(static_cast<PlainDevice&>(device), parent);
}

}  // namespace tvx::vc
