#include "follow/forms/InstrumentTile.h"

#include <QPainter>
#include <QResizeEvent>

#include "drawn/faces/MakeFace.h"
#include "ui/Look.h"
#include "ui/Widgets.h"

namespace tvx {
namespace {

constexpr int kFrame = 3;      // pixels around the face, for the frame of trouble and focus
constexpr int kWideDials = 2;  // how many dials a unit of the radio stack is wide
constexpr int kVeilAlpha = 170;

}  // namespace

InstrumentTile::InstrumentTile(drawn::Device& device, const ConfigModel& model, const QString& caption)
    : face_(drawn::MakeFace(device, model, this)), veil_(new QLabel(this)), caption_(caption) {
  setObjectName(QStringLiteral("Tile%1").arg(device.Id().gaugeID));
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::StrongFocus);
  // The face's knobs are for looking at: a click anywhere follows the value.
  face_->setAttribute(Qt::WA_TransparentForMouseEvents);
  face_->setFocusPolicy(Qt::NoFocus);
  veil_->setAttribute(Qt::WA_TransparentForMouseEvents);
  veil_->setAlignment(Qt::AlignCenter);
  veil_->setWordWrap(true);
  veil_->setText(tr("Nothing\nsent yet"));
  QColor veil = look::ColourOf(look::Ground::Form);
  veil.setAlpha(kVeilAlpha);
  veil_->setStyleSheet(QStringLiteral("background: rgba(%1, %2, %3, %4);")
                           .arg(veil.red())
                           .arg(veil.green())
                           .arg(veil.blue())
                           .arg(veil.alpha()));
  ShowWords();
}

int InstrumentTile::CaptionHeight() const {
  return 2 * fontMetrics().lineSpacing() + kFrame;
}

QSize InstrumentTile::SizeFor(int dial) const {
  const QSizeF extent = face_->Extent();
  const int width = face_->Wide() ? kWideDials * dial : dial;
  return {width, static_cast<int>(width * extent.height() / extent.width()) + 2 * kFrame + CaptionHeight()};
}

void InstrumentTile::resizeEvent(QResizeEvent*) {
  const QRect room = rect().adjusted(kFrame, kFrame, -kFrame, -kFrame - CaptionHeight());
  face_->setGeometry(room);
  veil_->setGeometry(room);
  face_->SetBackdrop(look::ColourOf(look::Ground::Form));
}

void InstrumentTile::SetState(bool known, const QString& trouble) {
  if (known == known_ && trouble == trouble_) return;
  known_ = known;
  trouble_ = trouble;
  veil_->setVisible(!known);
  ShowWords();
}

void InstrumentTile::Advance(double seconds) {
  face_->Advance(seconds);
  ShowWords();
}

// What the face shows, in words, or why it shows nothing.
void InstrumentTile::ShowWords() {
  const QString words = !trouble_.isEmpty() ? trouble_ : known_ ? face_->Words() : tr("nothing sent yet");
  if (words == words_) return;
  words_ = words;
  setAccessibleName(caption_ + QStringLiteral(": ") + words_);
  setToolTip(words_ + QLatin1Char('\n') + tr("A click follows the value"));
  update(0, height() - CaptionHeight() - kFrame, width(), CaptionHeight() + kFrame);
}

void InstrumentTile::paintEvent(QPaintEvent*) {
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
