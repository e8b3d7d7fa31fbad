#include "core/forms/MessagesForm.h"

#include <QApplication>
#include <QClipboard>

#include "ui/Widgets.h"

namespace tvx {

MessagesForm::MessagesForm(SaidLog& log) : Form("frmMessages"), log_(log) {
  setWindowTitle(tr("Messages"));
  QLabel* caption =
      MakeLabel("LabelMessages",
                tr("What the program has &said and asked, and how its links stood. The newest is last, "
                   "the last 1000 are kept until it ends."),
                "caption");
  caption->setWordWrap(true);
  ListMessages = new LineList(
      "ListMessages", [this] { return log_.Lines().size(); },
      [this](std::size_t line) { return ToText(log_.Lines()[line]); });
  ListMessages->setToolTip(tr("Ctrl+C copies the lines that are chosen; Ctrl+A chooses all"));
  ListMessages->setMinimumSize(look::Margin() * 30, look::Margin() * 14);
  caption->setBuddy(ListMessages);
  QPushButton* copy = MakeButton("cmdCopyAll", tr("Copy &all"), tr("Puts every line into the clipboard"));
  QPushButton* close = MakeButton("CmdClose", tr("&Close"), tr("Closes this list (Escape)"));
  connect(copy, &QPushButton::clicked, this, [this] {
    QString text;
    for (const std::string& line : log_.Lines()) text += ToText(line) + '\n';
    QApplication::clipboard()->setText(text);
  });
  connect(close, &QPushButton::clicked, this, &MessagesForm::CloseAsked);
  auto* row = new QHBoxLayout;
  row->addWidget(copy);
  row->addStretch(1);
  row->addWidget(close);
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addWidget(caption);
  column->addWidget(ListMessages, 1);
  column->addLayout(row);
  SetDefaultButton(close);
  Keep(log_.SetChanged([this] { ListMessages->Refresh(true); }));
  resize(look::Margin() * 60, look::Margin() * 28);
  ListMessages->SetRow(static_cast<int>(log_.Lines().size()) - 1);
  ListMessages->setFocus();
}

}  // namespace tvx
