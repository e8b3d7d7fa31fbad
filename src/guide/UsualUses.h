// What switches, buttons, encoders and axes of a cockpit usually do, with X-Plane's own commands.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "config/Model.h"
#include "hwbus/iomodule/IOModuleInput.h"

namespace tvx {

enum class UseKind {
  Switch,   // one command when it is switched on, the other when it is switched off
  Button,   // the first command when it is pressed
  Encoder,  // the first command for a click of one half, the second for the other
  Axis,     // the first text is a dataref, 0 to 1
};

struct UsualUse {
  std::string_view name;  // "Landing lights"
  UseKind kind;
  std::string_view first, second;
};

const std::vector<UsualUse>& UsualUses();

// The Function of a use: one that has its commands, or else a new one. 0 where no number is left.
int FunctionForUse(ConfigModel& model, const UsualUse& use);
// The definitions that make the input do this; an encoder's `input` is its lower half. Empty where no number
// is left for its Function.
std::vector<IOModuleRecord> DefinitionsFor(ConfigModel& model, const UsualUse& use,
                                           const IOModuleInput& input);
// The name of the use that a definition has; empty where it is none of them.
std::string UseOf(const ConfigModel& model, const IOModuleRecord& definition);

}  // namespace tvx
