// The link to the simulator: addresses, ports, byte order. No edit is taken before "Set" is pressed.
#pragma once

#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>
#include <optional>

#include "config/setup/MainConfigurePresenter.h"
#include "ui/Widgets.h"

namespace tvx {

class UdpPanel : public QFrame {
 public:
  explicit UdpPanel(ConfigModel& model);
  // Shows the model's settings. What was typed and is not set yet stays, unless the model has changed
  // meanwhile.
  void ShowModel();
  // True while the fields differ from what is set.
  bool Pending() const { return Typed() != UdpOf(model_); }

 private:
  UdpSettings Typed() const;
  void OfferSet();
  void cmdSetUDP_Click();

  ConfigModel& model_;
  std::optional<UdpSettings> shown_;
  QLineEdit *boxRemoteIP, *boxRemotePort, *boxLocalPort;
  QRadioButton *OptionByteOrderNormal, *OptionByteOrderReverse;
  QCheckBox* CheckBlockUsel;
  QPushButton* cmdSetUDP;
  QLabel* LabelUdpFault;
};

}  // namespace tvx
