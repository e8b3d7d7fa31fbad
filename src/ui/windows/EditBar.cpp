#include "ui/windows/EditBar.h"

#include <QPainter>
#include <QShortcut>
#include <QStyle>

namespace tvx {
namespace {

// Of a step that there is.
QString Named(const QString& what, const QString& name) {
  return name.isEmpty() ? QString() : what + ": " + name + "    ";
}

// A line with dots for what it has no room for.
class ShortenedLabel final : public QLabel {
 public:
  explicit ShortenedLabel(Qt::TextElideMode where) : where_(where) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text(), where_, contentsRect().width());
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
                          shown, foregroundRole());
  }

 private:
  const Qt::TextElideMode where_;
};

QLabel* MakeLine(const char* name, Qt::TextElideMode where) {
  auto* label = new ShortenedLabel(where);
  label->setObjectName(QString::fromLatin1(name));
  label->setTextFormat(Qt::PlainText);
  look::SetRole(label, "caption");
  label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  return label;
}

}  // namespace

EditBar::EditBar(Actions actions, QWidget* form) {
  setObjectName("BarEdit");
  cmdUndo = MakeButton("cmdUndo", tr("Undo"), {});
  cmdRedo = MakeButton("cmdRedo", tr("Redo"), {});
  LabelSteps = MakeLine("LabelSteps", Qt::ElideRight);
  LabelSaved = MakeLine("LabelSaved", Qt::ElideLeft);
  // Whether it is saved stands last, and is never cut.
  LabelSaved->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(look::Gap());
  row->addWidget(cmdUndo);
  row->addWidget(cmdRedo);
  row->addWidget(LabelSteps, 1);
  row->addWidget(LabelSaved, 1);
  if (actions.save) {
    cmdSaveNow = MakeButton("cmdSaveNow", tr("Save to file"), {});
    row->addWidget(cmdSaveNow);
    connect(cmdSaveNow, &QPushButton::clicked, this, [save = actions.save] { save(); });
  }
  connect(cmdUndo, &QPushButton::clicked, this, [undo = actions.undo] { undo(); });
  connect(cmdRedo, &QPushButton::clicked, this, [redo = actions.redo] { redo(); });
  const auto shortcut = [&](const char* keys, const std::function<void()>& does) {
    auto* key = new QShortcut(QKeySequence(QString::fromLatin1(keys)), form);
    connect(key, &QShortcut::activated, this, [does] { does(); });
  };
  shortcut("Ctrl+Z", actions.undo);
  shortcut("Ctrl+Shift+Z", actions.redo);
  shortcut("Ctrl+Y", actions.redo);
}

void EditBar::Show(const View& view) {
  if (shownOnce_ && view == shown_) return;
  shownOnce_ = true;
  shown_ = view;
  const auto show = [](QPushButton* button, const QString& what, const QString& name, const QString& tip) {
    button->setToolTip(name.isEmpty() ? tip : what + ": " + name + "\n" + tip);
    button->setEnabled(!name.isEmpty());
  };
  show(cmdUndo, tr("Undo"), view.undo, tr("Takes back the last change of the configuration (Ctrl+Z)"));
  show(cmdRedo, tr("Redo"), view.redo, tr("Makes the change again that was taken back (Ctrl+Shift+Z)"));
  SetTextIfChanged(LabelSteps, Named(tr("Undo"), view.undo) + Named(tr("Redo"), view.redo));
  LabelSteps->setToolTip(LabelSteps->text());
  LabelSteps->setVisible(!LabelSteps->text().isEmpty());
  SetTextIfChanged(LabelSaved, view.state);
  LabelSaved->setToolTip(view.state);
  if (cmdSaveNow == nullptr) return;
  cmdSaveNow->setEnabled(view.changed);
  cmdSaveNow->setToolTip(view.saveWords);
}

}  // namespace tvx
