// The start form: which configuration will be used, and the countdown to the automatic start.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <functional>

#include "core/StartPresenter.h"
#include "ui/Form.h"
#include "ui/LogoFace.h"
#include "ui/OfferList.h"
#include "ui/Widgets.h"

namespace tvx {

// The configuration files of the working folder, sorted by name; the extension's case does not matter.
QStringList ConfigurationFiles();

class StartForm : public Form {
  Q_OBJECT
 public:
  StartForm(StartPresenter& presenter, std::function<void()> openWebPage);

  // Puts a panel below the header, for what the user should know first.
  void AddNotice(QWidget* panel);
  // Puts a line at the foot of the panel of the start.
  void AddChoice(QWidget* line);
  // Shows what the logic holds now.
  void ShowView();
  // The form is back in the user's hands: it was shown, or the configuration was closed. Reads the folder
  // anew and tells the logic. Showing calls it by itself, from the event loop; getting the focus does not.
  void Activate();
  // While held, showing does not activate: the configuration forms come up together with this form.
  void HoldActivation(bool hold) { held_ = hold; }

 protected:
  void CameUp() override;
  void CloseAsked() override { presenter_.Exit_Click(); }

 private:
  QWidget* MakeHeader(const std::function<void()>& openWebPage);
  QWidget* MakeFilePanel();
  QWidget* MakeCountdownPanel();
  QWidget* MakeButtons();
  void Connect();
  void RefreshFiles();
  void ShowFound();
  void WelcomeNewcomer(bool none);
  void TakeSimulator(std::size_t line);

  StartPresenter& presenter_;
  bool held_ = false;
  bool none_ = false;  // the folder has no configuration

  QFrame* panelCountdown_;
  LogoFace* Logo;
  QPushButton* LabelTitle;
  QPushButton* LabelWebPage;
  PickList* FileBox;
  QLabel *LabelWelcome, *NoFiles, *LabelNotice;
  QLineEdit* FileName;
  QLabel* TextAutostart;
  QLabel* BoxAutoStartTime;
  QLabel* Textseconds;
  StateLamp* LampSimulator;
  QLabel* LabelSimulatorName;
  QLabel* LabelXplaneVersion;
  QLabel* SimulatorHint;
  QLabel* LabelFound;
  OfferList* Found;
  QPushButton* butOK;
  QPushButton* CmdConfigure;
  QPushButton* Exit;
};

}  // namespace tvx
