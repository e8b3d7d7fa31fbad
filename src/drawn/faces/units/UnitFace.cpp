#include "drawn/faces/units/UnitFace.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>

#include "drawn/widgets/Theme.h"

namespace tvx::drawn {
namespace {

constexpr double kHead = 22, kName = 13;

}  // namespace

UnitFace::UnitFace(QString caption, const QSize& natural, QWidget* parent)
    : QWidget(parent), caption_(std::move(caption)), natural_(natural) {
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void UnitFace::SetTrouble(const QString& words) {
  if (Renew(trouble_, words)) RenewBack();
}

double UnitFace::Scale() const {
  return std::min(static_cast<double>(width()) / natural_.width(),
                  static_cast<double>(height()) / natural_.height());
}

double UnitFace::Head() const {
  return kHead * Scale();
}

void UnitFace::RenewBack() {
  stale_ = true;
  update();
}

void UnitFace::RenewPicture() {
  const QSize pixels = size() * devicePixelRatioF();
  if (!stale_ && back_.size() == pixels) return;
  stale_ = false;
  back_ = QPixmap(pixels);
  back_.setDevicePixelRatio(devicePixelRatioF());
  back_.fill(theme::kPanelBottom);
  QPainter painter(&back_);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(QColor(0x3d, 0x44, 0x4c), 1));
  painter.setBrush(theme::kDial);
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 8, 8);
  painter.setFont(theme::FontOf(kName * Scale(), true));
  painter.setPen(trouble_.isEmpty() ? theme::kText : theme::kTrouble);
  const QString head = trouble_.isEmpty() ? caption_ : caption_ + QStringLiteral(" - ") + trouble_;
  painter.drawText(QRectF(10, 3, width() - 20, Head() - 3), Qt::AlignVCenter | Qt::AlignLeft, head);
  DrawBack(painter);
}

void UnitFace::paintEvent(QPaintEvent* event) {
  RenewPicture();
  QPainter painter(this);
  painter.drawPixmap(0, 0, back_);
  painter.setRenderHint(QPainter::Antialiasing);
  Draw(painter, event->region());
}

}  // namespace tvx::drawn
