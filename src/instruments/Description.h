// What the configuration dialog of an instrument offers: its Functions, Plates and settings, what can be
// tried on it, and what its reply tells.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "hwbus/GaugeFrame.h"

namespace tvx {

// One of the two Functions of a gauge. An empty label: the instrument has none there.
struct FunctionField {
  std::string_view label;
  std::string_view tip;
  bool number = true;  // false: only the sequence number counts
  int offset = 0;      // the Function used is the configured number plus this
  int instead = 0;     // the Function used where any number is configured; 0: that number
};
// The needle that a Plate calibrates, and the command that moves the needle to a position 0..1079.
struct PlateField {
  std::string_view label;
  int command;
};
struct OptionChoice {
  int value;  // within the option's bits
  std::string_view name;
};
// Bits of GaugeSetting5. Without choices it is a box to tick.
struct OptionField {
  std::string_view label;
  std::string_view tip;
  int mask;
  std::vector<OptionChoice> choices{};
};
// A command for trying the display by hand.
struct TrialField {
  std::string_view label;
  int command;
  std::int32_t lowest, highest;
  std::string_view unit;
};
// A part of the reply, in words.
struct ReadingField {
  std::string_view label;
  std::string (*text)(ReplyView);
};

struct InstrumentDescription {
  std::string_view purpose;  // what it shows, and where that comes from
  FunctionField function1{}, function2{};
  std::vector<PlateField> plates{};  // at most two
  std::vector<int> own{};            // Functions of the program's own flight values that it shows
  std::vector<OptionField> options{};
  std::vector<OptionChoice> models{};  // where the model changes what is shown
  std::string_view setting6{};         // what the number in GaugeSetting6 means; empty where it is not used
  std::vector<TrialField> trials{};
  std::vector<ReadingField> readings{};
};

}  // namespace tvx
