// The list of the simulator ports in use with their values, as they were when it was refreshed last:
// searched, sorted, and as text to be copied.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "simlink/SimCom.h"

namespace tvx {

// Raw: as the simulator sends it. Value: scaled by the Function.
enum class PortColumn { Nr, UsedBy, Function, DataType, Name, Raw, Value, Age, Rate, Lost, Source };
inline constexpr std::size_t kPortColumns = 11;

class PortOverview {
 public:
  // A value that is older is late.
  static constexpr std::int64_t kLateMs = 5000;

  PortOverview(const ConfigModel& model, const SimCom& sim) : model_(model), sim_(sim) {}

  static std::string_view Heading(PortColumn column);
  // Numbers, which stand to the right and are sorted as numbers.
  static bool IsNumber(PortColumn column);

  // Each of these leaves the lines as they are to be shown now. The first takes the ports anew.
  void Refresh();
  // Leaves the ports of which some text holds every word, large and small letters being the same.
  void Search(std::string_view words);
  // Ports that are alike stand in the order of their numbers.
  void SortBy(PortColumn column, bool descending);

  std::size_t Lines() const { return shown_.size(); }
  std::size_t Ports() const { return rows_.size(); }
  const std::string& Cell(std::size_t line, PortColumn column) const;
  int PortOf(std::size_t line) const { return rows_[shown_[line]].port; }
  // Where the port is shown; -1: nowhere.
  int LineOf(int port) const;
  // It is waited for, and has not come for kLateMs, or never.
  bool IsLate(std::size_t line) const { return rows_[shown_[line]].late; }
  // The headings and these lines, or all where there are none; tabs between the columns.
  std::string Text(std::span<const std::size_t> lines) const;

 private:
  struct Row {
    int port = 0;
    bool late = false;
    std::array<std::string, kPortColumns> texts;
    std::array<double, kPortColumns> numbers{};
    std::string searched;  // in small letters
    std::string& Text(PortColumn column) { return texts[static_cast<std::size_t>(column)]; }
    double& Number(PortColumn column) { return numbers[static_cast<std::size_t>(column)]; }
  };
  Row RowOf(int port) const;
  void FillValues(Row& row, bool macro) const;
  void FillTraffic(Row& row, bool awaited) const;
  void Arrange();

  const ConfigModel& model_;
  const SimCom& sim_;
  std::vector<Row> rows_;           // by port
  std::vector<std::size_t> shown_;  // their places, in the order in which they are shown
  std::vector<std::string> words_;
  PortColumn column_ = PortColumn::Nr;
  bool descending_ = false;
};

}  // namespace tvx
