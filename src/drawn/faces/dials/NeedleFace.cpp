#include "drawn/faces/dials/NeedleFace.h"

#include <cmath>

#include "drawn/widgets/Theme.h"

namespace tvx::drawn {
namespace {

const QRectF kDisplay{-31, 24, 62, 22};
constexpr double kTail = 15;         // of a needle, behind the hub
constexpr double kInnerRadius = 47;  // of the inner scale of concentric faces
constexpr double kRestsAfter = 1;    // s without a command
const QColor kSecondNeedle{0xff, 0xa6, 0x3d};

QColor ColourOf(FaceArc::Colour colour) {
  switch (colour) {
    case FaceArc::Colour::White:
      return {0xe8, 0xe8, 0xe4};
    case FaceArc::Colour::Green:
      return {0x35, 0xb3, 0x58};
    case FaceArc::Colour::Yellow:
      return {0xe8, 0xc6, 0x2e};
    case FaceArc::Colour::Red:
      return {0xe2, 0x3a, 0x2e};
  }
  return {};
}

// The unit and by how much the labels are divided; no unit where the name says it already.
QString UnitOf(const QString& name, const FaceStyle& style, const Scale& scale) {
  QString unit = QString::fromUtf8(style.unit.data(), static_cast<qsizetype>(style.unit.size()));
  if (name.contains(unit)) unit.clear();
  if (scale.Divisor() == 1) return unit;
  return (unit + QStringLiteral("  \u00D7%1").arg(scale.Divisor())).trimmed();
}

// A long name in two lines.
QStringList Lines(const QString& name, qsizetype longest) {
  const auto blank = name.indexOf(' ');
  if (name.size() <= longest || blank < 0) return {name};
  return {name.left(blank), name.mid(blank + 1)};
}

}  // namespace

NeedleFace::NeedleFace(NeedleDevice& device, const ConfigModel& model, QWidget* parent)
    : InstrumentWidget(device, {}, parent), gauge_(device) {
  const GaugeRecord& record = model.Gauges[device.Id().gaugeID];
  // A housing of an engine cluster shows two of the eight Functions that begin with its own.
  const bool cluster = gauge_.IsCluster();
  const int shown = record.GaugeFunction1 + gauge_.ClusterOffset();
  const int function1 = cluster ? shown : record.GaugeFunction1;
  const int function2 = cluster ? shown + 1 : record.GaugeFunction2;
  Prepare(first_, function1, record.GaugeSetting3, model);
  const bool two = cluster || record.GaugeType == gaugetype::kTwoNeedlesBeside ||
                   record.GaugeType == gaugetype::kLargeTwoNeedles ||
                   record.GaugeType == gaugetype::kSmallTwoNeedles;
  if (two && function2 > 0) Prepare(second_, function2, record.GaugeSetting4, model);
  if (second_.used) {
    layout_ = first_.scale.Beside(second_.scale) ? Layout::Beside : Layout::Concentric;
  }
  const bool beside = layout_ == Layout::Beside;
  first_.length = beside ? kGlass - 12 : kGlass - 10;
  second_.length = beside ? first_.length : kInnerRadius - 5;
  for (Hand* hand : {&first_, &second_}) hand->area = AreaOf(*hand);
}

void NeedleFace::Prepare(Hand& hand, int function, int plate, const ConfigModel& model) {
  hand.used = true;
  if (const PlateRecord* record = model.PlateOf(plate)) hand.scale = Scale(*record);
  if (hand.scale.Empty()) hand.scale = Scale::Blank();
  if (const FunctionRecord* record = model.FunctionOf(function)) {
    hand.style = StyleOf(*record);
    hand.name = QString::fromStdString(record->ShortName).toUpper();
  }
  if (hand.style.upDown) hand.scale.UseUnsignedLabels();
  if (hand.style.compass && hand.scale.FullCircle()) hand.scale.UseCompassLabels();
  hand.needle.Jump(hand.scale.PositionOf(hand.scale.Low()));
}

bool NeedleFace::Large() const {
  return gauge_.Id().type == gaugetype::kLargeNeedle || gauge_.Id().type == gaugetype::kLargeTwoNeedles;
}

QRectF NeedleFace::AreaOf(const Hand& hand) {
  return NeedleArea(DegreesOf(hand.needle.At()), hand.length, kTail);
}

// What the needle uncovers and covers; empty while it stands.
QRectF NeedleFace::MoveHand(Hand& hand, const std::optional<int>& target, double seconds) {
  if (!hand.used || !target) return {};
  hand.told = true;
  const double to = silence_ > kRestsAfter ? hand.scale.PositionOf(hand.scale.Low()) : *target;
  if (!hand.needle.Follow(to, seconds, hand.scale.FullCircle() ? kNeedlePositions : 0)) return {};
  const QRectF now = AreaOf(hand);
  return std::exchange(hand.area, now) | now;
}

// A housing of an engine cluster rests its needles when no command comes.
QRectF NeedleFace::Move(double seconds, bool told) {
  if (gauge_.IsCluster()) {
    silence_ = gauge_.Heard() == heard_ ? silence_ + seconds : 0;
    heard_ = gauge_.Heard();
  }
  const QRectF display = told && gauge_.HasDisplay() ? kDisplay.adjusted(-2, -2, 2, 2) : QRectF();
  return display | MoveHand(first_, gauge_.First(), seconds) | MoveHand(second_, gauge_.Second(), seconds);
}

void NeedleFace::DrawArcs(QPainter& painter, const Hand& hand, double radius, double width) const {
  if (hand.scale.Empty()) return;
  for (const FaceArc& arc : hand.style.arcs) {
    const double from = std::max(arc.from, hand.scale.Low());
    const double to = std::min(arc.to, hand.scale.High());
    if (from > to) continue;
    const double a = DegreesOf(hand.scale.PositionOf(from));
    const double b = DegreesOf(hand.scale.PositionOf(to));
    const QColor colour = Ink(ColourOf(arc.colour));
    if (arc.from == arc.to) {
      painter.setPen(QPen(colour, width * 0.8, Qt::SolidLine, Qt::FlatCap));
      painter.drawLine(OnDial(a, radius - 11), OnDial(a, radius + width * 0.7));
      continue;
    }
    // The white range lies inside the others, as on every airspeed indicator.
    const bool white = arc.colour == FaceArc::Colour::White;
    const double r = white ? radius - width * 1.1 : radius;
    painter.setPen(QPen(colour, white ? width * 0.7 : width, Qt::SolidLine, Qt::FlatCap));
    painter.setBrush(Qt::NoBrush);
    const double least = std::min(a, b);
    painter.drawArc(QRectF(-r, -r, 2 * r, 2 * r), static_cast<int>(std::lround((90 - least) * 16)),
                    static_cast<int>(std::lround(-std::abs(b - a) * 16)));
  }
}

void NeedleFace::DrawScale(QPainter& painter, const Hand& hand, double radius, double size) const {
  DrawArcs(painter, hand, radius - 2, 4.2 * size);
  for (const ScaleMark& mark : hand.scale.Marks()) {
    const double angle = DegreesOf(mark.position);
    const bool large = mark.size == ScaleMark::Size::Large;
    const double length = (large ? 13 : mark.size == ScaleMark::Size::Middle ? 10 : 6.5) * size;
    painter.setPen(QPen(Ink(), (large ? 2.5 : 1.3) * size, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(OnDial(angle, radius), OnDial(angle, radius - length));
    if (mark.label.empty()) continue;
    const QString label = QString::fromStdString(mark.label);
    const double height = (label.size() > 3 ? 12.5 : 15) * size;
    Text(painter, OnDial(angle, radius - length - 10.5 * size - (label.size() > 2 ? 2 * size : 0)), height,
         label, Ink(), true);
  }
}

// A name, in one line or two, and the unit below it.
void NeedleFace::DrawLegend(QPainter& painter, const Hand& hand, QPointF at, double height, double widest,
                            const QColor& colour) const {
  for (const QString& line : Lines(hand.name, widest < 45 ? 4 : 11)) {
    Text(painter, at, height, line, colour, true, widest);
    at.ry() += height * 1.05;
  }
  at.ry() += 0.5;
  Text(painter, at, height * 0.8, UnitOf(hand.name, hand.style, hand.scale), Ink(QColor(0xb9, 0xbd, 0xc0)),
       false, widest);
}

void NeedleFace::DrawLegends(QPainter& painter) const {
  const QColor fine = Ink(QColor(0x3c, 0x40, 0x45));
  if (layout_ == Layout::Single) {
    // Where the scale leaves room: below the hub, or above it for a full circle.
    const bool above = gauge_.HasDisplay() || first_.scale.FullCircle() || (Large() && !first_.style.upDown);
    DrawLegend(painter, first_, {0, above ? -31.0 : Large() ? 23.0 : 27.0}, 10.5, 62, Ink());
    if (!first_.style.upDown) return;
    const double zero = DegreesOf(first_.scale.PositionOf(0));
    Text(painter, OnDial(zero + 38, 40), 9, QStringLiteral("UP"), Ink(), true);
    Text(painter, OnDial(zero - 38, 40), 9, QStringLiteral("DN"), Ink(), true);
  } else if (layout_ == Layout::Beside) {
    const double side = first_.scale.LowPosition() < kNeedlePositions / 2.0 ? -1 : 1;
    DrawLegend(painter, first_, {side * 20, 33}, 8.5, 35, Ink());
    DrawLegend(painter, second_, {-side * 20, 33}, 8.5, 35, Ink());
    painter.setPen(QPen(fine, 1));
    painter.drawLine(QPointF(0, -60), QPointF(0, -24));
    painter.drawLine(QPointF(0, 28), QPointF(0, 66));
  } else {
    // At the foot, where most outer scales are open.
    const QString first =
        first_.name + QStringLiteral("  ") + UnitOf(first_.name, first_.style, first_.scale);
    const QString second =
        second_.name + QStringLiteral("  ") + UnitOf(second_.name, second_.style, second_.scale);
    const bool open = first_.scale.LowPosition() > 90 && first_.scale.HighPosition() < kNeedlePositions - 90;
    Text(painter, {0, open ? 60.0 : 20.0}, 9, first.trimmed(), Ink(), true, open ? 66 : 44);
    Text(painter, {0, open ? 71.0 : 29.0}, 8.5, second.trimmed(), Ink(kSecondNeedle), true, open ? 52 : 40);
  }
}

void NeedleFace::DrawDial(QPainter& painter) {
  switch (layout_) {
    case Layout::Single:
      DrawScale(painter, first_, kGlass - 4, 1);
      break;
    case Layout::Beside:
      DrawScale(painter, first_, kGlass - 4, 0.82);
      DrawScale(painter, second_, kGlass - 4, 0.82);
      break;
    case Layout::Concentric:
      DrawScale(painter, first_, kGlass - 4, 0.86);
      painter.setPen(QPen(Ink(QColor(0x3c, 0x40, 0x45)), 1));
      painter.setBrush(Qt::NoBrush);
      painter.drawEllipse(QPointF(0, 0), kInnerRadius + 2, kInnerRadius + 2);
      DrawScale(painter, second_, kInnerRadius, 0.62);
      break;
  }
  DrawLegends(painter);
}

void NeedleFace::DrawNeedle(QPainter& painter, const Hand& hand, const QColor& colour, bool slim) const {
  const double half = slim ? 2.1 : 3.1;
  DrawBlade(painter, {hand.length, kTail, hand.length * 0.62, half * 0.75, half}, DegreesOf(hand.needle.At()),
            colour);
}

void NeedleFace::DrawDisplay(QPainter& painter) const {
  painter.setPen(QPen(QColor(0x3a, 0x3e, 0x43), 1.4));
  painter.setBrush(QColor(0x06, 0x04, 0x03));
  painter.drawRoundedRect(kDisplay, 2.5, 2.5);
  const auto& shown = gauge_.Display();
  const bool tenths = !shown || std::abs(*shown) < 10000;
  const QString digits =
      shown ? QString::number(*shown / 10.0, 'f', tenths ? 1 : 0) : QStringLiteral("- - -");
  Text(painter, kDisplay.center(), 17, digits,
       theme::Mix(QColor(0x50, 0x22, 0x08), QColor(0xff, 0x8a, 0x2a), shown ? 1 : .4), true);
}

void NeedleFace::DrawMoving(QPainter& painter) {
  if (gauge_.HasDisplay()) DrawDisplay(painter);
  if (second_.used) {
    const QColor colour = layout_ == Layout::Beside ? Ink() : Ink(kSecondNeedle);
    DrawNeedle(painter, second_, colour, true);
  }
  DrawNeedle(painter, first_, Ink(), layout_ != Layout::Single);
}

void NeedleFace::DrawFront(QPainter& painter) {
  QRadialGradient hub(QPointF(-2, -3), 12);
  hub.setColorAt(0, QColor(0x5b, 0x60, 0x66));
  hub.setColorAt(1, QColor(0x14, 0x15, 0x17));
  painter.setPen(QPen(QColor(0, 0, 0, 200), 0.8));
  painter.setBrush(hub);
  painter.drawEllipse(QPointF(0, 0), 7.5, 7.5);
}

QString NeedleFace::HandWords(const Hand& hand) const {
  const QString name = hand.name.toLower();
  if (!hand.told) return name + QStringLiteral(" -");
  QString unit = QString::fromUtf8(hand.style.unit.data(), static_cast<qsizetype>(hand.style.unit.size()));
  if (hand.name.contains(unit)) unit.clear();
  if (!unit.startsWith(QChar(0xB0))) unit = unit.toLower();
  if (unit.startsWith(QStringLiteral("us "))) unit = QStringLiteral("US ") + unit.mid(3);
  const double value = hand.scale.ValueAt(hand.needle.At());
  return QStringLiteral("%1 %2 %3")
      .arg(name, QString::number(value, 'f', hand.scale.High() < 20 ? 1 : 0), unit)
      .trimmed();
}

QString NeedleFace::Words() const {
  return second_.used ? HandWords(first_) + QStringLiteral(", ") + HandWords(second_) : HandWords(first_);
}

}  // namespace tvx::drawn
