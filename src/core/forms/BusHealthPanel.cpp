#include "core/forms/BusHealthPanel.h"

#include <QHeaderView>
#include <QVBoxLayout>

#include "ui/Look.h"
#include "ui/Widgets.h"

namespace tvx {
namespace {

constexpr int kLinesShown = 7;

QString Text(const std::string& text) {
  return QString::fromStdString(text);
}

}  // namespace

BusHealthPanel::BusHealthPanel() : LabelBusLoad(MakeLabel("LabelBusLoad")), ListBusHealth(new QTreeWidget) {
  setObjectName(QStringLiteral("PanelBusHealth"));
  look::SetRole(this, "panel");
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(look::Margin(), look::Gap(), look::Margin(), look::Gap());
  LabelBusLoad->setWordWrap(true);
  ListBusHealth->setObjectName(QStringLiteral("ListBusHealth"));
  ListBusHealth->setHeaderLabels({tr("Instrument that is asked"), tr("Last answer"),
                                  tr("Answers in the last minute"), tr("Asked every"), tr("Not answered"),
                                  tr("Damaged")});
  ListBusHealth->setRootIsDecorated(false);
  ListBusHealth->setUniformRowHeights(true);
  ListBusHealth->setSelectionMode(QAbstractItemView::NoSelection);
  ListBusHealth->setFocusPolicy(Qt::TabFocus);
  ListBusHealth->header()->setStretchLastSection(false);
  ListBusHealth->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  ListBusHealth->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  ListBusHealth->setMinimumHeight((kLinesShown + 2) * ListBusHealth->fontMetrics().lineSpacing() * 5 / 4);
  column->addWidget(LabelBusLoad);
  column->addWidget(ListBusHealth);
}

void BusHealthPanel::Show(const StatusView& view) {
  SetTextIfChanged(LabelBusLoad, view.BusLoad.empty() ? "Halted: nobody is asked." : view.BusLoad);
  if (shown_ == view.AskedGauges) return;
  shown_ = view.AskedGauges;
  while (ListBusHealth->topLevelItemCount() > static_cast<int>(shown_.size()))
    delete ListBusHealth->takeTopLevelItem(0);
  while (ListBusHealth->topLevelItemCount() < static_cast<int>(shown_.size())) {
    auto* item = new QTreeWidgetItem(ListBusHealth);
    for (int column = 1; column < ListBusHealth->columnCount(); ++column) {
      item->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    }
  }
  for (std::size_t i = 0; i < shown_.size(); ++i) {
    const AskedGauge& line = shown_[i];
    QTreeWidgetItem& item = *ListBusHealth->topLevelItem(static_cast<int>(i));
    int column = 0;
    for (const std::string* text :
         {&line.Gauge, &line.LastAnswer, &line.Answers, &line.Every, &line.Missed, &line.Damaged}) {
      item.setText(column++, Text(*text));
    }
    const look::Colours& colours = look::CurrentColours();
    item.setForeground(1, line.Silent ? colours.trouble : colours.text);
  }
}

}  // namespace tvx
