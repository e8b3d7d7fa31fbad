// The link to the simulator: addresses, ports, byte order; the simulators that are heard on the network. No
// edit is taken before "Set" is pressed; a simulator is taken at once.
#pragma once

#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>
#include <optional>

#include "config/setup/MainConfigurePresenter.h"
#include "simlink/beacon/SimulatorFinder.h"
#include "ui/OfferList.h"
#include "ui/Widgets.h"

namespace tvx {

class UdpPanel : public QFrame {
 public:
  UdpPanel(ConfigModel& model, const SimulatorFinder& finder);
  // Shows the model's settings. What was typed and is not set yet stays, unless the model has changed
  // meanwhile.
  void ShowModel();
  // Shows who is heard now.
  void ShowFound();
  // True while the fields differ from what is set.
  bool Pending() const { return Typed() != UdpOf(model_); }

 private:
  void AddFound(QGridLayout* grid, int row);
  UdpSettings Typed() const;
  void Take(std::size_t line);
  void OfferSet();
  void OfferFollow();
  void cmdSetUDP_Click();

  ConfigModel& model_;
  const SimulatorFinder& finder_;
  std::string host_;  // that CheckFollow is about; empty: it can follow none
  std::optional<UdpSettings> shown_;
  QLineEdit *boxRemoteIP, *boxRemotePort, *boxLocalPort;
  QRadioButton *OptionByteOrderNormal, *OptionByteOrderReverse;
  QCheckBox *CheckBlockUsel, *CheckHearAll, *CheckFollow;
  QLabel* LabelFound;
  OfferList* Found;
  QPushButton* cmdSetUDP;
  QLabel* LabelUdpFault;
};

}  // namespace tvx
