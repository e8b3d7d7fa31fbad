#include "platform/qt/QtMessageBoxes.h"

#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QScreen>
#include <algorithm>
#include <memory>

#include "base/Version.h"

namespace tvx {

namespace {

QString ToQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// Makes room for a text of several lines as it stands; by itself the box breaks every line at the same width.
void KeepLines(QMessageBox* box) {
  auto* label = box->findChild<QLabel*>("qt_msgbox_label");
  if (label == nullptr || !box->text().contains('\n')) return;
  label->ensurePolished();
  int widest = 0;
  for (const QString& line : box->text().split('\n')) {
    widest = std::max(widest, label->fontMetrics().horizontalAdvance(line));
  }
  const QScreen* screen = box->screen();
  const int room = screen == nullptr ? widest : screen->availableGeometry().width() * 2 / 3;
  label->setMinimumWidth(std::min(widest + 1, room));
}

QMessageBox* MakeBox(QMessageBox::Icon icon, const QString& text, QMessageBox::StandardButtons buttons) {
  // No parent: a message must outlive the form that it came from.
  auto* box = new QMessageBox(icon, ToQString(kProgramTitle).trimmed(), text, buttons);
  box->setObjectName("MessageBox");
  box->setTextFormat(Qt::PlainText);  // file names and simulator text may look like markup
  box->setWindowModality(Qt::ApplicationModal);
  KeepLines(box);
  return box;
}

}  // namespace

QtMessageBoxes::~QtMessageBoxes() {
  for (const auto& box : standing_) delete box.data();
}

void QtMessageBoxes::Show(std::string_view text) {
  if (dismissed_) return;
  const QString words = ToQString(text);
  std::erase_if(standing_,
                [](const QPointer<QMessageBox>& box) { return box.isNull() || !box->isVisible(); });
  for (const auto& box : standing_) {
    if (box->text() == words) {
      box->raise();
      return;
    }
  }
  QMessageBox* box = MakeBox(QMessageBox::Information, words, QMessageBox::Ok);
  box->setAttribute(Qt::WA_DeleteOnClose);
  standing_.emplace_back(box);
  box->show();  // not open(): that would make it modal to its window only, and it has none
}

int QtMessageBoxes::Ask(std::string_view text) {
  return AskWith(text, false);
}

int QtMessageBoxes::AskToGoOn(std::string_view text) {
  return AskWith(text, true);
}

int QtMessageBoxes::AskWith(std::string_view text, bool enterIsYes) {
  if (dismissed_) return kAnswerNo;
  const std::unique_ptr<QMessageBox> box(
      MakeBox(QMessageBox::Question, ToQString(text), QMessageBox::Yes | QMessageBox::No));
  box->setDefaultButton(enterIsYes ? QMessageBox::Yes : QMessageBox::No);
  box->setEscapeButton(QMessageBox::No);
  return Run(*box) == QMessageBox::Yes ? kAnswerYes : kAnswerNo;
}

std::optional<std::string> QtMessageBoxes::AskText(std::string_view text, std::string_view preset) {
  if (dismissed_) return std::nullopt;
  QInputDialog box;
  box.setObjectName("InputBox");
  box.setWindowTitle(ToQString(kProgramTitle).trimmed());
  box.setWindowModality(Qt::ApplicationModal);
  box.setLabelText(ToQString(text));
  box.setTextValue(ToQString(preset));
  if (Run(box) != QDialog::Accepted) return std::nullopt;
  return box.textValue().toStdString();
}

int QtMessageBoxes::Run(QDialog& box) {
  asking_.push_back(&box);
  const int answer = box.exec();
  std::erase(asking_, &box);
  return dismissed_ ? QDialog::Rejected : answer;
}

void QtMessageBoxes::Dismiss() {
  dismissed_ = true;
  for (const auto& box : standing_) {
    if (box) box->close();
  }
  for (QDialog* box : asking_) box->reject();
}

}  // namespace tvx
