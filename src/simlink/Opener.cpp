#include "simlink/Opener.h"

#include "base/NumberFormat.h"
#include "config/Model.h"

namespace tvx::opener {

std::string Text(std::int16_t code) {
  if (code < kGauges) return "ID:" + FormatNumberText(code, "000");
  switch (code) {
    case kIOModule1:
      return "IOM#1";
    case kIOModule2:
      return "IOM#2";
    case kInternal:
      return "INTRN";
    case kEngineCluster:
      return "ENGCl";
    case kYokes:
      return "YOKES";
    default:
      return {};
  }
}

}  // namespace tvx::opener
