// The engine cluster's options, as each form shows them that has them: engine version, backlight, further
// bits.
#pragma once

#include <QCheckBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

#include "hwbus/cluster/EngineClusterPresenter.h"

namespace tvx {

class EngineClusterOptions : public QFrame {
 public:
  enum class Extent { VersionAndBacklight, All };
  EngineClusterOptions(EngineClusterPresenter& presenter, Extent extent);
  // Shows what the model holds. A text that was typed and is not taken stays.
  void Refresh();
  // Something was typed that the model does not hold.
  bool Untaken() const;

 private:
  QLayout* MakeBits();
  void TakeBits();
  void ShowBitsRemark();

  EngineClusterPresenter& presenter_;
  QRadioButton *OptionSingleEngine_, *OptionDualEngine_;
  QCheckBox* CheckBacklight_;
  QLineEdit* boxExtraBits_ = nullptr;
  QLabel* LabelExtraBits_ = nullptr;
  bool bitsEdited_ = false;
};

}  // namespace tvx
