// The test of one Function: reads it again and again, writes it once or sweeping between two limits.
#pragma once

#include <QSpinBox>
#include <QTimer>

#include "simlink/functions/FunctionTrialPresenter.h"
#include "ui/Form.h"
#include "ui/LineList.h"

namespace tvx {

// Opened by the Function editor.
class TestFunctionForm : public Form {
  Q_OBJECT
 public:
  TestFunctionForm(const ConfigModel& model, SimCom& sim, MessageBoxes& boxes, QWidget* parent = nullptr);

  // Takes another Function; ends what ran.
  void Choose(int function);

 protected:
  void AtEnd() override { presenter_.Close(); }

 private:
  QWidget* MakeChoicePanel();
  QWidget* MakeReadPanel();
  QWidget* MakeWritePanel();
  void TakeChoice();
  void ShowView();

  const ConfigModel& model_;
  FunctionTrialPresenter presenter_;
  QTimer ReadTimer{this}, IntervalTimer{this};
  QLineEdit *BoxFunctionNr, *BoxSeqNr;
  QLabel *LabelName, *LabelDataType, *LabelReadStatus, *LabelWriteStatus, *LabelNote, *LabelWritten;
  ValueBox *BoxRaw, *BoxCorrected;
  QPushButton *CmdRead, *CmdStopRead, *CmdWriteOnce, *CmdWriteInterval, *CmdStopWrite;
  QLineEdit *BoxWriteValue, *BoxWriteLowerLimit, *BoxWriteUpperLimit, *boxIncrDecr;
  QSpinBox* BoxInterval;
  std::vector<std::function<void()>> checkAgain_;
  std::string typed_;  // what is wrong with what was typed last, in words
};

}  // namespace tvx
