#include "follow/CockpitList.h"

#include <algorithm>

#include "base/SearchWords.h"

namespace tvx {

std::string_view CockpitList::Heading(CockpitColumn column) {
  static constexpr std::array<std::string_view, kCockpitColumns> kHeadings{"Name", "Value", "Needle",
                                                                           "Last answer", "State"};
  return kHeadings[static_cast<std::size_t>(column)];
}

void CockpitList::Refresh() {
  rows_.clear();
  for (const Subject& subject : follower_.InUse()) {
    Road road = follower_.Follow(subject);
    Row& row = rows_.emplace_back();
    row.subject = subject;
    row.trouble = road.Trouble;
    row.texts = {std::move(road.Title), std::move(road.Value), std::move(road.Needle),
                 std::move(road.LastAnswer), std::move(road.Diagnosis)};
    for (const std::string& text : row.texts) row.searched += SmallLetters(text) + '\n';
  }
  Arrange();
}

void CockpitList::Search(std::string_view words) {
  words_ = SearchWords(words);
  Arrange();
}

void CockpitList::Arrange() {
  shown_.clear();
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    if (HoldsEvery(words_, rows_[i].searched)) shown_.push_back(i);
  }
  std::stable_partition(shown_.begin(), shown_.end(), [this](std::size_t i) { return rows_[i].trouble; });
}

std::size_t CockpitList::Troubles() const {
  return static_cast<std::size_t>(std::ranges::count_if(rows_, &Row::trouble));
}

const std::string& CockpitList::Cell(std::size_t line, CockpitColumn column) const {
  return rows_[shown_[line]].texts[static_cast<std::size_t>(column)];
}

std::string CockpitList::Text(std::span<const std::size_t> lines) const {
  std::string text;
  const auto end = [](std::size_t column) { return column + 1 < kCockpitColumns ? '\t' : '\n'; };
  for (std::size_t c = 0; c < kCockpitColumns; ++c) {
    text += std::string(Heading(static_cast<CockpitColumn>(c))) + end(c);
  }
  const auto add = [&](std::size_t line) {
    for (std::size_t c = 0; c < kCockpitColumns; ++c)
      text += Cell(line, static_cast<CockpitColumn>(c)) + end(c);
  };
  for (const std::size_t line : lines) add(line);
  for (std::size_t line = 0; lines.empty() && line < Lines(); ++line) add(line);
  return text;
}

}  // namespace tvx
