#include "simlink/overview/forms/PortLines.h"

#include <vector>

#include "ui/Look.h"
#include "ui/Widgets.h"

namespace tvx {

int PortLines::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(overview_.Lines());
}

int PortLines::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(kPortColumns);
}

QVariant PortLines::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const auto line = static_cast<std::size_t>(index.row());
  const auto column = static_cast<PortColumn>(index.column());
  if (role == Qt::DisplayRole) return ToText(overview_.Cell(line, column));
  if (role == Qt::TextAlignmentRole && PortOverview::IsNumber(column)) {
    return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
  }
  if (role == Qt::ForegroundRole && column == PortColumn::Age && overview_.IsLate(line)) {
    return look::CurrentColours().trouble;
  }
  if (role == Qt::ToolTipRole && column == PortColumn::Source) return ToText(overview_.Cell(line, column));
  return {};
}

QVariant PortLines::headerData(int section, Qt::Orientation orientation, int role) const {
  const auto column = static_cast<PortColumn>(section);
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::DisplayRole) return ToText(PortOverview::Heading(column));
  if (role == Qt::TextAlignmentRole) {
    const Qt::Alignment side = PortOverview::IsNumber(column) ? Qt::AlignRight : Qt::AlignLeft;
    return static_cast<int>(side | Qt::AlignVCenter);
  }
  if (role != Qt::ToolTipRole) return {};
  switch (column) {
    case PortColumn::Raw:
      return tr("As X-Plane sends it");
    case PortColumn::Value:
      return tr("Scaled by the Function, as the instruments get it");
    case PortColumn::Age:
      return tr("Since the value came last; red where it is awaited and older than 5 s");
    case PortColumn::Rate:
      return tr("Values that come in a second");
    case PortColumn::Lost:
      return tr("Values that were missing in the usual rhythm");
    default:
      return tr("A click sorts by this column");
  }
}

// A view keeps what it marks by lines: they are led to where their ports have gone.
template <typename Change>
void PortLines::Rearrange(Change change) {
  std::vector<int> shown;
  for (std::size_t line = 0; line < overview_.Lines(); ++line) shown.push_back(overview_.PortOf(line));
  emit layoutAboutToBeChanged();
  change();
  const QModelIndexList before = persistentIndexList();
  QModelIndexList after;
  for (const QModelIndex& mark : before) {
    const int line = overview_.LineOf(shown[static_cast<std::size_t>(mark.row())]);
    after << (line < 0 ? QModelIndex() : index(line, mark.column()));
  }
  changePersistentIndexList(before, after);
  emit layoutChanged();
}

void PortLines::Refresh() {
  Rearrange([this] { overview_.Refresh(); });
}

void PortLines::Search(const QString& words) {
  Rearrange([&] { overview_.Search(words.toStdString()); });
}

void PortLines::sort(int column, Qt::SortOrder order) {
  if (column < 0) return;
  Rearrange([&] { overview_.SortBy(static_cast<PortColumn>(column), order == Qt::DescendingOrder); });
}

}  // namespace tvx
