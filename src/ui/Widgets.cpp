#include "ui/Widgets.h"

#include <QApplication>
#include <QEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

#include "ui/Look.h"
#include "ui/ReadingLabel.h"

namespace tvx {

namespace {

// As wide as its text, and never so narrow that it is hard to hit. (A least width in the style sheet would do
// for the second, but layouts then take it for the width that the text needs.)
class Button : public QPushButton {
 public:
  using QPushButton::QPushButton;
  QSize sizeHint() const override { return QPushButton::sizeHint().expandedTo({LeastWidth(), 0}); }
  QSize minimumSizeHint() const override { return sizeHint(); }

 private:
  int LeastWidth() const {
    const QString role = property("role").toString();
    if (role == "link" || role == "titlelink") return 0;
    return look::Margin() * (role == "small" ? 5 : 13) / 2;
  }
};

}  // namespace

bool SetTextIfChanged(QLabel* label, const QString& text) {
  if (label->text() == text) return false;
  label->setText(text);
  return true;
}

QLabel* MakeLabel(const char* name, const QString& text, const char* role) {
  auto* label = new QLabel(text);
  label->setObjectName(QString::fromLatin1(name));
  label->setTextFormat(Qt::PlainText);
  if (role != nullptr) look::SetRole(label, role);
  return label;
}

QPushButton* MakeButton(const char* name, const QString& text, const QString& toolTip) {
  auto* button = new Button(text);
  button->setObjectName(QString::fromLatin1(name));
  button->setToolTip(toolTip);
  return button;
}

QPushButton* MakeThemeButton() {
  const auto text = [] {
    return look::CurrentTheme() == look::Theme::Dark ? QPushButton::tr("Day co&lours")
                                                     : QPushButton::tr("Night co&lours");
  };
  QPushButton* button = MakeButton("cmdTheme", text(),
                                   QPushButton::tr("Bright colours for a bright room, dark "
                                                   "ones for a dark cockpit"));
  look::SetRole(button, "link");
  QObject::connect(button, &QPushButton::clicked, button, [button, text] {
    const bool dark = look::CurrentTheme() == look::Theme::Dark;
    look::Apply(*qApp, dark ? look::Theme::Light : look::Theme::Dark);
    button->setText(text());
  });
  return button;
}

QFrame* MakePanel(const char* name) {
  auto* panel = new QFrame;
  panel->setObjectName(QString::fromLatin1(name));
  look::SetRole(panel, "panel");
  return panel;
}

void SpaceForm(QLayout* layout) {
  layout->setContentsMargins(look::Margin(), look::Margin(), look::Margin(), look::Margin());
  layout->setSpacing(look::Gap());
}

void SpacePanel(QLayout* layout, int below) {
  layout->setContentsMargins(look::Margin(), look::Gap(), look::Margin(), below);
  layout->setSpacing(look::Gap());
}

Reading::Reading(const QString& name, const QString& widest, Qt::Alignment alignment, look::Ground ground)
    : widest_(widest), label_(new ReadingLabel(ground)) {
  label_->setParent(this);
  label_->setObjectName(name);
  label_->setAlignment(alignment);
  look::SetRole(label_, "value");
  FitWidest();
}

void Reading::SetText(std::string_view text) {
  if (SetTextIfChanged(label_, text) && label_->SizeOf(label_->text()).width() > label_->width())
    PlaceLabel();
}

QString Reading::Text() const {
  return label_->text();
}

void Reading::FitWidest() {
  label_->ensurePolished();
  setMinimumSize(label_->SizeOf(widest_));
  PlaceLabel();
}

// No larger than its texts: all of it is painted, and sent to the screen, with each of them.
void Reading::PlaceLabel() {
  const QSize needed = label_->SizeOf(widest_).expandedTo(label_->SizeOf(label_->text())).boundedTo(size());
  label_->setGeometry(QStyle::alignedRect(layoutDirection(), label_->alignment(), needed, rect()));
}

void Reading::resizeEvent(QResizeEvent*) {
  PlaceLabel();
}

void Reading::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange) FitWidest();
}

ValueBox::ValueBox(const char* name, const QString& caption, const QString& unit, const QString& widest)
    : caption_(MakeLabel("", caption, "caption")),
      value_(new Reading(QString::fromLatin1(name), widest, Qt::AlignRight | Qt::AlignVCenter,
                         look::Ground::Panel)),
      unit_(MakeLabel("", unit, "caption")) {
  const QString base = QString::fromLatin1(name);
  setObjectName(base + "Frame");
  caption_->setObjectName(base + "Caption");
  unit_->setObjectName(base + "Unit");
  look::SetRole(this, "panel");
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(look::Gap(), look::Gap() / 2, look::Gap(), look::Gap() / 2);
  grid->setVerticalSpacing(0);
  grid->setHorizontalSpacing(look::Gap() / 2);
  grid->addWidget(caption_, 0, 0, 1, 2);
  grid->addWidget(value_, 1, 0);
  grid->addWidget(unit_, 1, 1, Qt::AlignLeft | Qt::AlignBottom);
  grid->setColumnStretch(0, 1);
  if (unit.isEmpty()) unit_->hide();
}

StateLamp::StateLamp(const char* name) {
  setObjectName(QString::fromLatin1(name));
  setAccessibleName(tr("State"));
  setAccessibleDescription(tr("off"));
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void StateLamp::SetState(State state) {
  if (state_ == state) return;
  state_ = state;
  setAccessibleDescription(state == State::Good      ? tr("good")
                           : state == State::Trouble ? tr("trouble")
                                                     : tr("off"));
  update();
}

QSize StateLamp::sizeHint() const {
  return {look::Margin(), look::Margin()};
}

void StateLamp::paintEvent(QPaintEvent*) {
  const look::Colours& colours = look::CurrentColours();
  const QColor colour = state_ == State::Good      ? colours.good
                        : state_ == State::Trouble ? colours.trouble
                                                   : colours.line;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  // Not by its colour alone: off is a ring, good is full, trouble is a triangle.
  const QRectF area = QRectF(rect()).adjusted(2, 2, -2, -2);
  painter.setPen(QPen(state_ == State::Off ? colours.dim : colour.darker(160), state_ == State::Off ? 2 : 1));
  painter.setBrush(state_ == State::Off ? QBrush(Qt::NoBrush) : QBrush(colour));
  if (state_ != State::Trouble) {
    painter.drawEllipse(area);
    return;
  }
  const QPointF corners[] = {{area.center().x(), area.top()}, area.bottomRight(), area.bottomLeft()};
  painter.drawPolygon(corners, 3);
}

PickList::PickList(const char* name) {
  setObjectName(QString::fromLatin1(name));
  connect(this, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
    if (picked_) picked_(item->text());
  });
}

void PickList::Mark(const QString& text) {
  const auto found = findItems(text, Qt::MatchExactly);
  if (found.isEmpty()) {
    clearSelection();
    setCurrentItem(nullptr);
  } else if (currentItem() != found.first()) {
    setCurrentItem(found.first());
  }
}

void PickList::keyPressEvent(QKeyEvent* event) {
  const QListWidgetItem* before = currentItem();
  QListWidget::keyPressEvent(event);
  const QListWidgetItem* now = currentItem();
  const bool chosen = now != nullptr && (now != before || event->key() == Qt::Key_Space);
  if (chosen && picked_) picked_(now->text());
}

}  // namespace tvx
