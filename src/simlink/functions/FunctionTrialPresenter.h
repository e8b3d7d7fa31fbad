// The test of one Function without its window: reads it again and again, writes it once or sweeping.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Host.h"
#include "simlink/SimCom.h"
#include "simlink/functions/FunctionDraft.h"

namespace tvx {

// The name of a data type code; "Unknown" for a code that is not offered.
std::string_view DataTypeName(int code);
// What is said of a value that a data type does not take; empty where it does.
std::string_view OutOfRangeText(int dataType, double value);

// A value that goes from the lower limit to the upper in steps, and back.
class Sweep {
 public:
  // lower <= upper; step above 0.
  Sweep(double lower, double upper, double step) : lower_(lower), upper_(upper), step_(step) {}
  // The next value; the first is the lower limit. The limits themselves are always met.
  double Next();

 private:
  double lower_, upper_, step_;
  double steps_ = 0;  // from the lower limit
  bool up_ = true;
};

class FunctionTrialPresenter {
 public:
  struct View {
    std::string DataTypeName;
    std::string Status = "Stopped";       // of reading: "Reading" or "Stopped"
    std::string WriteStatus = "Stopped";  // of writing again and again: "Writing" or "Stopped"
    std::string Raw, Corrected;           // as read
    std::string Written, WrittenRaw;      // as written last
    std::string WriteNote;                // why nothing was sent, in words
    std::string Note;                     // why nothing comes, in words
  };

  FunctionTrialPresenter(const ConfigModel& model, SimCom& sim, MessageBoxes& boxes);
  ~FunctionTrialPresenter() { Close(); }
  FunctionTrialPresenter(const FunctionTrialPresenter&) = delete;
  FunctionTrialPresenter& operator=(const FunctionTrialPresenter&) = delete;

  const View& Shown() const { return view_; }
  bool Reading() const { return reading_; }            // Read_Tick is wanted
  bool Writing() const { return sweep_.has_value(); }  // IntervalTimer_Tick is wanted

  // The Function number and sequence number as typed. Shows the data type; opens no port. Another Function
  // ends reading and writing.
  void Choose(std::string_view function, std::string_view sequenceNr);
  // What is wrong with a value to write, or a step, as typed; empty when it is right.
  std::string_view ProblemOf(std::string_view value) const;
  static std::string_view StepProblem(std::string_view step);
  void CmdRead_Click();
  void CmdStopRead_Click();
  void Read_Tick();
  void CmdWriteOnce_Click(std::string_view value);
  // The limits and the step as typed.
  void CmdWriteInterval_Click(std::string_view lower, std::string_view upper, std::string_view step);
  void CmdStopWrite_Click();
  void IntervalTimer_Tick();
  // Ends reading and writing, and gives back what was opened here. May be called again.
  void Close();

 private:
  struct OpenedPort {
    int function;
    Byte sequenceNr;
    Port port;
    FunctionDraft as;  // the Function when it was opened
  };
  bool OpenPort();  // of the chosen Function; shows why it cannot
  bool OpenLink();
  Port FindOrOpen();
  std::optional<double> Checked(std::string_view text);  // a value to write; shows what is wrong with it
  std::string ReadNote() const;
  void Write(double value);

  const ConfigModel& model_;
  SimCom& sim_;
  MessageBoxes& boxes_;
  View view_;
  int function_ = 0;  // 0: what was typed is no Function number
  int sequenceNr_ = 0;
  Port port_ = kNoPort;
  std::vector<OpenedPort> opened_;
  bool reading_ = false;
  std::optional<Sweep> sweep_;
  bool linkIsOurs_ = false;
  bool portsAreOurs_;
};

}  // namespace tvx
