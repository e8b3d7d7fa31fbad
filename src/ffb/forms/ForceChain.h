// What the chain of one yoke does at this moment: its bars, and below them limit, age of values and reply
// times.
#pragma once

#include "ffb/YokePair.h"
#include "ffb/forms/ForceBars.h"
#include "ui/Widgets.h"

namespace tvx {

class ForceChain : public QWidget {
 public:
  // The bars are named "BarsForces" and the words "LabelChain", both with `number` behind.
  explicit ForceChain(const QByteArray& number);
  void Refresh(const YokePair& pair, int which);

 private:
  ForceBars* bars_;
  QLabel* words_;
};

}  // namespace tvx
