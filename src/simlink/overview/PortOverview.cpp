#include "simlink/overview/PortOverview.h"

#include <algorithm>
#include <limits>

#include "base/NumberFormat.h"
#include "base/SearchWords.h"
#include "simlink/PortValue.h"
#include "simlink/overview/PortListing.h"

namespace tvx {
namespace {

// What has no number stands before all that have one.
constexpr double kNone = -std::numeric_limits<double>::infinity();
constexpr double kNever = std::numeric_limits<double>::infinity();
constexpr std::int64_t kMsPerSecond = 1000, kSecondsPerMinute = 60, kTenthsUpTo = 10;

// "0.3 s", "12 s", "5 min"
std::string AgeText(std::int64_t ms) {
  const std::int64_t seconds = ms / kMsPerSecond;
  if (seconds < kTenthsUpTo) {
    return FormatNumberText(static_cast<double>(ms) / static_cast<double>(kMsPerSecond), "0.0") + " s";
  }
  if (seconds < kSecondsPerMinute) return std::to_string(seconds) + " s";
  return std::to_string(seconds / kSecondsPerMinute) + " min";
}

}  // namespace

std::string_view PortOverview::Heading(PortColumn column) {
  static constexpr std::array<std::string_view, kPortColumns> kHeadings{
      "Port#", "Used by", "Func#",    "Datatype", "Func. Name", "Raw value",
      "Value", "Age",     "A second", "Lost",     "Source"};
  return kHeadings[static_cast<std::size_t>(column)];
}

bool PortOverview::IsNumber(PortColumn column) {
  switch (column) {
    case PortColumn::Nr:
    case PortColumn::Function:
    case PortColumn::Raw:
    case PortColumn::Value:
    case PortColumn::Age:
    case PortColumn::Rate:
    case PortColumn::Lost:
      return true;
    default:
      return false;
  }
}

void PortOverview::Refresh() {
  rows_.clear();
  rows_.reserve(static_cast<std::size_t>(sim_.PortCount()));
  for (int port = 0; port < sim_.PortCount(); ++port) rows_.push_back(RowOf(port));
  Arrange();
}

PortOverview::Row PortOverview::RowOf(int port) const {
  const PortRow& open = sim_.PortAt(port);
  const FunctionRecord& function = *model_.FunctionOf(open.FunctionNr);
  Row row;
  row.port = port;
  row.Text(PortColumn::Nr) = FormatNumberText(port, "000");
  row.Number(PortColumn::Nr) = port;
  row.Text(PortColumn::UsedBy) = opener::Text(open.OpenedBy);
  row.Text(PortColumn::Function) = FormatNumberText(open.FunctionNr, "000");
  row.Number(PortColumn::Function) = open.FunctionNr;
  row.Text(PortColumn::DataType) = DataTypeLabel(function.ComboDT);
  row.Text(PortColumn::Name) = function.ShortName;
  row.Text(PortColumn::Source) = SourceText(function, open.SeqNr);
  for (const std::string& text : row.texts) row.searched += SmallLetters(text) + '\n';
  row.searched += SmallLetters(UserText(model_, open));
  const bool asked = function.Is(DataType::XplaneDataref) ? function.SlotOf(open.SeqNr).value > 0
                                                          : ReadsDataGroup(function.ComboDT);
  const bool macro = function.IsMacro();
  FillTraffic(row, asked && open.ReadEnabled && !open.Blocked && !macro);
  FillValues(row, macro);
  return row;
}

// A macro's value does not come from the simulator; what has not come is no value.
void PortOverview::FillValues(Row& row, bool macro) const {
  const auto port = static_cast<Port>(row.port);
  const bool has = macro || sim_.HasArrived(port);
  float value = 0;
  const auto put = [&](PortColumn column, bool reads) {
    row.Number(column) = has && reads ? static_cast<double>(value) : kNone;
    row.Text(column) = has && reads ? ValueText(value) : std::string();
  };
  put(PortColumn::Raw, sim_.GetPortRaw(port, value));
  put(PortColumn::Value, sim_.GetPort(port, value));
}

void PortOverview::FillTraffic(Row& row, bool awaited) const {
  const auto port = static_cast<Port>(row.port);
  const PortTraffic& traffic = sim_.TrafficOf(port);
  const auto age = sim_.AgeMs(port);
  row.late = awaited && age.value_or(kLateMs + 1) > kLateMs;
  row.Number(PortColumn::Age) = age ? static_cast<double>(*age) : awaited ? kNever : kNone;
  row.Text(PortColumn::Age) = age ? AgeText(*age) : awaited ? "never" : "";
  const float rate = age ? traffic.Rate(traffic.CameMs() + *age) : 0.0f;
  row.Number(PortColumn::Rate) = age ? static_cast<double>(rate) : kNone;
  row.Text(PortColumn::Rate) = age ? FormatNumberText(static_cast<double>(rate), "0.0") : "";
  row.Number(PortColumn::Lost) = age ? static_cast<double>(traffic.Lost()) : kNone;
  row.Text(PortColumn::Lost) = age ? std::to_string(traffic.Lost()) : "";
}

void PortOverview::Search(std::string_view words) {
  words_ = SearchWords(words);
  Arrange();
}

void PortOverview::SortBy(PortColumn column, bool descending) {
  column_ = column;
  descending_ = descending;
  Arrange();
}

void PortOverview::Arrange() {
  shown_.clear();
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    if (HoldsEvery(words_, rows_[i].searched)) shown_.push_back(i);
  }
  const auto column = static_cast<std::size_t>(column_);
  const auto before = [&](const Row& a, const Row& b) {
    return IsNumber(column_) ? a.numbers[column] < b.numbers[column] : a.texts[column] < b.texts[column];
  };
  std::stable_sort(shown_.begin(), shown_.end(), [&](std::size_t a, std::size_t b) {
    return descending_ ? before(rows_[b], rows_[a]) : before(rows_[a], rows_[b]);
  });
}

const std::string& PortOverview::Cell(std::size_t line, PortColumn column) const {
  return rows_[shown_[line]].texts[static_cast<std::size_t>(column)];
}

int PortOverview::LineOf(int port) const {
  const auto found = std::find(shown_.begin(), shown_.end(), static_cast<std::size_t>(port));
  return port < 0 || found == shown_.end() ? -1 : static_cast<int>(found - shown_.begin());
}

std::string PortOverview::Text(std::span<const std::size_t> lines) const {
  std::string text;
  for (std::size_t c = 0; c < kPortColumns; ++c) {
    text += std::string(Heading(static_cast<PortColumn>(c))) + (c + 1 < kPortColumns ? '\t' : '\n');
  }
  const auto add = [&](std::size_t line) {
    for (std::size_t c = 0; c < kPortColumns; ++c) {
      const std::string& cell = Cell(line, static_cast<PortColumn>(c));
      text += cell.substr(0, cell.find_last_not_of(' ') + 1) + (c + 1 < kPortColumns ? '\t' : '\n');
    }
  };
  for (const std::size_t line : lines) add(line);
  for (std::size_t line = 0; lines.empty() && line < Lines(); ++line) add(line);
  return text;
}

}  // namespace tvx
