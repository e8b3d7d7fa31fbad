#include "drawn/faces/dials/PlainFace.h"

#include "config/NameTables.h"

namespace tvx::drawn {
namespace {

constexpr int kMostLines = 10;

QString KindOf(int type) {
  // The table's built-in names, whatever the configuration holds.
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

PlainFace::PlainFace(Device& device, QWidget* parent)
    : InstrumentWidget(device, KindOf(device.Id().type), parent),
      values_(dynamic_cast<const PlainDevice*>(&device)) {}

QRectF PlainFace::Move(double, bool told) {
  return told ? Everything() : QRectF();
}

void PlainFace::DrawDial(QPainter& painter) {
  const QStringList words = Caption().split(' ');
  const auto half = (words.size() + 1) / 2;
  Text(painter, {0, -48}, 12, QStringList(words.mid(0, half)).join(' '), Ink(), true, 104);
  Text(painter, {0, -34}, 12, QStringList(words.mid(half)).join(' '), Ink(), true, 124);
  Text(painter, {0, -19}, 8.5, QStringLiteral("last value of each command"), Ink(QColor(0xb9, 0xbd, 0xc0)),
       false, 136);
}

void PlainFace::DrawMoving(QPainter& painter) {
  if (!values_) return;
  int line = 0;
  for (int command = 0; command < Device::kCommands && line < kMostLines; ++command) {
    const auto& value = values_->Value(command);
    if (!value) continue;
    const QPointF at(line % 2 == 0 ? -30 : 30, -2 + line / 2 * 14);
    Text(painter, at, 11.5, QStringLiteral("%1: %2").arg(command).arg(*value), Ink());
    ++line;
  }
}

}  // namespace tvx::drawn
