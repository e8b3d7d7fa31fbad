#include "hwbus/iomodule/IOModuleReport.h"

#include <algorithm>

namespace tvx {
namespace {

constexpr std::size_t kGroups = 5;  // where each part starts, counted from 0
constexpr std::size_t kHighNibbles = 12;
constexpr std::size_t kLowBytes = 16;

}  // namespace

IOModuleReport ReadIOModuleReport(ReplyView reply) {
  IOModuleReport report;
  std::copy_n(reply.begin() + kGroups, report.Groups.size(), report.Groups.begin());
  for (std::size_t k = 0; k < report.Analogue.size() / 2; ++k) {
    const int nibbles = reply[kHighNibbles + k];
    report.Analogue[2 * k] = static_cast<std::int16_t>((nibbles & 0xF0) * 16 + reply[kLowBytes + 2 * k]);
    report.Analogue[2 * k + 1] =
        static_cast<std::int16_t>((nibbles & 0x0F) * 256 + reply[kLowBytes + 2 * k + 1]);
  }
  return report;
}

}  // namespace tvx
