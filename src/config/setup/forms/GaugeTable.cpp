#include "config/setup/forms/GaugeTable.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>

#include "config/setup/GaugeList.h"
#include "ui/Look.h"
#include "ui/Widgets.h"

namespace tvx {
namespace {

constexpr int kStateColumn = 8;

}  // namespace

GaugeTable::GaugeTable(const char* name) {
  setObjectName(QString::fromLatin1(name));
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setHeaderLabels({tr("ID"), tr("Instrument"), tr("Function"), tr("Second Function"), tr("1st #"),
                   tr("2nd #"), tr("Model"), tr("Version"), tr("State")});
  header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  setToolTip(tr("A click or Enter opens the gauge's dialog; Ctrl+C copies the chosen lines"));
}

void GaugeTable::Fill(const ConfigModel& model) {
  QStringList lines;
  for (const std::string& line : GaugeLines(model)) lines << ToText(line);
  if (lines == lines_ && topLevelItemCount() == lines.size()) return;
  const QString chosen = currentItem() == nullptr ? QString() : currentItem()->text(0);
  lines_ = lines;
  clear();
  for (const QString& line : lines) {
    auto* item = new QTreeWidgetItem(line.split('\t'));
    const auto state = model.GaugeState[static_cast<std::size_t>(item->text(0).toInt())];
    item->setData(kStateColumn, Qt::UserRole, static_cast<int>(state));
    addTopLevelItem(item);
    if (item->text(0) == chosen) setCurrentItem(item);
  }
  ColourStates();
}

void GaugeTable::ColourStates() {
  const look::Colours& colours = look::CurrentColours();
  for (int row = 0; row < topLevelItemCount(); ++row) {
    QTreeWidgetItem* item = topLevelItem(row);
    const auto state = static_cast<GaugeConnection>(item->data(kStateColumn, Qt::UserRole).toInt());
    item->setForeground(kStateColumn, state == GaugeConnection::Connected      ? colours.good
                                      : state == GaugeConnection::NotConnected ? colours.trouble
                                                                               : colours.text);
  }
}

void GaugeTable::changeEvent(QEvent* event) {
  QTreeWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ColourStates();  // night and day colours
}

void GaugeTable::Open(const QTreeWidgetItem* item) {
  if (item != nullptr && opened_) opened_(item->text(0).toInt());
}

void GaugeTable::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) {
    CopyChosen();
  } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    Open(currentItem());
  } else {
    QTreeWidget::keyPressEvent(event);
  }
}

// A click that adds to the chosen lines, with Ctrl or Shift, opens no gauge.
void GaugeTable::mouseReleaseEvent(QMouseEvent* event) {
  QTreeWidget::mouseReleaseEvent(event);
  const bool plain = event->modifiers() == Qt::NoModifier && event->button() == Qt::LeftButton;
  if (plain && selectedItems().size() == 1) Open(itemAt(event->position().toPoint()));
}

void GaugeTable::CopyChosen() {
  QStringList chosen;
  for (int row = 0; row < topLevelItemCount(); ++row) {
    if (topLevelItem(row)->isSelected()) chosen << lines_[row];
  }
  if (!chosen.isEmpty()) QApplication::clipboard()->setText(chosen.join('\n'));
}

}  // namespace tvx
