// The gauge test console's logic: talks to one gauge by hand.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "config/Model.h"
#include "hwbus/gaugebus/Serial.h"

namespace tvx {

// What the console shows of the last reply.
struct GaugeConsoleView {
  std::string Text7;  // the 25 bytes, or that none came
  std::string BoxID, BoxType, BoxModel, boxVersion, boxName;
  std::string ProgressIndicator;  // turns with every reply
};

class GaugeConsolePresenter {
 public:
  static constexpr int kLargestValue = 65535;  // magnitude that a frame carries
  static constexpr int kPollMs = 250;          // interval of PollTimer

  GaugeConsolePresenter(ConfigModel& model, Serial& serial, MessageBoxes& boxes);

  Registration SetChanged(std::function<void()> changed) { return changed_.Give(std::move(changed)); }
  const GaugeConsoleView& View() const { return view_; }
  bool Polling() const { return polling_; }

  // What is said of a command number or value that is not sent; empty where it is.
  static std::string_view CommandProblem(const std::string& typed);
  static std::string_view ValueProblem(const std::string& typed);

  // What the user typed.
  std::string ManualGaugeID, CommandNumber, CommandValue;
  int ComboGaugeType = 0;  // Gaugetype code; 0: none chosen
  std::string boxAddModel, boxAddVersion;

  void cmdPollGauge();
  void cmdStopPoll();
  // Sends command 7; what the last poll left unanswered is shown as such.
  void PollTimer_Tick();
  // Shows a reply: while it polls, and the first one after a command 7 was sent by hand.
  void OnReply(ReplyView reply);
  void Step(int by);  // changes ManualGaugeID, within 0..255
  bool SendGaugeCommand();
  bool cmdAddToConfig();

 private:
  std::optional<int> GaugeID() const;
  std::string NameOf(int gaugetype) const;
  void Changed();

  ConfigModel& model_;
  Serial& serial_;
  MessageBoxes& boxes_;
  Callback<> changed_;
  GaugeConsoleView view_;
  bool polling_ = false;
  bool awaiting_ = false;  // a command 7 was sent by hand
  bool replied_ = false;   // since the last tick
  std::size_t turn_ = 0;
};

}  // namespace tvx
