#include "follow/forms/UnitTile.h"

#include <QHelpEvent>
#include <QToolTip>

#include "drawn/faces/units/ClusterFace.h"
#include "drawn/faces/units/ModuleFace.h"
#include "drawn/faces/units/YokeFace.h"
#include "hwbus/iomodule/IOModuleInput.h"
#include "ui/Widgets.h"

namespace tvx {
namespace {

constexpr double kDialsHigh = 1.3;  // how many dials a unit is high

QString CaptionOf(const UnitName& unit) {
  switch (unit.kind) {
    case UnitName::Kind::Cluster:
      return QObject::tr("Engine cluster");
    case UnitName::Kind::Module:
      return QObject::tr("IO module %1").arg(unit.number);
    case UnitName::Kind::Yoke:
      return QObject::tr("Yoke %1").arg(unit.number);
  }
  return {};
}

Subject PartOf(const UnitName& unit, int part) {
  switch (unit.kind) {
    case UnitName::Kind::Cluster:
      return {Subject::Kind::Channel, part};
    case UnitName::Kind::Module:
      return {Subject::Kind::Input, kIOModuleInputs * unit.number + part};
    case UnitName::Kind::Yoke:
      return {Subject::Kind::YokeAxis, unit.number, part};
  }
  return {};
}

}  // namespace

UnitTile::Drawn UnitTile::Make(const UnitMirror& mirror, const UnitName& unit, const ConfigModel& model) {
  const int number = unit.number;
  switch (unit.kind) {
    case UnitName::Kind::Cluster: {
      auto* face = new drawn::ClusterFace(drawn::LegendOfCluster(model), nullptr);
      return {face, [face, &mirror] { face->Show(mirror.ClusterNow()); }};
    }
    case UnitName::Kind::Module: {
      auto* face = new drawn::ModuleFace(drawn::LegendOfModule(model, number), number, nullptr);
      return {face, [face, &mirror, number] { face->Show(mirror.ModuleNow(number)); }};
    }
    case UnitName::Kind::Yoke:
      break;
  }
  auto* face = new drawn::YokeFace(number, nullptr);
  return {face, [face, &mirror, number] { face->Show(mirror.YokeNow(number)); }};
}

UnitTile::UnitTile(const UnitMirror& mirror, const UnitName& unit, const ConfigModel& model)
    : UnitTile(Make(mirror, unit, model), unit) {}

UnitTile::UnitTile(Drawn drawn, const UnitName& unit)
    : CockpitTile(drawn.face, CaptionOf(unit), PartOf(unit, 0),
                  unit.kind == UnitName::Kind::Yoke ? tr("No answer yet") : tr("Nothing sent yet")),
      drawn_(std::move(drawn)),
      unit_(unit) {
  setObjectName(QStringLiteral("Tile_") + drawn_.face->objectName());
  ShowWords();
}

bool UnitTile::Holds(const Subject& subject) const {
  switch (unit_.kind) {
    case UnitName::Kind::Cluster:
      return subject.kind == Subject::Kind::Channel;
    case UnitName::Kind::Module:
      return subject.kind == Subject::Kind::Input && subject.number / kIOModuleInputs == unit_.number;
    case UnitName::Kind::Yoke:
      return subject.kind == Subject::Kind::YokeAxis && subject.number == unit_.number;
  }
  return false;
}

QSize UnitTile::SizeFor(int dial) const {
  const QSize natural = drawn_.face->sizeHint();
  const double high = kDialsHigh * dial;
  return {static_cast<int>(high * natural.width() / natural.height()), HeightWith(high)};
}

std::optional<Subject> UnitTile::SubjectAt(const QPointF& at) const {
  const int part = drawn_.face->PartAt(at);
  if (part < 0) return std::nullopt;
  return PartOf(unit_, part);
}

// What stands under the mouse, rather than all of it.
bool UnitTile::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return CockpitTile::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const QString tip = drawn_.face->TipAt(help->pos() - drawn_.face->pos());
  if (tip.isEmpty()) return CockpitTile::event(event);
  QToolTip::showText(help->globalPos(), tip + QLatin1Char('\n') + tr("A click follows the value"), this);
  return true;
}

}  // namespace tvx
