// Both yokes at a glance: who is master, how each stands, and the hand-over.
#pragma once

#include <QTimer>
#include <array>
#include <functional>

#include "ffb/YokePair.h"
#include "ffb/forms/ForceChain.h"
#include "ffb/forms/YokePicture.h"
#include "ui/Form.h"
#include "ui/Widgets.h"

namespace tvx {

class FfbStatusForm : public Form {
  Q_OBJECT
 public:
  // `configure` opens the form of yoke 1 or 2. Closing this form only hides it: the status form shows it
  // again.
  FfbStatusForm(YokePair& pair, std::function<void(int)> configure);
  void Refresh();
  static constexpr int kRefreshMs = 100;

 protected:
  void CloseAsked() override { hide(); }

 private:
  struct Side {
    QFrame* panel;
    StateLamp* lamp;
    QLabel *role, *state, *received, *activity;
    ValueBox *bank, *pitch;
    YokePicture* picture;
    ForceChain* chain;
    QPushButton *master, *off;
  };
  QWidget* MakeSide(int which);
  void RefreshSide(int which);

  YokePair& pair_;
  std::function<void(int)> configure_;
  QTimer timer_{this};
  std::array<Side, 2> sides_{};
  ValueBox* BoxAirspeed;
  QLabel *LabelGround, *LabelSimulator, *LabelJoystick;
  QPushButton *cmdRun, *cmdStop;
};

}  // namespace tvx
