#include "config/setup/forms/GaugeTable.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <algorithm>

#include "config/FunctionItems.h"
#include "config/setup/GaugeList.h"
#include "ui/Look.h"
#include "ui/Widgets.h"
#include "ui/search/SearchCombo.h"

namespace tvx {
namespace {

// The first columns are those of the copied line.
enum Column {
  kID,
  kKind,
  kFunction,
  kSecondFunction,
  kStateColumn = 8,
  kPlate,
  kSecondPlate,
  kWork,
  kColumns
};

// Where Work and the Plates stand to be seen: beside what they are about.
constexpr int kPlaceOfWork = 4;

}  // namespace

// A list to choose from in the cell of a Function or a Plate.
class GaugeTable::Delegate final : public QStyledItemDelegate {
 public:
  explicit Delegate(GaugeTable& table) : QStyledItemDelegate(&table), table_(table) {}

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                        const QModelIndex& index) const override {
    const int id = index.siblingAtColumn(kID).data().toInt();
    const bool plate = index.column() == kPlate || index.column() == kSecondPlate;
    const int needle = index.column() == kFunction || index.column() == kPlate ? 1 : 2;
    auto* combo = new SearchCombo("ComboInRow", tr("Type a part of its number or name"));
    combo->setParent(parent);
    combo->setAutoFillBackground(true);
    const GaugeRecord& gauge = table_.model_.Gauges[static_cast<std::size_t>(id)];
    combo->SetItems(plate ? PlateItems(table_.model_) : FunctionItems(table_.model_));
    if (plate) combo->SetValue(needle == 2 ? gauge.GaugeSetting4 : gauge.GaugeSetting3);
    if (!plate) combo->SetValue(needle == 2 ? gauge.GaugeFunction2 : gauge.GaugeFunction1);
    combo->SetPicked([this, combo, id, needle, plate](int value) {
      emit const_cast<Delegate*>(this)->closeEditor(combo);
      // The rows, and the list in them, are made anew by what follows.
      QMetaObject::invokeMethod(
          &table_,
          [table = &table_, edit = Edit{id, needle, plate, value}] {
            if (table->edited_) table->edited_(edit);
          },
          Qt::QueuedConnection);
    });
    return combo;
  }
  void setEditorData(QWidget*, const QModelIndex&) const override {}
  void setModelData(QWidget*, QAbstractItemModel*, const QModelIndex&) const override {}

 private:
  GaugeTable& table_;
};

GaugeTable::GaugeTable(const char* name, const ConfigModel& model, const GaugeAdvice& advice)
    : model_(model), advice_(advice) {
  setObjectName(QString::fromLatin1(name));
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setItemDelegate(new Delegate(*this));
  setHeaderLabels({tr("ID"), tr("Instrument"), tr("Function"), tr("Second Function"), tr("1st #"),
                   tr("2nd #"), tr("Model"), tr("Version"), tr("State"), tr("Plate"), tr("Second Plate"),
                   tr("To do")});
  header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  for (const int column : {kWork, kSecondPlate, kPlate})
    header()->moveSection(header()->visualIndex(column), kPlaceOfWork);
  setToolTip(
      tr("A click or Enter opens the gauge's dialog; a click on the box, or Space, ticks it for what is "
         "done to several at once. F2 or the right button edits the Function or Plate under it; Ctrl+C "
         "copies the chosen lines"));
  connect(this, &QTreeWidget::itemChanged, this, [this] {
    if (ticked_) ticked_();
  });
}

// What the list says beyond the line: "its own values" where nothing has to be assigned.
QStringList GaugeTable::RowOf(const QString& line) const {
  QStringList row = line.split('\t');
  const int id = row[kID].toInt();
  const GaugeRecord& gauge = model_.Gauges[static_cast<std::size_t>(id)];
  const QString work = ToText(advice_.WorkWords(id));
  if (!advice_.NeedsWork(id) && gauge.GaugeFunction1 == 0 && gauge.GaugeFunction2 == 0 && !work.isEmpty())
    row[kFunction] = work;
  const auto plate = [&](int needle, int number) {
    const PlateRecord* record = advice_.NeedlesOf(id) < needle ? nullptr : model_.PlateOf(number);
    return record == nullptr ? QString() : ToText(FormatNumberText(number, "000") + "  " + record->Name);
  };
  row << plate(1, gauge.GaugeSetting3) << plate(2, gauge.GaugeSetting4)
      << (advice_.NeedsWork(id) ? work : QString());
  return row;
}

