// The 25 bytes in which an IO module reports its inputs, and the commands it takes.
#pragma once

#include <array>
#include <cstdint>

#include "hwbus/GaugeFrame.h"
#include "hwbus/iomodule/IOModuleInput.h"

namespace tvx {

// The address in every command frame to an IO module: it is alone on its line.
inline constexpr int kIOModuleBusAddress = 10;

// Commands to an IO module, besides 7 (report state) and 8 (lighting), which every instrument knows.
namespace iom_command {
inline constexpr int kLampsLow = 4;    // lamps 0..15, one bit each
inline constexpr int kLampsHigh = 5;   // lamps 16..31
inline constexpr int kBrightness = 6;  // 0..15
inline constexpr int kDebounce = 11;   // 256 x switch + time 0..20; switch 255: all of them
inline constexpr int kLampTest = 12;   // 0 ends the test, 1..32 one lamp, 255 all
inline constexpr int kAddress = 13;    // address 0..255 of a module that stands alone on a gauge bus
inline constexpr int kAllSwitches = 255;
inline constexpr int kAllLamps = 255;
}  // namespace iom_command

struct IOModuleReport {
  std::array<Byte, kIOModuleGroups> Groups{};               // A..F, the first switch in the top bit
  std::array<std::int16_t, kIOModuleAnalogues> Analogue{};  // 0..4095

  bool On(int index) const {
    const int bit = kIOModuleGroupSize - 1 - index % kIOModuleGroupSize;
    return (Groups[static_cast<std::size_t>(index / kIOModuleGroupSize)] >> bit & 1) != 0;
  }
};

// Takes a report apart whose envelope was checked.
IOModuleReport ReadIOModuleReport(ReplyView reply);

}  // namespace tvx
