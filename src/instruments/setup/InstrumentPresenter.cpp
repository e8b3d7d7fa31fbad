#include "instruments/setup/InstrumentPresenter.h"

#include <algorithm>

#include "base/NumberFormat.h"
#include "base/Rounding.h"
#include "config/ValueText.h"
#include "config/setup/GaugeList.h"
#include "instruments/kinds/Registry.h"

namespace tvx {
namespace {

constexpr int kHighestSequence = 4;
constexpr int kHighestPlate = 255;

// Some names end in blanks.
std::string Trimmed(std::string name) {
  name.erase(name.find_last_not_of(' ') + 1);
  return name;
}

std::string IdText(int gaugeID) {
  return FormatNumberText(gaugeID, "000");
}

std::optional<Byte> GaugeIDOf(const std::string& text) {
  const auto number = ParseReal<double>(text);
  const auto wanted = number ? RoundTo<Byte>(*number) : std::nullopt;
  return wanted && *wanted == *number ? wanted : std::nullopt;
}

}  // namespace

InstrumentPresenter::InstrumentPresenter(ConfigModel& model, Serial& serial, MessageBoxes& boxes,
                                         std::function<ByteView()> replyText)
    : model_(model), serial_(serial), boxes_(boxes), replyText_(std::move(replyText)) {}

void InstrumentPresenter::Open(int gaugeID) {
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

bool InstrumentPresenter::Read() {
  readings_.clear();
  identity_.clear();
  const auto answer = Query(gaugeID_);
  if (answer == Answer::None) {
    model_.GaugeState[static_cast<std::size_t>(gaugeID_)] = GaugeConnection::NotConnected;
  }
  if (answer != Answer::Own) return false;
  TakeReport();
  return true;
}

// Says so where no reply came, or another gauge's. One of another gauge may have been under way since before:
// it gets a second chance.
InstrumentPresenter::Answer InstrumentPresenter::Query(int gaugeID) {
  int sender = -1;
  for (int attempt = 0; attempt < 2; ++attempt) {
    if (!serial_.QueryGauge(gaugeID)) return Answer::None;
    const ByteView bytes = replyText_();
    if (bytes.size() != kReplySize) return Answer::Others;
    sender = ReplyGaugeID(bytes.first<kReplySize>());
    if (sender == gaugeID) return Answer::Own;
  }
  boxes_.Show("Gauge " + IdText(sender) + " answered instead of " + IdText(gaugeID) + ".");
  return Answer::Others;
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
  const int before = gaugeID_, wanted = *GaugeIDOf(text);
  const std::size_t from = static_cast<std::size_t>(before), to = static_cast<std::size_t>(wanted);
  if (model_.GaugeState[from] != GaugeConnection::Connected) {
    boxes_.Show("Gauge is not connected; Search/Check connections\r\nNew GaugeID cannot be written to Gauge");
    return false;
  }
  serial_.WriteNewGaugeID(before, wanted);
  // The settings follow only where the gauge went.
  model_.GaugeState[from] = GaugeConnection::Unknown;
  const bool answers = Query(wanted) == Answer::Own;
  if (!answers && boxes_.Ask("The gauge does not answer as GaugeID " + IdText(wanted) +
                             ".\r\nMove its settings there all the same?") == kAnswerNo) {
    return false;
  }
  model_.Gauges[to] = Record();
  Edited() = {};
  model_.GaugeState[from] = GaugeConnection::NotConnected;
  Open(wanted);
  if (answers) TakeReport();
  return answers;
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