void GaugeTable::Fill() {
  QStringList lines;
  QList<QStringList> rows;
  for (const std::string& line : GaugeLines(model_)) {
    lines << ToText(line);
    rows << RowOf(lines.back());
  }
  lines_ = lines;
  if (rows == rows_ && topLevelItemCount() == rows.size()) return;
  rows_ = rows;
  const int chosen = Current();
  const std::vector<int> ticked = Ticked();
  {
    const QSignalBlocker quiet(this);
    clear();
    for (const QStringList& row : rows) {
      auto* item = new QTreeWidgetItem(row);
      const int id = row[kID].toInt();
      const auto state = model_.GaugeState[static_cast<std::size_t>(id)];
      item->setData(kStateColumn, Qt::UserRole, static_cast<int>(state));
      item->setFlags(item->flags() | Qt::ItemIsUserCheckable | Qt::ItemIsEditable);
      const bool was = std::find(ticked.begin(), ticked.end(), id) != ticked.end();
      item->setCheckState(kID, was ? Qt::Checked : Qt::Unchecked);
      addTopLevelItem(item);
    }
    Choose(chosen);
    ColourStates();
  }
  if (ticked_) ticked_();
}

std::vector<int> GaugeTable::Ticked() const {
  std::vector<int> ids;
  for (int row = 0; row < topLevelItemCount(); ++row) {
    if (topLevelItem(row)->checkState(kID) == Qt::Checked)
      ids.push_back(topLevelItem(row)->text(kID).toInt());
  }
  return ids;
}

int GaugeTable::Current() const {
  return currentItem() == nullptr ? -1 : currentItem()->text(kID).toInt();
}

void GaugeTable::Choose(int gaugeID) {
  for (int row = 0; row < topLevelItemCount(); ++row) {
    if (topLevelItem(row)->text(kID).toInt() == gaugeID) setCurrentItem(topLevelItem(row));
  }
}

void GaugeTable::ColourStates() {
  const QSignalBlocker quiet(this);
  const look::Colours& colours = look::CurrentColours();
  for (int row = 0; row < topLevelItemCount(); ++row) {
    QTreeWidgetItem* item = topLevelItem(row);
    const auto state = static_cast<GaugeConnection>(item->data(kStateColumn, Qt::UserRole).toInt());
    item->setForeground(kStateColumn, state == GaugeConnection::Connected      ? colours.good
                                      : state == GaugeConnection::NotConnected ? colours.trouble
                                                                               : colours.text);
    item->setForeground(kWork, colours.trouble);
  }
}

void GaugeTable::changeEvent(QEvent* event) {
  QTreeWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ColourStates();  // night and day colours
}

void GaugeTable::Open(const QTreeWidgetItem* item) {
  if (item != nullptr && opened_) opened_(item->text(kID).toInt());
}

// Only where the gauge has a Function or a Plate of that kind.
void GaugeTable::EditCell(const QModelIndex& index) {
  if (!index.isValid()) return;
  const int id = index.siblingAtColumn(kID).data().toInt(), column = index.column();
  const bool may = (column == kFunction && advice_.HasFunction(id, 1)) ||
                   (column == kSecondFunction && advice_.HasFunction(id, 2)) ||
                   (column == kPlate && advice_.NeedlesOf(id) >= 1) ||
                   (column == kSecondPlate && advice_.NeedlesOf(id) >= 2);
  if (may) edit(index);
}

void GaugeTable::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) {
    CopyChosen();
  } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    Open(currentItem());
  } else if (event->key() == Qt::Key_F2) {
    const bool cell = currentColumn() == kSecondFunction || currentColumn() >= kPlate;
    EditCell(currentIndex().siblingAtColumn(cell ? currentColumn() : kFunction));
  } else {
    QTreeWidget::keyPressEvent(event);
  }
}

// A click that adds to the chosen lines, with Ctrl or Shift, opens no gauge; nor does one that ticks it.
void GaugeTable::mouseReleaseEvent(QMouseEvent* event) {
  const std::vector<int> before = Ticked();
  QTreeWidget::mouseReleaseEvent(event);
  const bool plain = event->modifiers() == Qt::NoModifier && event->button() == Qt::LeftButton;
  if (plain && selectedItems().size() == 1 && Ticked() == before) Open(itemAt(event->position().toPoint()));
}

void GaugeTable::contextMenuEvent(QContextMenuEvent* event) {
  EditCell(indexAt(viewport()->mapFromGlobal(event->globalPos())));
}

void GaugeTable::CopyChosen() {
  QStringList chosen;
  for (int row = 0; row < topLevelItemCount(); ++row) {
    if (topLevelItem(row)->isSelected()) chosen << lines_[row];
  }
  if (!chosen.isEmpty()) QApplication::clipboard()->setText(chosen.join('\n'));
}

}  // namespace tvx
