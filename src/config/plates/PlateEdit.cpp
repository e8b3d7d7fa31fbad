#include "config/plates/PlateEdit.h"

#include <algorithm>

#include "base/NumberFormat.h"
#include "base/Rounding.h"
#include "config/ValueText.h"

namespace tvx {
namespace {

constexpr std::size_t kLowestEntry = 2;
constexpr std::size_t kHighestEntry = 3;
constexpr std::size_t kFirstEntry = 4;
constexpr std::string_view kMinimumMissing = "Minimum value missing; Please correct";
constexpr std::string_view kEqual = "Minimum and maximum values are equal; Please correct.";

std::int16_t PositionOf(const std::string& text) {
  return RoundTo<std::int16_t>(BoxNumber(text).value_or(0.0)).value_or(0);
}

template <typename T>
std::string TextOf(T value) {
  std::string text;
  AppendValue(text, value);
  return text;
}

std::string AtBox(std::size_t box, std::string_view fault) {
  return "At valuebox " + std::to_string(box) + ": " + std::string(fault);
}

// The entries between two used ones lie on the line that joins them.
void BridgeGap(PlateRecord& plate, std::size_t from, std::size_t to) {
  for (std::size_t k = from + 1; k < to; ++k) {
    const double part = static_cast<double>(k - from) / static_cast<double>(to - from);
    plate.Value[k] = plate.Value[from] + part * (plate.Value[to] - plate.Value[from]);
    const double position = plate.Position[from] + part * (plate.Position[to] - plate.Position[from]);
    plate.Position[k] = RoundTo<std::int16_t>(position).value_or(0);
  }
}

}  // namespace

std::optional<double> BoxNumber(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return ParseReal<double>(text);
}

std::size_t LastUsedBox(const PlateBoxes& boxes) {
  std::size_t last = 0;
  for (std::size_t box = 1; box < PlateBoxes::kBoxes; ++box) {
    if (BoxNumber(boxes.value[box])) last = box;
  }
  return last;
}

PlateBoxes BoxesOfPlate(const PlateRecord& plate) {
  PlateBoxes boxes;
  const double highest = plate.Value[kHighestEntry];
  if (!(plate.Value[kLowestEntry] < highest)) return boxes;
  double previous = 0;
  for (std::size_t box = 0; box < PlateBoxes::kBoxes; ++box) {
    const double value = plate.Value[box + kFirstEntry];
    // The values of used entries rise; an entry whose value does not is unused.
    if (box > 0 && !(value > previous)) continue;
    boxes.value[box] = TextOf(value);
    boxes.needle[box] = TextOf(plate.Position[box + kFirstEntry]);
    previous = value;
    if (box > 0 && value >= highest) break;
  }
  return boxes;
}

PlateRecord PlateOfBoxes(const PlateBoxes& boxes, const std::string& name) {
  PlateRecord plate;
  plate.Name = name;
  std::optional<std::size_t> previous;
  for (std::size_t box = 0; box < PlateBoxes::kBoxes; ++box) {
    const auto value = BoxNumber(boxes.value[box]);
    if (!value) continue;
    const std::size_t entry = box + kFirstEntry;
    plate.Value[entry] = *value;
    plate.Position[entry] = PositionOf(boxes.needle[box]);
    if (previous) BridgeGap(plate, *previous, entry);
    previous = entry;
  }
  plate.Value[kLowestEntry] = plate.Value[kFirstEntry];
  plate.Position[kLowestEntry] = plate.Position[kFirstEntry];
  const std::size_t last = LastUsedBox(boxes) + kFirstEntry;
  plate.Value[kHighestEntry] = plate.Value[last];
  plate.Position[kHighestEntry] = plate.Position[last];
  return plate;
}

PlateVerdict CheckPlateBoxes(const PlateBoxes& boxes) {
  const auto minimum = BoxNumber(boxes.value[0]);
  if (!minimum) return {false, std::string(kMinimumMissing)};
  double previous = *minimum;
  for (std::size_t box = 1; box < PlateBoxes::kBoxes; ++box) {
    if (boxes.value[box].empty()) continue;
    const auto value = BoxNumber(boxes.value[box]);
    if (!value || *value <= previous) {
      return {false, AtBox(box, "value lower than or equal to previous; Please correct.")};
    }
    previous = *value;
    if (boxes.needle[box].empty()) return {false, AtBox(box, "Needle position is empty; Please correct.")};
  }
  if (previous == *minimum) return {false, std::string(kEqual)};
  return {true, "Plate verified and no errors found"};
}

PlateVerdict FillLinear(PlateBoxes& boxes) {
  const auto minimum = BoxNumber(boxes.value[0]);
  if (!minimum) return {false, std::string(kMinimumMissing)};
  const std::size_t last = LastUsedBox(boxes);
  const double maximum = last == 0 ? *minimum : *BoxNumber(boxes.value[last]);
  if (maximum == *minimum) return {false, std::string(kEqual)};
  for (std::size_t box = 1; box < last; ++box) {
    const double part = static_cast<double>(box) / static_cast<double>(last);
    boxes.value[box] = FormatNumberText(*minimum + part * (maximum - *minimum), "#####0.0#");
  }
  return {true, {}};
}

bool PlateNameUsable(std::string_view name) {
  const bool something = name.find_first_not_of(' ') != std::string_view::npos;
  return something && std::none_of(name.begin(), name.end(),
                                   [](char c) { return c == '"' || static_cast<unsigned char>(c) < 0x20; });
}

}  // namespace tvx
