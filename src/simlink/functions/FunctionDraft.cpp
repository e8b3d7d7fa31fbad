#include "simlink/functions/FunctionDraft.h"

#include <algorithm>
#include <limits>
#include <type_traits>

#include "config/ValueText.h"
#include "simlink/PortValue.h"
#include "simlink/datagrams/Packets.h"
#include "simlink/references/FunctionEntries.h"

namespace tvx {
namespace {

constexpr int kLastGroup = 150;
constexpr Byte kSequences = 4;

// The names of the fields, in the record's order.
std::array<std::string_view, FunctionDraft::kFields> FieldNames() {
  std::array<std::string_view, FunctionDraft::kFields> names{};
  std::size_t at = 0;
  const FunctionRecord record;
  FunctionRecord::Fields(record, [&](std::string_view name, const auto&) { names.at(at++) = name; });
  return names;
}

std::size_t IndexOf(std::string_view field) {
  static const auto names = FieldNames();
  return static_cast<std::size_t>(std::find(names.begin(), names.end(), field) - names.begin());
}

struct Range {
  int lowest, highest;
};

// The range of a field that is a whole number. A field that is not listed takes what its type holds.
Range RangeOf(std::string_view field, Byte dataType, Range ofType) {
  if (field == "FuncType") return {0, static_cast<int>(kSignalTypes.size()) - 1};
  if (field == "ComboClass") return {0, 11};
  if (field == "FunctionSetting") return {0, 99};
  if (!ReadsDataGroup(dataType)) return ofType;
  if (field.starts_with("XPindex")) return {0, kLastGroup};
  if (field.starts_with("XPVal")) return {0, kDataValuesPerGroup - 1};
  return ofType;
}

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

// Reads draft texts into a record's fields; remembers the first that does not fit.
class Storer {
 public:
  Storer(const FunctionDraft& draft, Byte dataType) : draft_(draft), dataType_(dataType) {}

  void operator()(std::string_view field, std::string& value) {
    value.clear();
    for (const char c : draft_.At(field)) {
      if (c == '\r' || c == '\0') continue;
      if (c == '\n') value += '\r';
      value += c == '"' ? '\'' : c;
    }
  }
  void operator()(std::string_view field, float& value) {
    const auto number = TypedReal<float>(draft_.At(field));
    if (!number) return Fail(field, std::string(kRealNumberWords));
    value = *number;
  }
  template <typename Whole>
  void operator()(std::string_view field, Whole& value) {
    static_assert(std::is_same_v<Whole, Byte> || std::is_same_v<Whole, std::int16_t>);
    using Limits = std::numeric_limits<Whole>;
    const Range range = RangeOf(field, dataType_, {Limits::min(), Limits::max()});
    const auto number = TypedWhole(draft_.At(field), range.lowest, range.highest);
    if (!number) {
      return Fail(field, WholeNumberWords(range.lowest, range.highest));
    }
    value = static_cast<Whole>(*number);
  }

  std::optional<FunctionProblem> problem;

 private:
  void Fail(std::string_view field, std::string words) {
    if (!problem) problem = FunctionProblem{field, functiontext::kIncorrectData, std::move(words)};
  }

  const FunctionDraft& draft_;
  Byte dataType_;
};

std::string AdviceOnDatarefs(const FunctionRecord& function) {
  bool any = false;
  for (Byte n = 1; n <= kSequences; ++n) {
    const bool line = CutEntry(function.FullName, n).has_value();
    const bool read = function.SlotOf(n).value > 0;
    const std::string number = std::to_string(n);
    any = any || line;
    if (read && !line)
      return "Source #" + number + " is read, but the description has no line #" + number + ":";
    if (line && !read) return "Source #" + number + " is written only: its times per second are 0.";
  }
  return any ? std::string() : "No data reference yet: choose one in the list and copy it.";
}

// Whether such a Function, where the program writes it, leaves as a 32-bit integer in a data group. A
// dedicated gauge's knobs may write its Functions.
bool WritesInteger(const FunctionRecord& function) {
  const auto use = static_cast<FunctionUse>(function.FuncType);
  const bool written = use == FunctionUse::InputSwitch || use == FunctionUse::InputAnalogue ||
                       use == FunctionUse::SwitchAndLed || use == FunctionUse::DedicatedGauge;
  return written && (function.Is(DataType::ByteType) || function.Is(DataType::Integer) ||
                     function.Is(DataType::UnsignedInt) || function.Is(DataType::BcdCode));
}

}  // namespace

std::string& FunctionDraft::At(std::string_view field) {
  return texts.at(IndexOf(field));
}
const std::string& FunctionDraft::At(std::string_view field) const {
  return texts.at(IndexOf(field));
}

FunctionDraft DraftOf(const FunctionRecord& function) {
  FunctionDraft draft;
  FunctionRecord shown = function;
  if (shown.ShortName.empty() && shown.Multiplier == 0 && shown.Devider == 0) {
    shown.Multiplier = shown.Devider = 1;
  }
  FunctionRecord::Fields(shown, [&draft](std::string_view name, const auto& value) {
    std::string& text = draft.At(name);
    if constexpr (std::is_same_v<std::decay_t<decltype(value)>, std::string>) {
      text = value;
      std::erase(text, '\r');
    } else {
      AppendValue(text, value);
    }
  });
  return draft;
}

std::optional<FunctionProblem> StoreDraft(const FunctionDraft& draft, FunctionRecord& function) {
  if (Trimmed(draft.At("ShortName")).empty()) {
    return FunctionProblem{"ShortName", functiontext::kNoShortName, "a short name, shown in the gauge list"};
  }
  const auto dataType = ParseInteger<Byte>(Trimmed(draft.At("ComboDT")));
  Storer storer(draft, dataType.value_or(0));
  FunctionRecord::Fields(function, storer);
  const bool needsLines = EntryLimit(function.ComboDT) > 0;
  if (needsLines && !function.FullName.empty() && function.FullName.back() != '\n') {
    function.FullName += "\r\n";
  }
  return storer.problem;
}

std::string AdviceOn(const FunctionRecord& function) {
  if (const int limit = EntryLimit(function.ComboDT); limit > 0) {
    std::string problem = EntryProblem(function.FullName, limit);
    if (!problem.empty()) return problem;
  }
  if (function.boxMinimumValue > function.boxMaximumValue) {
    return "The lowest value is above the highest.";
  }
  if (function.Is(DataType::XplaneDataref)) {
    std::string advice = AdviceOnDatarefs(function);
    if (!advice.empty()) return advice;
  }
  if (function.Is(DataType::XplaneCmnd)) {
    const bool any = NextEntryNumber(function.FullName) > 1;
    return any ? std::string() : "No command yet: choose one in the list and copy it.";
  }
  if (function.IsMacro() || function.ComboDT >= kDataTypeNames.size() - 1) return {};
  if (function.Devider == 0) return "Dividing by 0: the value will never be right.";
  if (function.Multiplier == 0) return "Multiplying by 0: the value will always be 0.";
  if (WritesInteger(function)) {
    return "Where it is written, it leaves as an integer, high byte first: X-Plane itself takes data groups "
           "as "
           "floats. Choose Float or Xplane Dataref to set a value in X-Plane.";
  }
  return {};
}

}  // namespace tvx
