// The definitions of the IO modules as the dialogs edit them: finding, checking, storing; and finding an
// input by touching it.
#pragma once

#include <optional>

#include "config/Model.h"
#include "hwbus/iomodule/IOModuleInput.h"
#include "hwbus/iomodule/IOModuleReport.h"
#include "platform/Host.h"

namespace tvx {

inline constexpr std::int16_t kIOModuleUsualDebounce = 5;

// What ConfigSwitch says about encoders and toggles, line by line.
extern const char* const kEncoderHelp[5];
extern const char* const kToggleHelp;

class IOModulePresenter {
 public:
  IOModulePresenter(ConfigModel& model, MessageBoxes& boxes) : model_(model), boxes_(boxes) {}

  // The definition of an input; one that is not defined yet gets the usual values.
  IOModuleRecord DefinitionOf(const IOModuleInput& input) const;
  bool Defined(const IOModuleInput& input) const;
  // Checks and stores a definition. Where something is wrong, shows what, keeps the old one and returns
  // false.
  bool Store(const IOModuleRecord& definition);
  // False where the input had none.
  bool Remove(const IOModuleInput& input);
  // The message for what is wrong with a definition; empty when it is right.
  std::string_view Check(const IOModuleRecord& definition) const;

 private:
  std::size_t IndexOf(std::int16_t input) const;  // IOMCount() where there is none
  std::string_view CheckSwitch(const IOModuleRecord& definition, const FunctionRecord* function) const;
  bool EncoderFits(const IOModuleRecord& definition) const;
  // std::nullopt for a switch without a definition.
  std::optional<IOModuleSwitchType> TypeOf(int input) const;

  ConfigModel& model_;
  MessageBoxes& boxes_;
};

// Finds the input that somebody moves.
class IOModuleTouch {
 public:
  explicit IOModuleTouch(int module) : module_(module) {}
  // The input that has moved since the report before, or since it was found last: a switch that changed, or
  // an axis that went far enough. std::nullopt for the first report.
  std::optional<IOModuleInput> Take(const IOModuleReport& report);

  static constexpr int kAxisTravel = 200;  // raw steps, well above the noise of a potentiometer

 private:
  int module_;
  std::optional<IOModuleReport> base_;
};

}  // namespace tvx
