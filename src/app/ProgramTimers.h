// The timers that the forms' logic switches.
#pragma once

#include "platform/qt/QtHost.h"

namespace tvx {

struct ProgramTimers {
  QtTimer WaitForAutostart{"WaitForAutostart"};
  QtTimer TimerWaitForFS{"TimerWaitForFS"};
  QtTimer TimerCheckForSilence{"TimerCheckForSilence"};  // has no effect, and is never enabled
  QtTimer ProcessTimer{"ProcessTimer"};
  QtTimer Timer1{"Timer1"};
  QtTimer WriteCmdDuringConfig{"WriteCmdDuringConfig"};
  QtTimer LinkTimer{"LinkTimer"};      // runs as long as the program
  QtTimer FinderTimer{"FinderTimer"};  // the same

  // All but LinkTimer, which still says goodbye to the simulator.
  void StopAll() {
    for (QtTimer* timer : {&WaitForAutostart, &TimerWaitForFS, &TimerCheckForSilence, &ProcessTimer, &Timer1,
                           &WriteCmdDuringConfig, &FinderTimer}) {
      timer->SetEnabled(false);
    }
  }
};

}  // namespace tvx
