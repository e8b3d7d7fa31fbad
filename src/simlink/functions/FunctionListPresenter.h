// The list of all Functions without its window: its lines, filters, and the edits made in it.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "config/Model.h"
#include "platform/Host.h"

namespace tvx {

inline constexpr std::string_view kStandardHeading =
    "----------------- Standard Functions for internal use ------------------------";
inline constexpr std::string_view kConfigurableHeading =
    "----------------------- Configurable Functions -------------------------------";

// Which Functions are listed; a filter without a value is off.
struct FunctionFilter {
  std::optional<int> category{};  // 0..11
  std::optional<int> use{};       // a FunctionUse code
  bool definedOnly = false;       // without those that have no short name
};

struct FunctionLine {
  int number = 0;  // 0: a heading
  // A heading, or number in three digits, short name, full name, category and signal type, parted by tabs.
  std::string text;
};

// The fields that can be changed in the list.
struct ListedFunction {
  std::string shortName;
  std::string fullName;
  int category = 0;
  int use = 0;
  bool operator==(const ListedFunction&) const = default;
};

class FunctionListPresenter {
 public:
  FunctionListPresenter(ConfigModel& model, MessageBoxes& boxes) : model_(model), boxes_(boxes) {}

  // The standard heading, Functions 1..50 and those above 269 that are defined, the configurable heading,
  // Functions 51..269. Edits that are not saved yet are shown.
  std::vector<FunctionLine> Lines(const FunctionFilter& filter) const;

  ListedFunction Fields(int number) const;  // 1..300, with its unsaved edits
  // Configurable Functions can be changed; of one that uses datarefs or commands the description cannot,
  // since it has a form of its own.
  static bool Editable(int number);
  bool DescriptionEditable(int number) const;
  void Edit(int number, const ListedFunction& fields);

  bool Changed() const { return !edits_.empty(); }
  // Puts all edits into the model. When one of them is bad, shows a message, saves none of them and returns
  // the number of its Function.
  std::optional<int> CmdSave();
  // True when no edit is unsaved, or the user says that the edits may be lost.
  bool MayClose();

 private:
  std::string Text(int number) const;
  bool Passes(int number, const FunctionFilter& filter) const;

  ConfigModel& model_;
  MessageBoxes& boxes_;
  std::map<int, ListedFunction> edits_;
};

}  // namespace tvx
