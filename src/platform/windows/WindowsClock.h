// The computer's clocks.
#pragma once

#include "platform/Host.h"

namespace tvx {

class WindowsClock final : public Clock {
 public:
  std::int64_t MonotonicMs() const override;
  std::tm LocalTime() const override;
};

}  // namespace tvx
