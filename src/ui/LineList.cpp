#include "ui/LineList.h"

#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>

namespace tvx {

QVariant LineModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  return text_(static_cast<std::size_t>(index.row()));
}

LineList::LineList(const char* name, LineModel::Count count, LineModel::Text text)
    : lines_(new LineModel(std::move(count), std::move(text), this)) {
  setObjectName(QString::fromLatin1(name));
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setPixelSize(QApplication::font().pixelSize() * 9 / 10);
  setFont(fixed);
  setUniformItemSizes(true);
  setEditTriggers(NoEditTriggers);
  setSelectionMode(ExtendedSelection);
  setTextElideMode(Qt::ElideNone);
  setTabKeyNavigation(false);
  setModel(lines_);
}

void LineList::SetRow(int row) {
  const QModelIndex index = lines_->index(row);
  setCurrentIndex(index);
  if (index.isValid()) scrollTo(index);
}

void LineList::Refresh(bool followEnd) {
  const bool atEnd = verticalScrollBar()->value() == verticalScrollBar()->maximum();
  const int row = Row();
  const int top = verticalScrollBar()->value();
  lines_->Refresh();
  if (followEnd && atEnd) {
    scrollToBottom();
    return;
  }
  if (row >= 0) setCurrentIndex(lines_->index(std::min(row, lines_->rowCount() - 1)));
  verticalScrollBar()->setValue(top);
}

void LineList::keyPressEvent(QKeyEvent* event) {
  if (!event->matches(QKeySequence::Copy)) {
    QListView::keyPressEvent(event);
    return;
  }
  QModelIndexList chosen = selectionModel()->selectedRows();
  std::sort(chosen.begin(), chosen.end());
  QStringList texts;
  for (const QModelIndex& index : chosen) texts.append(index.data().toString());
  QApplication::clipboard()->setText(texts.join('\n'));
}

}  // namespace tvx
