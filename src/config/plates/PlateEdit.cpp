#include "config/plates/PlateEdit.h"

#include <algorithm>
#include <utility>

#include "base/NumberFormat.h"
#include "base/Rounding.h"
#include "config/ValueText.h"
#include "config/plates/PlateLookup.h"

namespace tvx {
namespace {

constexpr std::size_t kLowestEntry = 2;
constexpr std::size_t kHighestEntry = 3;
constexpr std::size_t kFirstEntry = 4;
constexpr std::string_view kMinimumMissing = "Minimum value missing; Please correct";
constexpr std::string_view kEqual = "Minimum and maximum values are equal; Please correct.";

template <typename T>
std::string TextOf(T value) {
  std::string text;
  AppendValue(text, value);
  return text;
}

bool IsEmpty(std::string_view text) {
  return text.find_first_not_of(" \t") == std::string_view::npos;
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
  return TypedReal<double>(text);
}

std::optional<std::int16_t> NeedleInBox(std::string_view text) {
  const auto number = TypedReal<double>(text);
  const auto position = number ? RoundTo<std::int16_t>(*number) : std::nullopt;
  return position && *position >= 0 && *position < kNeedlePositions ? position : std::nullopt;
}

std::size_t LastUsedBox(const PlateBoxes& boxes) {
  std::size_t last = 0;
  for (std::size_t box = 1; box < PlateBoxes::kBoxes; ++box) {
    if (BoxNumber(boxes.value[box])) last = box;
  }
  return last;
}

PlateBoxes BoxesOfPlate(const PlateRecord& plate) {
  const auto same = [&plate](std::size_t entry, double value, int position) {
    return plate.Value[entry] == value && plate.Position[entry] == position;
  };
  std::size_t end = PlateRecord::kStoredPoints;
  while (end > kFirstEntry && same(end - 1, 0, 0)) --end;
  // The highest point may be a 0 at position 0 itself.
  const bool endsAtZero = same(kHighestEntry, 0, 0) && !same(kLowestEntry, 0, 0);
  if (endsAtZero && end < PlateRecord::kStoredPoints) ++end;
  PlateBoxes boxes;
  for (std::size_t entry = kFirstEntry; entry < end; ++entry) {
    boxes.value[entry - kFirstEntry] = TextOf(plate.Value[entry]);
    boxes.needle[entry - kFirstEntry] = TextOf(plate.Position[entry]);
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
    plate.Position[entry] = NeedleInBox(boxes.needle[box]).value_or(0);
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

PlateBoxes FilledIn(const PlateBoxes& boxes) {
  const PlateRecord plate = PlateOfBoxes(boxes, {});
  PlateBoxes filled;
  const std::size_t last = LastUsedBox(boxes);
  if (last == 0 && !BoxNumber(boxes.value[0])) return filled;
  for (std::size_t box = 0; box <= last; ++box) {
    if (!IsEmpty(boxes.value[box]) && !BoxNumber(boxes.value[box])) continue;
    const bool between = IsEmpty(boxes.value[box]);
    if (between) filled.value[box] = TextOf(plate.Value[box + kFirstEntry]);
    if (between || IsEmpty(boxes.needle[box])) filled.needle[box] = TextOf(plate.Position[box + kFirstEntry]);
  }
  return filled;
}

std::string UnusableBox(const PlateBoxes& boxes) {
  for (std::size_t box = 0; box < PlateBoxes::kBoxes; ++box) {
    if (!IsEmpty(boxes.value[box]) && !BoxNumber(boxes.value[box])) {
      return AtBox(box, "value is no number; Please correct.");
    }
    if (!IsEmpty(boxes.needle[box]) && !NeedleInBox(boxes.needle[box])) {
      return AtBox(box, "Needle position must be 0 to 1079; Please correct.");
    }
  }
  return {};
}

PlateVerdict CheckPlateBoxes(const PlateBoxes& boxes) {
  const auto minimum = BoxNumber(boxes.value[0]);
  if (!minimum && IsEmpty(boxes.value[0])) return {false, std::string(kMinimumMissing)};
  if (std::string words = UnusableBox(boxes); !words.empty()) return {false, std::move(words)};
  double previous = *minimum;
  for (std::size_t box = 1; box < PlateBoxes::kBoxes; ++box) {
    const auto value = BoxNumber(boxes.value[box]);
    if (!value) continue;
    if (*value <= previous) {
      return {false, AtBox(box, "value lower than or equal to previous; Please correct.")};
    }
    previous = *value;
    if (IsEmpty(boxes.needle[box])) return {false, AtBox(box, "Needle position is empty; Please correct.")};
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
