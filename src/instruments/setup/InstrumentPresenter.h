// The logic of the one dialog that configures every instrument.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "hwbus/gaugebus/Serial.h"
#include "instruments/Description.h"

namespace tvx {

// Edits the record of one gauge in place, each edit at once. Values outside their range are refused (false)
// and change nothing.
class InstrumentPresenter {
 public:
  // `replyText`: the last well-formed reply on the gauge bus.
  InstrumentPresenter(ConfigModel& model, Serial& serial, MessageBoxes& boxes,
                      std::function<ByteView()> replyText);

  void Open(int gaugeID);  // 0..255
  int GaugeID() const { return gaugeID_; }
  const GaugeRecord& Record() const { return model_.Gauges[static_cast<std::size_t>(gaugeID_)]; }
  const InstrumentDescription& Description() const { return description_; }
  std::string Title() const;  // "007  Small gauge; Single Needle"

  bool SetFunction(int needle, int function);    // needle 1 or 2; function 0 (none) .. 300
  bool SetSequence(int needle, int sequenceNr);  // 0..4
  bool SetPlate(int needle, int plate);          // 0 .. number of Plates - 1, at most 255
  bool SetOption(int mask, int value);           // the bits of `mask` become those of `value`
  bool SetModel(int gaugeModel);                 // 0..255
  bool SetSetting6(int value);

  // Asks the live gauge to report. While Asking() the answer is awaited; Readings and Identity then tell what
  // it said, or are empty.
  void Read();
  struct Reading {
    std::string label, text;
  };
  const std::vector<Reading>& Readings() const { return readings_; }
  std::string Identity() const { return identity_; }

  // Gives the live gauge a new address, a free one of 0..255, and asks it there. Once it answers, its record
  // moves there, and GaugeID() is the new one; where it does not, the user is asked whether it is to move.
  // False, with a message, where the address cannot be given.
  bool WriteNewGaugeID(const std::string& text);
  // True from either on, until SetAnswered's callback is told that it has come to its end.
  bool Asking() const { return pending_ != Pending::None; }
  Registration SetAnswered(std::function<void()> answered) { return answered_.Give(std::move(answered)); }
  // Ends the asking; nobody is told.
  void Cancel();
  // Why `text` cannot be the new address; empty where it can.
  std::string NewGaugeIDFault(const std::string& text) const;
  // Sends one of its commands to the live gauge. False where the gauge bus is not open, with a message, and
  // where the value is outside the trial's range.
  bool Try(const TrialField& trial, int value);
  // Asks, then takes the gauge out of the configuration.
  bool Remove();

 private:
  GaugeRecord& Edited();
  enum class Pending { None, Read, NewGaugeID };
  enum class Answer { None, Own, Others };
  void Query(Pending what, int gaugeID);
  void Ask();
  void OnAnswer(bool answered);
  void OnRead(Answer answer);
  void OnNewGaugeID(Answer answer);
  void TakeReport();
  bool SetField(bool valid, const std::function<void(GaugeRecord&)>& edit);

  ConfigModel& model_;
  Serial& serial_;
  MessageBoxes& boxes_;
  std::function<ByteView()> replyText_;
  int gaugeID_ = 0;
  InstrumentDescription description_;
  std::vector<Reading> readings_;
  std::string identity_;

  Pending pending_ = Pending::None;
  int asked_ = 0;     // the address that was asked
  int attempts_ = 0;  // how often
  Registration query_;
  Callback<> answered_;
};

}  // namespace tvx
