// The windows that the engine cluster's forms open.
#pragma once

namespace tvx {

class EngineClusterWindows {
 public:
  virtual ~EngineClusterWindows() = default;
  virtual void ShowSetUp() = 0;
  virtual void ShowTest() = 0;
  // The Plates, for the needle of a channel, 0..7.
  virtual void ShowPlates(int channel) = 0;
};

}  // namespace tvx
