// The virtual cockpit's window: the panel, and beside it the state of simulator and gauge bus with their
// controls.
#pragma once

#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>

#include "virtualcockpit/Cockpit.h"
#include "virtualcockpit/panel/BehaviourPanel.h"
#include "virtualcockpit/panel/InstrumentPanel.h"
#include "virtualcockpit/panel/UnitShelf.h"

namespace tvx::vc {

class PanelWindow : public QWidget {
  Q_OBJECT
 public:
  // `onYokes` is told when settings change that concern the yokes; empty where there are none.
  explicit PanelWindow(Cockpit& cockpit, std::function<void(const Traits&)> onYokes = {},
                       QWidget* parent = nullptr);

  InstrumentPanel& Panel() { return *panel_; }
  // Plain words in one to three lines: the flight, and what the most telling instruments show.
  QString Words() const;
  // Leaves parts out: the faces; IO modules and engine cluster; the strip with the controls.
  struct Parts {
    bool instruments = true, units = true, controls = true;
  };
  void ShowParts(const Parts& parts);
  // What was wrong with the configuration, shown at the foot of the strip.
  void SetNotice(const QString& text);

 private:
  void BuildStrip(QVBoxLayout& strip);
  QLabel* AddLabel(QVBoxLayout& strip, const char* name, const char* role = nullptr);
  void AddTitle(QVBoxLayout& strip, const QString& text);
  QPushButton* AddButton(const char* name, const QString& text);
  void Connect();
  void Frame();
  void ShowState();
  // How fast a counter has risen since the state was shown last.
  int PerSecond(std::uint64_t now, std::uint64_t& last) const;
  void ShowSimulator();
  void ShowBus();
  void ShowBehaviour();

  Cockpit& cockpit_;
  InstrumentPanel* panel_;
  QWidget* scroll_;  // around the panel
  UnitShelf* shelf_;
  QWidget* strip_;  // around the controls
  BehaviourPanel* behaviour_;
  QLabel *labelPhase_, *labelFlight_, *labelSimulator_, *labelClient_, *labelTraffic_;
  QLabel *labelBus_, *labelBusPath_, *labelBusTraffic_, *labelNotice_, *labelBehaviour_;
  QPushButton *cmdPause_, *cmdRestart_, *cmdSimulator_, *cmdAdapter_, *cmdBehaviour_;
  QComboBox *comboSpeed_, *comboLineFault_;
  QTimer frameTimer_, stateTimer_;
  QElapsedTimer frameClock_, stateClock_;
  std::uint64_t lastSent_ = 0, lastReceived_ = 0, lastFrames_ = 0, lastReplies_ = 0;
};

}  // namespace tvx::vc
