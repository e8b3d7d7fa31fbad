// The X-Plane interface test console: sends every kind of datagram by hand, shows and logs what arrives.
#pragma once

#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QTimer>
#include <functional>

#include "simlink/console/LinkConsolePresenter.h"
#include "simlink/references/forms/ReferencePanel.h"
#include "ui/Form.h"
#include "ui/LineList.h"

namespace tvx {

class TestXplaneInterfaceForm : public Form {
  Q_OBJECT
 public:
  // Give the file to save the log as, and the folder to import from; empty when the user
  // cancelled.
  struct Choosers {
    std::function<QString(QWidget* parent)> logFile;
    ReferencePanel::ChooseFolder folder;
  };
  // `parent`, if there is one, waits until the form is closed.
  TestXplaneInterfaceForm(ConfigModel& model, SimCom& sim, MessageBoxes& boxes, const Clock& clock,
                          QWidget* parent = nullptr, Choosers choosers = DesktopChoosers());
  static Choosers DesktopChoosers();

 protected:
  void AtEnd() override { presenter_.Close(); }

 private:
  QWidget* MakeLinkPanel();
  QWidget* MakeDataPanel();
  QWidget* MakeReferencePart();
  QWidget* MakeDrefPanel();
  QWidget* MakeSubscriptionPanel();
  QWidget* MakeRawPanel();
  QWidget* MakeLogPanel();
  QLayout* MakeBottom();
  QPushButton* AddButton(const char* name, const QString& text, const QString& toolTip,
                         std::function<void()> does);
  void TakeEndpoint();
  void ShowView();
  void ShowSubscriptions();

  LinkConsolePresenter presenter_;
  Choosers choosers_;
  QTimer DisplayTimer{this};
  std::vector<std::string> subscriptions_;
  QLineEdit *boxRemoteIP, *boxRemotePort, *boxLocalPort;
  QPushButton *cmdStartUDP, *CmdStopUDP;
  StateLamp* LampUDP;
  QLabel *LabelStatus, *LabelLogStatus, *LabelNote, *LabelArrived;
  QLineEdit *boxIndex, *boxReferenceIndex, *boxValue, *boxCharacter;
  ReferencePanel* references_;
  QLineEdit *SelectedReference, *boxDREFValue, *boxRREFIdentifier, *boxRREFFrequency, *boxFunctionNr;
  LineList *ListRREF, *ListUDPProcessed;
  QRadioButton *OptionByteOrderNormal, *OptionByteOrderReverse;
  QPlainTextEdit* boxUDPRaw;
  QSpinBox* boxFrames;
  QPushButton* cmdStopLog;
  std::string typed_;  // what is wrong with what was typed last, in words
};

}  // namespace tvx
