// The definitions of the IO modules as the dialogs edit them: finding, checking, storing; and finding an
// input by touching it.
#pragma once

#include <optional>

#include "config/IomInput.h"
#include "config/Model.h"
#include "hwbus/IOModuleReport.h"
#include "platform/Host.h"

namespace tvx {

// What ConfigSwitch says about encoders and toggles, line by line.
extern const char* const kEncoderHelp[5];
extern const char* const kToggleHelp;

class IomEditor {
 public:
  IomEditor(ConfigModel& model, MessageBoxes& boxes) : model_(model), boxes_(boxes) {}

  // The definition of an input; one that is not defined yet gets the usual values.
  IomRecord DefinitionOf(const IomInput& input) const;
  bool Defined(const IomInput& input) const;
  // Checks and stores a definition. Where something is wrong, shows what, stores nothing and returns false.
  bool Store(const IomRecord& definition);
  // False where the input had none.
  bool Remove(const IomInput& input);
  // The message for what is wrong with a definition; empty when nothing is.
  std::string_view Check(const IomRecord& definition) const;

 private:
  std::size_t IndexOf(std::int16_t input) const;  // IOMCount() where there is none
  std::string_view CheckSwitch(const IomRecord& definition, const FunctionRecord* function) const;
  bool EncoderFits(const IomRecord& definition) const;
  std::optional<IomSwitchType> TypeOf(int input) const;  // nothing for a switch without a definition

  ConfigModel& model_;
  MessageBoxes& boxes_;
};

// Finds the input that somebody moves.
class IomTouch {
 public:
  explicit IomTouch(int module) : module_(module) {}
  // The input that has moved since the report before, or since it was found last: a switch that changed, or
  // an axis that went far enough. Nothing for the first report.
  std::optional<IomInput> Take(const IOModuleReport& report);

  static constexpr int kAxisTravel = 200;  // raw steps, well above the noise of a potentiometer

 private:
  int module_;
  std::optional<IOModuleReport> base_;
};

}  // namespace tvx
