// Values of datarefs that no port reads.
#pragma once

namespace tvx {

class OtherValues {
 public:
  virtual ~OtherValues() = default;
  // A value with an identifier that belongs to no port. False where it is not one of these; nothing may be
  // allocated.
  virtual bool Take(int identifierOnWire, float value) = 0;
  // The link is about to be closed: what was asked for is to be cancelled.
  virtual void Closing() = 0;
};

}  // namespace tvx
