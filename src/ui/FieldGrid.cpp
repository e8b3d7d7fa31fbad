#include "ui/FieldGrid.h"

#include <QScreen>
#include <algorithm>
#include <utility>

#include "ui/Look.h"

namespace tvx {

QGridLayout* MakeTitledGrid(QFrame* panel, const QString& title, const char* labelName) {
  auto* grid = new QGridLayout(panel);
  SpacePanel(grid);
  QLabel* label = MakeLabel(labelName, title, "caption");
  if (labelName == nullptr) label->setObjectName(panel->objectName() + "Title");
  grid->addWidget(label, 0, 0, 1, -1);
  return grid;
}

QVBoxLayout* MakeTitledColumn(QFrame* panel, const QString& title, const char* labelName) {
  auto* column = new QVBoxLayout(panel);
  SpacePanel(column, look::Margin());
  column->addWidget(MakeLabel(labelName, title, "caption"));
  return column;
}

QLabel* MakeCaption(QWidget* control, const QString& text) {
  QLabel* label = MakeLabel((control->objectName() + "Caption").toLatin1().constData(), text);
  label->setBuddy(control);
  return label;
}

QLineEdit* AddEdit(QGridLayout* grid, int row, int column, const char* name, const QString& caption,
                   const QString& toolTip) {
  auto* edit = new QLineEdit;
  edit->setObjectName(QString::fromLatin1(name));
  edit->setToolTip(toolTip);
  edit->setMinimumWidth(look::Margin() * 4);
  grid->addWidget(MakeCaption(edit, caption), row, column);
  grid->addWidget(edit, row, column + 1);
  return edit;
}

std::function<void()> CheckAsTyped(QLineEdit* edit, std::function<std::string(const std::string&)> problem,
                                   std::function<void(const std::string&)> said) {
  const auto check = [edit, problem = std::move(problem), said = std::move(said)] {
    const std::string text = edit->text().toStdString();
    const std::string words = text.empty() ? std::string() : problem(text);
    MarkWrong(edit, !words.empty());
    const auto* caption = edit->window()->findChild<QLabel*>(edit->objectName() + "Caption");
    QString name = caption == nullptr ? QString() : caption->text();
    said(words.empty() ? words : name.remove('&').toStdString() + ": " + words);
  };
  QObject::connect(edit, &QLineEdit::textChanged, edit, check);
  return check;
}

// Layouts ask for the width before the style sheet's fonts are known, unless everything is polished.
void KeepWide(QWidget* form) {
  for (QWidget* child : form->findChildren<QWidget*>()) child->ensurePolished();
  form->setMinimumWidth(form->sizeHint().width());
}

void OpenWide(QWidget* form, int letters) {
  const QSize room = form->screen()->availableGeometry().size();
  const int frame = 4 * look::Margin();  // the window manager's
  form->resize(std::min(letters * look::Margin(), room.width() - frame / 2),
               std::min(form->sizeHint().height(), room.height() - frame));
}

}  // namespace tvx
