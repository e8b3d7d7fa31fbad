#include "ui/Form.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLayout>
#include <QResizeEvent>
#include <QScrollArea>
#include <QStyle>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/Widgets.h"

namespace tvx {
namespace {

constexpr int kLookAgainMs = 50;
constexpr int kTitleBar = 3;      // of the window manager, in text heights
constexpr int kLeastInSight = 8;  // of what scrolls, in text heights

// As large as what it holds, where there is room.
class Scroller : public QScrollArea {
 public:
  using QScrollArea::QScrollArea;
  QSize sizeHint() const override {
    if (widget() == nullptr) return QScrollArea::sizeHint();
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    return widget()->sizeHint().expandedTo(widget()->minimumSizeHint()) + QSize(bar, bar);
  }
  QSize minimumSizeHint() const override {
    return QScrollArea::minimumSizeHint().expandedTo({0, kLeastInSight * fontMetrics().height()});
  }

 protected:
  // What is held may have grown: the form is to know.
  bool eventFilter(QObject* watched, QEvent* event) override {
    const bool done = QScrollArea::eventFilter(watched, event);
    if (watched == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
    return done;
  }
};

// Below what scrolls, a foot has to keep its own distance from the window's edge.
void SpaceFoot(QWidget& foot) {
  const int gap = foot.fontMetrics().height() / 2;
  foot.layout()->setContentsMargins(2 * gap, gap, 2 * gap, gap);
}

}  // namespace

Form::Form(const char* name, QWidget* parent) : QWidget(parent, Qt::Window) {
  setObjectName(QString::fromLatin1(name));
}

// Children may still speak while they are deleted, after this form's own part of itself is gone.
Form::~Form() {
  disconnect(qApp, nullptr, this, nullptr);
  for (QObject* child : findChildren<QObject*>()) child->disconnect(this);
}

QPushButton* Form::MakeFollowButton(std::function<Subject()> subject) {
  QPushButton* button = MakeButton("cmdFollow", tr("Where is it?"),
                                   tr("Follows the value from X-Plane to the instrument, or from the hand to "
                                      "X-Plane, and says where it stops"));
  connect(button, &QPushButton::clicked, this,
          [this, subject = std::move(subject)] { emit FollowAsked(subject()); });
  return button;
}

void Form::Unload() {
  if (unloading_) return;
  unloading_ = true;
  for (Form* form : findChildren<Form*>()) form->Unload();
  for (QDialog* dialog : findChildren<QDialog*>()) dialog->reject();
  for (QTimer* timer : findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly)) timer->stop();
  kept_.clear();
  hide();
  AtEnd();
  emit Ended();
  DeleteWhenIdle();
}

// Deleting waits as long as a question, a file chooser or the like runs an event loop of its own: the slot
// that put it may be this form's.
void Form::DeleteWhenIdle() {
  if (QThread::currentThread()->loopLevel() <= 1) {
    deleteLater();
  } else {
    QTimer::singleShot(kLookAgainMs, this, &Form::DeleteWhenIdle);
  }
}

// What the form holds moves into an area that scrolls.
void Form::ScrollInside() {
  scrolls_ = true;
  auto* scroller = new Scroller(this);
  scroller->setObjectName("ScrollForm");
  scroller->setFrameShape(QFrame::NoFrame);
  scroller->setWidgetResizable(true);
  scroller->setFocusPolicy(Qt::NoFocus);
  auto* content = new QWidget(this);  // within this window, so that Tab keeps its order
  content->setObjectName("FormContent");
  QPointer<QWidget> focused = focusWidget();
  QWidget* foot = foot_;
  if (foot != nullptr) layout()->removeWidget(foot);
  // What the form itself asks for; what its layout asks for may grow.
  const int asked = minimumWidth() > layout()->totalMinimumSize().width() ? minimumWidth() : 0;
  content->setLayout(layout());
  content->setMinimumWidth(asked);
  setMinimumSize(0, 0);
  scroller->setWidget(content);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(scroller, 1);
  if (foot != nullptr) {
    column->addWidget(foot);
    SpaceFoot(*foot);
  }
  if (isVisible()) scroller->show();
  content->layout()->activate();
  column->activate();
  if (focused) focused->setFocus();
  // Also what gets the focus by its own key. A click leaves all where it is: it may be meant for a button.
  connect(qApp, &QApplication::focusChanged, scroller, [scroller](QWidget*, QWidget* now) {
    if (now != nullptr && scroller->isAncestorOf(now) && QApplication::mouseButtons() == Qt::NoButton)
      scroller->ensureWidgetVisible(now);
  });
}

// What its layout needs. Words that wrap need the more lines the narrower the window is, which Qt leaves out
// of a window's least size; what scrolls is to be as wide as what it holds.
QSize Form::Least() const {
  QSize least = layout()->totalMinimumSize();
  if (const auto* scroller = findChild<QScrollArea*>("ScrollForm", Qt::FindDirectChildrenOnly)) {
    const QWidget* held = scroller->widget();
    const int wanted = std::max(held->minimumSizeHint().width(), held->minimumWidth());
    least.setWidth(std::max(least.width(), wanted + style()->pixelMetric(QStyle::PM_ScrollBarExtent)));
  } else {
    least.setWidth(std::max(least.width(), minimumWidth()));
  }
  if (layout()->hasHeightForWidth()) {
    least.setHeight(layout()->totalMinimumHeightForWidth(std::max(width(), least.width())));
  }
  return least;
}

void Form::FitScreen(QEvent::Type why) {
  if (layout() == nullptr || screen() == nullptr) return;
  const bool free = !isMaximized() && !isFullScreen();
  const QSize room =
      free ? screen()->availableGeometry().size() - QSize(0, kTitleBar * fontMetrics().height()) : size();
  const QSize least = Least();
  if (!scrolls_ && (least.width() > room.width() || least.height() > room.height())) {
    ScrollInside();
    const QSize wanted = why == QEvent::Show ? layout()->sizeHint() : least;
    if (free) resize(size().expandedTo(wanted).boundedTo(room));
  }
  KeepWithin(room, free && why == QEvent::LayoutRequest);
}

// Neither smaller than it can be nor larger than the screen. Where it grows by itself its foot stays in
// sight.
void Form::KeepWithin(const QSize& room, bool mayMove) {
  const QSize least = Least().boundedTo(room);
  const int before = height();
  if (minimumWidth() < least.width() || scrolls_) setMinimumWidth(least.width());
  setMinimumHeight(least.height());
  if (width() > room.width() || height() > room.height()) resize(size().boundedTo(room));
  const int below = frameGeometry().bottom() - screen()->availableGeometry().bottom();
  if (mayMove && height() > before && below > 0)
    move(x(), std::max(screen()->availableGeometry().top(), y() - below));
}

// When it is shown, when more is shown on it, and when its words have another width.
bool Form::event(QEvent* event) {
  const auto type = event->type();
  if (type == QEvent::WindowStateChange && isVisible() && !isMinimized()) comingUp_ = ComingUp::Front;
  bool fits = type != QEvent::Show && type != QEvent::LayoutRequest;
  if (type == QEvent::Resize) {
    const auto* resized = static_cast<QResizeEvent*>(event);
    fits = resized->size().width() == resized->oldSize().width();
  }
  // Another event may be the one that deletes the form.
  if (fits) return QWidget::event(event);
  const bool done = QWidget::event(event);
  if (!unloading_ && (type == QEvent::Show || isVisible())) FitScreen(type);
  return done;
}

void Form::BringToFront() {
  show();
  if (comingUp_ != ComingUp::Front) return;
  raise();
  activateWindow();
}

void Form::setVisible(bool visible) {
  const bool comes = visible && !isVisible() && !heldBack_;
  if (visible && comingUp_ == ComingUp::Hidden && !isVisible()) {
    HoldBack();
  } else {
    if (heldBack_) setWindowState(windowState() & ~Qt::WindowMinimized);
    heldBack_ = false;
    if (comes && comingUp_ == ComingUp::Minimised) setWindowState(windowState() | Qt::WindowMinimized);
    QWidget::setVisible(visible);
  }
  if (comes && !unloading_) CameUp();
}

void Form::HoldBack() {
  if (unloading_) return;
  QWidget::setVisible(false);
  heldBack_ = true;
  setWindowState(windowState() | Qt::WindowMinimized);
}

void Form::Reveal() {
  if (!heldBack_ && !isVisible()) return;
  setWindowState(windowState() & ~Qt::WindowMinimized);
  setVisible(true);
}

void Form::AddFoot(QWidget* foot) {
  if (layout() == nullptr) return;
  if (foot_ == nullptr) {
    foot_ = new QWidget(this);
    foot_->setObjectName("FormFoot");
    auto* column = new QVBoxLayout(foot_);
    column->setContentsMargins(0, 0, 0, 0);
    if (scrolls_) {
      layout()->addWidget(foot_);
      SpaceFoot(*foot_);
    } else if (auto* grid = qobject_cast<QGridLayout*>(layout())) {
      grid->addWidget(foot_, grid->rowCount(), 0, 1, -1);
    } else {
      layout()->addWidget(foot_);
    }
  }
  foot_->layout()->addWidget(foot);
  for (QWidget* child : foot->findChildren<QWidget*>()) child->ensurePolished();
  const int more = foot->sizeHint().height() + layout()->spacing();
  if (testAttribute(Qt::WA_Resized) || isVisible()) resize(width(), height() + more);
}

void Form::ShowNotice(const QString& text) {
  if (notice_ == nullptr) {
    if (text.isEmpty() || layout() == nullptr) return;
    notice_ = new QLabel(this);
    notice_->setObjectName("LabelFormNotice");
    notice_->setWordWrap(true);
    notice_->setTextInteractionFlags(Qt::TextSelectableByMouse);  // it may hold a command to be copied
    AddFoot(notice_);
  }
  notice_->setText(text);
  notice_->setVisible(!text.isEmpty());
}

void Form::CloseAsked() {
  if (unloading_ || closing_) return;
  closing_ = true;
  const bool end = MayEnd();
  closing_ = false;
  if (!end || unloading_) return;
  Unload();
  emit Closed();
}

void Form::closeEvent(QCloseEvent* event) {
  if (unloading_) {
    event->accept();
    return;
  }
  event->ignore();
  CloseAsked();
}

void Form::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    EscapePressed();
    return;
  }
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
    QWidget::keyPressEvent(event);
    return;
  }
  auto* button = qobject_cast<QPushButton*>(focusWidget());
  if (button == nullptr) button = defaultButton_;
  if (button != nullptr && button->isVisible()) button->click();
}

}  // namespace tvx
