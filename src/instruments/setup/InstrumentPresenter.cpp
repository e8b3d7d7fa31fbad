#include "instruments/setup/InstrumentPresenter.h"

#include <algorithm>
#include <utility>

#include "base/NumberFormat.h"
#include "base/Rounding.h"
#include "config/ValueText.h"
#include "config/setup/GaugeList.h"
#include "instruments/kinds/Registry.h"

namespace tvx {
namespace {

constexpr int kHighestSequence = 4;
constexpr int kHighestPlate = 255;
constexpr int kAttempts = 2;

// Some names end in blanks.
std::string Trimmed(std::string name) {
  name.erase(name.find_last_not_of(' ') + 1);
  return name;
}

std::string IdText(int gaugeID) {
  return FormatNumberText(gaugeID, "000");
}

std::optional<Byte> GaugeIDOf(const std::string& text) {
  const auto wanted = TypedWhole(text, 0, kGauges - 1);
  return wanted ? std::optional(static_cast<Byte>(*wanted)) : std::nullopt;
}

}  // namespace

InstrumentPresenter::InstrumentPresenter(ConfigModel& model, Serial& serial, MessageBoxes& boxes,
                                         std::function<ByteView()> replyText)
    : model_(model), serial_(serial), boxes_(boxes), replyText_(std::move(replyText)) {}

void InstrumentPresenter::Open(int gaugeID) {
  Cancel();
  gaugeID_ = std::clamp(gaugeID, 0, kGauges - 1);
  const Instrument* kind = InstrumentOf(Record().GaugeType);
  description_ = kind == nullptr ? InstrumentDescription{} : kind->Describe(Record().GaugeType);
  if (kind == nullptr) description_.purpose = "The program does not serve instruments of this type.";
  readings_.clear();
  identity_.clear();
}

std::string InstrumentPresenter::Title() const {
  return IdText(gaugeID_) + "  " + Trimmed(GaugetypeNameInList(model_, Record().GaugeType));
}

GaugeRecord& InstrumentPresenter::Edited() {
  model_.ConfigChanged = true;
  return model_.Gauges[static_cast<std::size_t>(gaugeID_)];
}

bool InstrumentPresenter::SetField(bool valid, const std::function<void(GaugeRecord&)>& edit) {
  if (valid) edit(Edited());
  return valid;
}

bool InstrumentPresenter::SetFunction(int needle, int function) {
  return SetField(function >= 0 && function < kFunctions, [&](GaugeRecord& gauge) {
    (needle == 2 ? gauge.GaugeFunction2 : gauge.GaugeFunction1) = static_cast<std::int16_t>(function);
  });
}

bool InstrumentPresenter::SetSequence(int needle, int sequenceNr) {
  return SetField(sequenceNr >= 0 && sequenceNr <= kHighestSequence, [&](GaugeRecord& gauge) {
    (needle == 2 ? gauge.GaugeInstance2 : gauge.GaugeInstance1) = static_cast<Byte>(sequenceNr);
  });
}

bool InstrumentPresenter::SetPlate(int needle, int plate) {
  if (plate > kHighestPlate && model_.PlateOf(plate) != nullptr) {
    boxes_.Show("A gauge can only have one of the Plates 0 to 255. This is Plate " + std::to_string(plate) +
                ".");
  }
  return SetField(model_.PlateOf(plate) != nullptr && plate <= kHighestPlate, [&](GaugeRecord& gauge) {
    (needle == 2 ? gauge.GaugeSetting4 : gauge.GaugeSetting3) = static_cast<Byte>(plate);
  });
}

bool InstrumentPresenter::SetOption(int mask, int value) {
  return SetField(true, [&](GaugeRecord& gauge) {
    gauge.GaugeSetting5 = static_cast<std::int16_t>((gauge.GaugeSetting5 & ~mask) | (value & mask));
  });
}

bool InstrumentPresenter::SetModel(int gaugeModel) {
  return SetField(gaugeModel >= 0 && gaugeModel <= 255,
                  [&](GaugeRecord& gauge) { gauge.GaugeSetting1 = static_cast<Byte>(gaugeModel); });
}

bool InstrumentPresenter::SetSetting6(int value) {
  return SetField(value >= 0 && value < kFunctions,
                  [&](GaugeRecord& gauge) { gauge.GaugeSetting6 = static_cast<std::int16_t>(value); });
}

void InstrumentPresenter::Read() {
  readings_.clear();
  identity_.clear();
  Query(Pending::Read, gaugeID_);
}

void InstrumentPresenter::Cancel() {
  query_.End();
  pending_ = Pending::None;
}

void InstrumentPresenter::Query(Pending what, int gaugeID) {
  pending_ = what;
  asked_ = gaugeID;
  attempts_ = 0;
  Ask();
}

void InstrumentPresenter::Ask() {
  ++attempts_;
  query_ = serial_.QueryGauge(asked_, [this](bool answered) { OnAnswer(answered); });
}

// A reply of another gauge may have been under way since before: then the gauge is asked once more.
void InstrumentPresenter::OnAnswer(bool answered) {
  const ByteView bytes = replyText_();
  const bool readable = bytes.size() == kReplySize;
  const bool own = readable && ReplyGaugeID(bytes.first<kReplySize>()) == asked_;
  if (answered && readable && !own && attempts_ < kAttempts) {
    Ask();
    return;
  }
  if (answered && readable && !own) {
    boxes_.Show("Gauge " + IdText(ReplyGaugeID(bytes.first<kReplySize>())) + " answered instead of " +
                IdText(asked_) + ".");
  }
  const Answer answer = !answered ? Answer::None : own ? Answer::Own : Answer::Others;
  const Pending what = std::exchange(pending_, Pending::None);
  what == Pending::Read ? OnRead(answer) : OnNewGaugeID(answer);
  answered_();
}

void InstrumentPresenter::OnRead(Answer answer) {
  if (answer == Answer::Own) TakeReport();
  if (answer == Answer::None) {
    model_.GaugeState[static_cast<std::size_t>(gaugeID_)] = GaugeConnection::NotConnected;
  }
}

void InstrumentPresenter::TakeReport() {
  const ReplyView reply = replyText_().first<kReplySize>();
  model_.GaugeState[static_cast<std::size_t>(gaugeID_)] = GaugeConnection::Connected;
  identity_ = Trimmed(GaugetypeNameInList(model_, ReplyGaugetype(reply))) + ", model " +
              std::to_string(ReplyModel(reply)) + ", version " + std::to_string(ReplyVersion(reply));
  if (ReplyGaugetype(reply) != Record().GaugeType) {
    identity_ += "; the configuration says another type";
    return;
  }
  for (const ReadingField& field : description_.readings) {
    readings_.push_back({std::string(field.label), field.text(reply)});
  }
}

std::string InstrumentPresenter::NewGaugeIDFault(const std::string& text) const {
  const auto wanted = GaugeIDOf(text);
  if (!wanted) return "A GaugeID is a whole number from 0 to 255.";
  if (*wanted == gaugeID_) return "This is the gauge's GaugeID.";
  if (model_.Gauges[*wanted].GaugeType != 0 || model_.GaugeState[*wanted] == GaugeConnection::Connected)
    return "GaugeID " + IdText(*wanted) + " is used by another gauge.";
  return {};
}

bool InstrumentPresenter::WriteNewGaugeID(const std::string& text) {
  if (const std::string fault = NewGaugeIDFault(text); !fault.empty()) {
    boxes_.Show(fault);
    return false;
  }
  const int wanted = *GaugeIDOf(text);
  const auto from = static_cast<std::size_t>(gaugeID_);
  if (model_.GaugeState[from] != GaugeConnection::Connected) {
    boxes_.Show("Gauge is not connected; Search/Check connections\r\nNew GaugeID cannot be written to Gauge");
    return false;
  }
  serial_.WriteNewGaugeID(gaugeID_, wanted);
  // The settings follow only where the gauge went.
  model_.GaugeState[from] = GaugeConnection::Unknown;
  Query(Pending::NewGaugeID, wanted);
  return true;
}

void InstrumentPresenter::OnNewGaugeID(Answer answer) {
  const int wanted = asked_;
  if (answer != Answer::Own && boxes_.Ask("The gauge does not answer as GaugeID " + IdText(wanted) +
                                          ".\r\nMove its settings there all the same?") == kAnswerNo) {
    return;
  }
  model_.Gauges[static_cast<std::size_t>(wanted)] = Record();
  Edited() = {};
  model_.GaugeState[static_cast<std::size_t>(gaugeID_)] = GaugeConnection::NotConnected;
  Open(wanted);
  if (answer == Answer::Own) TakeReport();
}

bool InstrumentPresenter::Try(const TrialField& trial, int value) {
  if (!serial_.Line().IsOpen()) {
    boxes_.Show(serial_.LineWords());
    return false;
  }
  if (value < trial.lowest || value > trial.highest) return false;
  serial_.WriteGaugeCommand(gaugeID_, trial.command, value);
  return true;
}

bool InstrumentPresenter::Remove() {
  if (boxes_.Ask("This will delete this gauge from the current configuration!") == kAnswerNo) return false;
  Edited() = {};
  return true;
}

}  // namespace tvx
