#include "follow/forms/CockpitTile.h"

#include <QMouseEvent>
#include <QPainter>

#include "ui/Look.h"
#include "ui/Widgets.h"

namespace tvx {
namespace {

constexpr int kFrame = 3;  // pixels around the face, for the frame of trouble and focus
constexpr int kVeilAlpha = 170;

}  // namespace

CockpitTile::CockpitTile(QWidget* face, QString caption, const Subject& main, QString unknown)
    : face_(face), caption_(std::move(caption)), unknown_(std::move(unknown)), main_(main) {
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::StrongFocus);
  // The face's knobs are for looking at: a click anywhere follows a value.
  face_->setParent(this);
  face_->setAttribute(Qt::WA_TransparentForMouseEvents);
  face_->setFocusPolicy(Qt::NoFocus);
  veil_ = new QLabel(this);
  veil_->setAttribute(Qt::WA_TransparentForMouseEvents);
  veil_->setAlignment(Qt::AlignCenter);
  veil_->setWordWrap(true);
  veil_->setText(unknown_);
  QColor veil = look::ColourOf(look::Ground::Form);
  veil.setAlpha(kVeilAlpha);
  veil_->setStyleSheet(QStringLiteral("background: rgba(%1, %2, %3, %4);")
                           .arg(veil.red())
                           .arg(veil.green())
                           .arg(veil.blue())
                           .arg(veil.alpha()));
  connect(this, &QAbstractButton::clicked, this, [this] {
    const auto part = pressed_ ? SubjectAt(*pressed_ - face_->pos()) : std::nullopt;
    pressed_.reset();
    emit FollowAsked(part.value_or(main_));
  });
}

int CockpitTile::CaptionHeight() const {
  return 2 * fontMetrics().lineSpacing() + kFrame;
}

int CockpitTile::HeightWith(double face) const {
  return static_cast<int>(face) + 2 * kFrame + CaptionHeight();
}

void CockpitTile::resizeEvent(QResizeEvent*) {
  const QRect room = rect().adjusted(kFrame, kFrame, -kFrame, -kFrame - CaptionHeight());
  face_->setGeometry(room);
  veil_->setGeometry(room);
}

void CockpitTile::SetState(bool known, const QString& trouble, const Subject& main) {
  main_ = main;
  if (known != known_ || trouble != trouble_) update();  // the frame
  known_ = known;
  trouble_ = trouble;
  veil_->setVisible(!known);
  ShowWords();
}

void CockpitTile::ShowWords() {
  const QString words = !trouble_.isEmpty() ? trouble_ : known_ ? FaceWords() : unknown_;
  if (words == words_) return;
  words_ = words;
  setAccessibleName(caption_ + QStringLiteral(": ") + words_);
  setToolTip(words_ + QLatin1Char('\n') + tr("A click follows the value"));
  update(0, height() - CaptionHeight() - kFrame, width(), CaptionHeight() + kFrame);
}

void CockpitTile::mousePressEvent(QMouseEvent* event) {
  pressed_ = event->position();
  QAbstractButton::mousePressEvent(event);
}

void CockpitTile::keyPressEvent(QKeyEvent* event) {
  pressed_.reset();
  QAbstractButton::keyPressEvent(event);
}

void CockpitTile::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const look::Colours& colours = look::CurrentColours();
  const int line = fontMetrics().lineSpacing();
  const QRect face = face_->geometry().adjusted(-kFrame + 1, -kFrame + 1, kFrame - 1, kFrame - 1);
  const bool trouble = !trouble_.isEmpty();
  if (trouble || hasFocus()) {
    painter.setPen(QPen(trouble ? colours.trouble : colours.accent, kFrame - 1));
    painter.drawRect(face);
  }
  const int top = face.bottom() + kFrame;
  const auto write = [&](int row, const QString& words, const QColor& colour, bool bold) {
    QFont written = font();
    written.setBold(bold);
    painter.setFont(written);
    painter.setPen(colour);
    const QRect room(0, top + row * line, width(), line);
    painter.drawText(room, Qt::AlignHCenter | Qt::AlignVCenter,
                     QFontMetrics(written).elidedText(words, Qt::ElideRight, room.width()));
  };
  write(0, caption_, colours.text, hasFocus());
  // The mark tells trouble without its colour.
  write(1, trouble ? QStringLiteral("\u26A0 ") + trouble_ : words_, trouble ? colours.trouble : colours.dim,
        trouble);
}

}  // namespace tvx
