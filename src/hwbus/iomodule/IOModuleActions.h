// What a definition makes of a switch that moved, of an axis, or of a Function's value: pure functions, for
// the module that acts and for the dialogs that show beforehand what would be sent.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "hwbus/iomodule/IOModuleInput.h"

namespace tvx {

struct IOModuleEffect {
  enum class Kind { Nothing, Keystroke, Value, Command };
  Kind What = Kind::Nothing;
  std::int16_t Keystroke = 0;  // a keystroke code
  float Value = 0;             // for PutPort
  int Entry = 0;               // of the Function's command text
};

IOModuleAction ActionOf(const IOModuleRecord& definition);
// Whether the switch steps its Function up or down, and so needs its current value.
bool IsRelative(const IOModuleRecord& definition);
// Whether it is one of the two halves of an encoder.
bool IsEncoder(const IOModuleRecord& definition);
// Whether the simulator tells the Function's value, so that a step has something to start from.
bool IsRead(const FunctionRecord& function, int sequenceNr);

// The effect of an edge (`on`: Off->On). `function` may be nullptr; `current` is the Function's value now,
// used by relative definitions only.
IOModuleEffect SwitchEffect(const IOModuleRecord& definition, const FunctionRecord* function, bool on,
                            double current);

// The scaled value of a raw one; infinite or no number where the raw limits leave no range.
float AnalogueValue(const IOModuleRecord& definition, const FunctionRecord& function, int raw);

// Whether the lamp of a definition is lit at `value`.
bool LampLit(const IOModuleRecord& definition, const FunctionRecord& function, double value);

// The words for writing a value to a Function of a data type: "Data Byte" and so on.
std::string DataName(DataType type);
// The action in the words of the list of actions: "No Action ", "Data Float", "Xplane CMND", "KB Stroke" and
// so on.
std::string ActionName(const IOModuleRecord& definition, const FunctionRecord* function);

// What the definition would send on an edge, or at a raw value, in one line. `current` std::nullopt: the
// Function's value has not come yet.
std::string SwitchPreview(const IOModuleRecord& definition, const FunctionRecord* function, bool on,
                          std::optional<double> current);
std::string AnaloguePreview(const IOModuleRecord& definition, const FunctionRecord* function, int raw);

}  // namespace tvx
