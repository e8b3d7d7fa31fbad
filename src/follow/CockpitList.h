// The cockpit on one page: every gauge, channel, input and lamp in use, with what it shows and how it stands.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "follow/Follower.h"

namespace tvx {

enum class CockpitColumn { Name, Value, Needle, LastAnswer, State };
inline constexpr std::size_t kCockpitColumns = 5;

class CockpitList {
 public:
  explicit CockpitList(const Follower& follower) : follower_(follower) {}

  static std::string_view Heading(CockpitColumn column);
  // Follows everything that is in use anew.
  void Refresh();
  // Leaves the lines of which some text holds every word, large and small letters being the same.
  void Search(std::string_view words);

  // Those in trouble first, and otherwise in the order of Follower::InUse.
  std::size_t Lines() const { return shown_.size(); }
  std::size_t All() const { return rows_.size(); }
  std::size_t Troubles() const;  // of all
  const std::string& Cell(std::size_t line, CockpitColumn column) const;
  const Subject& SubjectOf(std::size_t line) const { return rows_[shown_[line]].subject; }
  bool InTrouble(std::size_t line) const { return rows_[shown_[line]].trouble; }
  // The headings and these lines, or all where there are none; tabs between the columns.
  std::string Text(std::span<const std::size_t> lines) const;

 private:
  struct Row {
    Subject subject;
    bool trouble = false;
    std::array<std::string, kCockpitColumns> texts;
    std::string searched;  // in small letters
  };
  void Arrange();

  const Follower& follower_;
  std::vector<Row> rows_;
  std::vector<std::size_t> shown_;  // their places, in the order in which they are shown
  std::vector<std::string> words_;
};

}  // namespace tvx
