#include "drawn/widgets/InstrumentWidget.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPainterPath>
#include <QTimer>

#include "drawn/widgets/Theme.h"

namespace tvx::drawn {
namespace {

constexpr int kOffMs = 1000, kDiesInMs = 20000;
constexpr int kSmallestDrawn = 8;  // pixels; a smaller face is left blank

// A square plate with its corners cut, as instruments have them.
QPainterPath PlatePath(double half, double cut) {
  QPainterPath path;
  path.addPolygon(QPolygonF({{-half + cut, -half},
                             {half - cut, -half},
                             {half, -half + cut},
                             {half, half - cut},
                             {half - cut, half},
                             {-half + cut, half},
                             {-half, half - cut},
                             {-half, -half + cut}}));
  path.closeSubpath();
  return path;
}

void DrawScrew(QPainter& painter, QPointF at, double turn) {
  painter.save();
  painter.translate(at);
  QRadialGradient metal(QPointF(-1.2, -1.5), 6.5);
  metal.setColorAt(0, QColor(0x8c, 0x92, 0x99));
  metal.setColorAt(1, QColor(0x2a, 0x2d, 0x31));
  painter.setPen(QPen(QColor(0, 0, 0, 170), 0.8));
  painter.setBrush(metal);
  painter.drawEllipse(QPointF(0, 0), 4.4, 4.4);
  painter.rotate(turn);
  painter.setPen(QPen(QColor(0x12, 0x13, 0x15), 1.1, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(-2.7, 0), QPointF(2.7, 0));
  painter.drawLine(QPointF(0, -2.7), QPointF(0, 2.7));
  painter.restore();
}

}  // namespace

InstrumentWidget::InstrumentWidget(Device& device, QString caption, QWidget* parent)
    : QWidget(parent), device_(device), caption_(std::move(caption)) {
  setObjectName(QStringLiteral("gauge%1").arg(device.Id().gaugeID));
  setAccessibleName(caption_);
  setMouseTracking(true);
}

QColor InstrumentWidget::Ink() const {
  return theme::Ink(device_.Light());
}
QColor InstrumentWidget::Ink(const QColor& paint) const {
  return theme::Ink(paint, device_.Light());
}

void InstrumentWidget::Text(QPainter& painter, QPointF at, double height, const QString& text,
                            const QColor& colour, bool bold, double widest) {
  QFont font = theme::FontOf(height * 10, bold);
  if (widest > 0) {
    const double width = QFontMetricsF(font).horizontalAdvance(text) / 10;
    if (width > widest) font = theme::FontOf(height * 10 * widest / width, bold);
  }
  painter.save();
  painter.setFont(font);
  painter.setPen(colour);
  painter.translate(at);
  painter.scale(0.1, 0.1);
  painter.drawText(QRectF(-2000, -500, 4000, 1000), Qt::AlignCenter, text);
  painter.restore();
}

void InstrumentWidget::Advance(double seconds) {
  const bool told = device_.Changes() != seenChanges_;
  seenChanges_ = device_.Changes();
  const QRectF moved = Move(seconds, told);
  if (LookNow() != drawn_) {
    update();
  } else if (!moved.isEmpty()) {
    update(PixelsOf(moved));
  }
}

void InstrumentWidget::SetBackdrop(const QBrush& backdrop) {
  if (backdrop == backdrop_) return;
  backdrop_ = backdrop;
  setAttribute(Qt::WA_OpaquePaintEvent);
  drawn_ = {};
  update();
}

QRectF InstrumentWidget::Everything() const {
  return {-Extent().width() / 2, -Extent().height() / 2, Extent().width(), Extent().height()};
}

void InstrumentWidget::DrawCase(QPainter& painter) const {
  QLinearGradient plate(0, -100, 0, 100);
  plate.setColorAt(0, QColor(0x3a, 0x3f, 0x46));
  plate.setColorAt(1, QColor(0x1b, 0x1e, 0x22));
  painter.setPen(QPen(QColor(0x0c, 0x0d, 0x0f), 1.4));
  painter.setBrush(plate);
  painter.drawPath(PlatePath(98, 22));
  painter.setPen(QPen(QColor(255, 255, 255, 26), 0.8));
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(PlatePath(96.4, 21.4));
  int turn = 20;
  for (const double x : {-80.0, 80.0}) {
    for (const double y : {-80.0, 80.0}) DrawScrew(painter, {x, y}, turn += 31);
  }
  QConicalGradient ring(0, 0, 125);
  for (const auto& [at, shade] : std::initializer_list<std::pair<double, int>>{
           {0, 0x6e}, {.2, 0x2c}, {.5, 0x1c}, {.75, 0x3c}, {1, 0x6e}}) {
    ring.setColorAt(at, QColor(shade, shade + 2, shade + 5));
  }
  painter.setPen(QPen(QColor(0x08, 0x09, 0x0a), 1.2));
  painter.setBrush(ring);
  painter.drawEllipse(QPointF(0, 0), kGlass + 7, kGlass + 7);

  const FaceLight& light = device_.Light();
  QRadialGradient dial(0, 0, kGlass);
  const QColor glow =
      light.lit ? theme::Mix(theme::kDial, QColor(0x4a, 0x30, 0x14), light.brightness / 15.0) : theme::kDial;
  dial.setColorAt(0, theme::Mix(QColor(0x17, 0x18, 0x1b), glow, 0.7));
  dial.setColorAt(0.75, theme::Mix(theme::kDial, glow, 0.35));
  dial.setColorAt(1, QColor(0x05, 0x05, 0x06));
  painter.setPen(QPen(QColor(0, 0, 0), 2));
  painter.setBrush(dial);
  painter.drawEllipse(QPointF(0, 0), kGlass, kGlass);
}

void InstrumentWidget::DrawGlass(QPainter& painter) const {
  QLinearGradient shine(-40, -84, 10, 20);
  shine.setColorAt(0, QColor(255, 255, 255, 26));
  shine.setColorAt(0.55, QColor(255, 255, 255, 7));
  shine.setColorAt(1, QColor(255, 255, 255, 0));
  QPainterPath upper;
  upper.addEllipse(QPointF(0, 0), kGlass - 1, kGlass - 1);
  QPainterPath lower;
  lower.addEllipse(QPointF(26, 58), 118, 92);
  painter.setPen(Qt::NoPen);
  painter.setBrush(shine);
  painter.drawPath(upper.subtracted(lower));
}

void InstrumentWidget::DrawFault(QPainter& painter) const {
  if (device_.Fault() == DeviceFault::None) return;
  const QString text = QString::fromUtf8(FaultText(device_.Fault()).data());
  const double foot = Extent().height() / 2;
  const QRectF box(-74, foot - 14, 148, 14);
  painter.setPen(QPen(QColor(0x7a, 0x2f, 0x25), 1));
  painter.setBrush(QColor(0x2a, 0x10, 0x0c, 235));
  painter.drawRoundedRect(box, 4, 4);
  Text(painter, box.center(), 10, text, theme::kTrouble, true);
}

void InstrumentWidget::SetScale(QPainter& painter) const {
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
  painter.translate(width() / 2.0, height() / 2.0);
  painter.scale(PixelsPerUnit(), PixelsPerUnit());
}

double InstrumentWidget::PixelsPerUnit() const {
  return std::min(width() / Extent().width(), height() / Extent().height());
}

QRect InstrumentWidget::PixelsOf(const QRectF& area) const {
  const double scale = PixelsPerUnit();
  const QRectF pixels(area.topLeft() * scale + QPointF(width() / 2.0, height() / 2.0), area.size() * scale);
  return pixels.toAlignedRect().adjusted(-1, -1, 1, 1);
}

InstrumentWidget::Look InstrumentWidget::LookNow() const {
  Look look{
      size() * devicePixelRatioF(), device_.Light(), DialVersion(), device_.Powered(), device_.Fault(), {}};
  look.controls.reserve(controls_.size());
  for (const Control& control : controls_) look.controls.push_back(LookOf(control, &control == held_));
  return look;
}

void InstrumentWidget::RenewPictures() {
  const Look now = LookNow();
  if (now == drawn_) return;
  const bool dial = now.pixels != drawn_.pixels || now.light != drawn_.light || now.dial != drawn_.dial;
  drawn_ = now;
  if (dial) DrawBack();
  DrawAbove();
}

void InstrumentWidget::DrawBack() {
  back_ = QPixmap(drawn_.pixels);
  back_.setDevicePixelRatio(devicePixelRatioF());
  back_.fill(backdrop_ == QBrush() ? Qt::transparent : Qt::black);
  Prepare(PixelsPerUnit() * devicePixelRatioF());
  QPainter painter(&back_);
  painter.fillRect(rect(), backdrop_);
  SetScale(painter);
  DrawCase(painter);
  DrawDial(painter);
}

void InstrumentWidget::DrawAbove() {
  above_ = QPixmap(drawn_.pixels);
  above_.setDevicePixelRatio(devicePixelRatioF());
  above_.fill(Qt::transparent);
  QPainter painter(&above_);
  SetScale(painter);
  DrawFront(painter);
  for (std::size_t i = 0; i < controls_.size(); ++i) {
    DrawControl(painter, controls_[i], drawn_.controls[i], drawn_.powered, Ink());
  }
  DrawGlass(painter);
  DrawFault(painter);
}

void InstrumentWidget::paintEvent(QPaintEvent*) {
  if (width() < kSmallestDrawn || height() < kSmallestDrawn) return;
  RenewPictures();
  QPainter painter(this);
  painter.drawPixmap(0, 0, back_);
  painter.save();
  SetScale(painter);
  DrawMoving(painter);
  painter.restore();
  painter.drawPixmap(0, 0, above_);
}

void InstrumentWidget::contextMenuEvent(QContextMenuEvent* event) {
  QMenu menu(this);
  menu.setObjectName(QStringLiteral("menuFault"));
  menu.addSection(QStringLiteral("%1, address %2").arg(caption_).arg(device_.Id().gaugeID));
  for (const DeviceFault fault : kDeviceFaults) {
    QAction* action = menu.addAction(QString::fromUtf8(FaultText(fault).data()));
    action->setCheckable(true);
    action->setChecked(device_.Fault() == fault);
    connect(action, &QAction::triggered, this, [this, fault] { device_.SetFault(fault); });
  }
  menu.addSeparator();
  connect(menu.addAction(QStringLiteral("Switch off and on again")), &QAction::triggered, this, [this] {
    device_.SetFault(DeviceFault::Dead);
    QTimer::singleShot(kOffMs, this, [this] { device_.SetFault(DeviceFault::None); });
  });
  connect(menu.addAction(QStringLiteral("Dies in 20 seconds")), &QAction::triggered, this,
          [this] { device_.DieIn(kDiesInMs); });
  menu.exec(event->globalPos());
}

}  // namespace tvx::drawn
