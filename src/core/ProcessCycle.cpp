#include "core/ProcessCycle.h"

#include <algorithm>
#include <cmath>
#include <exception>

#include "instruments/kinds/Registry.h"

namespace tvx {
namespace {

constexpr int kGaugetypeIOModule = 10;
constexpr std::int16_t kTickCountLimit = 1000;
// A poll tick's number lies below 100, an IO module's tick is counted above.
constexpr int kMostPolled = 100;

// How much may wait on the line behind a tick, in ticks.
constexpr double kTicksAhead = 1.5;
// Below this interval a question waits until the answer to the one before it had its time.
constexpr int kAnswerAlwaysInTimeMs = 40;
constexpr std::int64_t kAnswerTakesMs = 25;
// An instrument that comes back may still be starting: it is sent everything once more.
constexpr std::int64_t kSendAgainMs = 2000;
// Until what it was sent has arrived, and its next answers speak of it.
constexpr std::int64_t kArriveMs = 300;
constexpr std::uint32_t kMissedForAStart = 2;

}  // namespace

ProcessCycle::ProcessCycle(const ConfigModel& model, SimCom& sim, Serial& serial, SpecialValues& special)
    : model_(model), sim_(sim), serial_(serial), special_(special) {
  gauges_.reserve(kGauges);
}

void ProcessCycle::PrepareGauges() {
  gauges_.clear();
  special_.UseTimePorts(kNoPort, kNoPort);
  special_.UseTemperaturePort(kNoPort);
  lighting_ = {};
  ioModuleGaugeCount_ = ioModuleTurn_ = pollSlot_ = 0;
  pollSlotMax_ = -1;
  moduleTick_ = leftOver_ = false;
  droppedBatches_ = 0;
  nextQuestionMs_ = 0;
  outbox_.Clear();
  health_.Clear();
  load_ = {};
  for (int id = 1; id < kGauges; ++id) {
    const GaugeRecord& record = model_.Gauges[static_cast<std::size_t>(id)];
    if (record.GaugeType == 0) continue;
    ActiveGauge& gauge = gauges_.emplace_back();
    gauge.GaugeID = static_cast<Byte>(id);
    gauge.Record = &record;
    gauge.Kind = InstrumentOf(record.GaugeType);
    if (record.GaugeType == kGaugetypeIOModule) ++ioModuleGaugeCount_;
    if (gauge.Kind == nullptr) continue;
    const OpenerScope by(sim_, static_cast<std::int16_t>(id));
    gauge.Driver = gauge.Kind->Activate({gauge.GaugeID, record, model_, sim_});
    const bool polled = gauge.Kind->Polled() && pollSlotMax_ + 1 < kMostPolled;
    if (polled) gauge.PollSlot = ++pollSlotMax_;
    if (polled || record.GaugeType == kGaugetypeIOModule) health_.Add(id);
  }
}

void ProcessCycle::StartRun() {
  for (ActiveGauge& gauge : gauges_) {
    if (gauge.Driver != nullptr) gauge.Driver->StartRun();
  }
  lightingDue_ = true;
  outbox_.Clear();
  leftOver_ = false;
  health_.Begin(serial_.NowMs());
  roundBegan_ = tickNumber_;
  roundTicks_ = 0;
  loadSinceMs_ = serial_.NowMs();
  loadBytes_ = serial_.Backlog().Added();
}

void ProcessCycle::ResendAll() {
  ForgetGauges();
  lighting_.Repeat();
}

bool ProcessCycle::NoteAnswer(ActiveGauge& gauge) {
  const std::int64_t now = serial_.NowMs();
  const std::uint32_t missed = health_.NoteAnswer(gauge.GaugeID, now);
  if (missed > 0) {
    Resend(gauge);
    gauge.SendAgainMs = now + kSendAgainMs;
    gauge.HeededFromMs = (missed < kMissedForAStart ? now : gauge.SendAgainMs) + kArriveMs;
  }
  return now >= gauge.HeededFromMs;
}

void ProcessCycle::Resend(ActiveGauge& gauge) {
  if (gauge.Driver != nullptr) gauge.Driver->Forget();
  outbox_.Put(gauge.GaugeID, kCommandLighting, LightingFor(gauge), serial_.NowMs());
}

// Who came back a while ago is told everything once more.
void ProcessCycle::SendAgain() {
  for (ActiveGauge& gauge : gauges_) {
    if (gauge.SendAgainMs == 0 || nowMs_ < gauge.SendAgainMs) continue;
    gauge.SendAgainMs = 0;
    Resend(gauge);
  }
}

void ProcessCycle::ForgetGauges() {
  for (ActiveGauge& gauge : gauges_) {
    if (gauge.Driver != nullptr) gauge.Driver->Forget();
  }
}

ActiveGauge* ProcessCycle::GaugeWithID(int gaugeID) {
  const auto found = std::lower_bound(gauges_.begin(), gauges_.end(), gaugeID,
                                      [](const ActiveGauge& gauge, int id) { return gauge.GaugeID < id; });
  return found != gauges_.end() && found->GaugeID == gaugeID ? &*found : nullptr;
}

void ProcessCycle::Tick() {
  try {
    ++tickNumber_;
    nowMs_ = serial_.NowMs();
    sentFrames_ = false;
    if (serial_.LineOpening()) {
      // What is sent now would be lost, and counted as sent.
      ReadFlightValues();
      FillBoxes();
      return;
    }
    sideFrameSet_ = false;
    asked_ = nullptr;
    moduleBytes_ = 0;
    serial_.BeginBatch();
    health_.Watch(nowMs_);
    asking_ = MayAsk();
    SendAgain();
    ReadFlightValues();
    if (SendLighting()) return;
    FillBoxes();
    special_.GetTimeAndDate();
    ServeGauges();
    special_.ClearTimeJumped();
    boxes_.BoxInstrLights = lighting_.InstrumentLights() ? "ON" : "OFF";
    boxes_.boxNavLights = lighting_.NavigationLights() ? "ON" : "OFF";
    EndPolling();
    SendBatch();
    if (lightingDue_) {
      // An earlier run may have left the faces lit or dark: the tick after the first values tells them.
      lighting_.Repeat();
      lightingDue_ = false;
    }
    if (++TickCount > kTickCountLimit) TickCount = 0;
  } catch (const std::exception&) {
    // One bad value never stops the timer; the next tick starts anew.
  }
}

void ProcessCycle::ReadFlightValues() {
  using enum StandardValue;
  const auto value = [this](StandardValue which) { return ValueOf(standardPorts_[which]); };
  flight_.Airspeed = value(Airspeed);
  flight_.Altitude = value(Altitude);
  flight_.Heading = value(Heading);
  flight_.Bank = value(Bank);
  flight_.Pitch = value(Pitch);
  flight_.VerticalSpeed = value(VerticalSpeed);
  flight_.Compass = value(Compass);
  flight_.AirPressureHg = value(AirPressure);
  flight_.Voltage = value(Voltage);
  flight_.Voltage2 = value(SecondVoltage);
  flight_.InstrumentLights = value(InstrumentLights);
  flight_.NavigationLights = value(NavigationLights);
  flight_.ShownAltitude = std::round(flight_.Altitude);
  if (tickNumber_ >= barometricHeldUntil_) barometricSetting_ = static_cast<float>(flight_.AirPressureHg);
}

bool ProcessCycle::SendLighting() {
  const GeneralRecord& general = model_.General;
  const bool changed =
      lighting_.Update(flight_.InstrumentLights, flight_.Voltage, flight_.Voltage2, flight_.NavigationLights,
                       general.LightsSetting1, general.LightsSetting2);
  flight_.BrightnessStep = lighting_.BrightnessStep();
  if (!changed) return false;
  lightingDue_ = false;
  for (const ActiveGauge& gauge : gauges_) Queue(gauge.GaugeID, kCommandLighting, LightingFor(gauge));
  // Faces that are always lit do not cost a tick: the values go out behind the lighting.
  if (general.LightsSetting2 == kLightsAlways) return false;
  boxes_.BoxInstrLights = lighting_.InstrumentLights() ? "ON" : "OFF";
  boxes_.boxNavLights = lighting_.NavigationLights() ? "ON" : "OFF";
  SendBatch();
  return true;
}

std::int32_t ProcessCycle::LightingFor(const ActiveGauge& gauge) const {
  const bool alwaysLit = model_.General.LightsSetting2 == kLightsAlways;
  const bool unlit = !alwaysLit && (gauge.Record->GaugeSetting5 & kOptionUnlit) != 0;
  return unlit ? 0 : lighting_.Word();
}

void ProcessCycle::FillBoxes() {
  boxes_.BoxIAS = FormatNumber(flight_.Airspeed, "000.00");
  boxes_.BoxAltitude = FormatNumber(flight_.Altitude, "####0");
  boxes_.BoxHea = FormatNumber(flight_.Heading, "000.00");
  boxes_.boxBank = FormatNumber(flight_.Bank, "###.0");
  boxes_.boxPitch = FormatNumber(flight_.Pitch, "###.#0");
  boxes_.BoxVS = FormatNumber(flight_.VerticalSpeed, "#####.0");
  boxes_.boxCompass = FormatNumber(flight_.Compass, "###.#0");
  boxes_.BoxAirPressHg = FormatNumber(flight_.AirPressureHg, "##0.00");
  boxes_.BoxAirPressmBar = FormatNumber(flight_.AirPressureHg * kMillibarPerInchHg, "0000");
  boxes_.boxVoltage = FormatNumber(flight_.Voltage, "00.0");
}

void ProcessCycle::ServeGauges() {
  for (ActiveGauge& gauge : gauges_) {
    if (gauge.Driver == nullptr) continue;
    try {
      if (asking_ && !moduleTick_ && gauge.PollSlot == pollSlot_) {
        gauge.Driver->Poll(*this);
        if (sideFrameSet_) asked_ = &gauge;
      }
      gauge.Driver->Serve(*this);
    } catch (const std::exception&) {
      // A value that does not fit costs this gauge its turn, not the others theirs.
    }
  }
}

void ProcessCycle::EndPolling() {
  if (!asking_) return;
  if (moduleTick_) {
    ServeModule();
    moduleTick_ = false;
    return;
  }
  const int highest = pollSlotMax_ >= 0 ? pollSlotMax_ : 1;
  pollSlot_ = pollSlot_ < highest ? pollSlot_ + 1 : 0;
  if (pollSlot_ == 0) {
    roundTicks_ = tickNumber_ - roundBegan_;
    roundBegan_ = tickNumber_;
  }
  moduleTick_ = ioModuleGaugeCount_ > 0;
}

void ProcessCycle::ServeModule() {
  int turn = 0;
  servingModule_ = true;
  for (ActiveGauge& gauge : gauges_) {
    if (gauge.Record->GaugeType != kGaugetypeIOModule || turn++ != ioModuleTurn_) continue;
    gauge.Driver->ServeModuleTurn(*this);
    asked_ = &gauge;
  }
  servingModule_ = false;
  ioModuleTurn_ = ioModuleTurn_ + 1 < ioModuleGaugeCount_ ? ioModuleTurn_ + 1 : 0;
}

int ProcessCycle::IntervalMs() const {
  return std::max<int>(model_.General.TransferInterval, 10);
}

double ProcessCycle::MostWaiting() const {
  return kTicksAhead * IntervalMs() * kLineBytesPerMs;
}

// While the line still has more to carry than ticks put ahead, as after everything was sent at once, a
// question would only queue up.
bool ProcessCycle::MayAsk() const {
  if (serial_.Backlog().Bytes(nowMs_) > MostWaiting()) return false;
  return IntervalMs() >= kAnswerAlwaysInTimeMs || nowMs_ >= nextQuestionMs_;
}

// How many bytes of values this tick may send. A line that is idle and had room for all takes whatever there
// is.
std::size_t ProcessCycle::RoomFor(std::size_t questions) const {
  const double waiting = serial_.Backlog().Bytes(nowMs_);
  if (waiting <= 0 && !leftOver_) return FrameBuffer::kRoom;
  const double taken = waiting + static_cast<double>(serial_.TransmitBuffer().size() + questions);
  return static_cast<std::size_t>(std::max(0.0, MostWaiting() - taken));
}

void ProcessCycle::SendBatch() {
  const std::size_t questions = moduleBytes_ + (sideFrameSet_ ? sideFrame_.size() : 0);
  outbox_.Choose(RoomFor(questions), nowMs_,
                 [this](const GaugeFrame& frame) { serial_.AppendToBatch(frame); });
  serial_.AppendToBatch(ByteView(moduleFrames_).first(moduleBytes_));
  if (sideFrameSet_) serial_.AppendToBatch(sideFrame_);
  const std::uint32_t rests = serial_.DiscardedRests();
  const bool restWaited = serial_.RestWaits();
  const bool something = !serial_.TransmitBuffer().empty();
  const Serial::BatchResult result = serial_.SendBatch();
  sentFrames_ = something && result == Serial::BatchResult::Sent;
  if (!restWaited && serial_.RestWaits()) health_.NoteRest();
  if (serial_.DiscardedRests() != rests) health_.NoteDamaged();
  if (result == Serial::BatchResult::Sent) {
    outbox_.Sent(nowMs_);
    NoteToldBeside();
    if (asked_ != nullptr) {
      health_.NoteAsked(asked_->GaugeID, nowMs_);
      nextQuestionMs_ = nowMs_ + kAnswerTakesMs + static_cast<std::int64_t>(serial_.Backlog().Ms(nowMs_));
    }
  } else {
    ++droppedBatches_;
    // A dead line gets everything again when it comes back. A line that is full gets what it missed later,
    // and always the newest values.
    if (result == Serial::BatchResult::Closed) outbox_.Clear();
    outbox_.NotSent();
    if (moduleBytes_ > 0 && asked_ != nullptr) asked_->Driver->Forget();
  }
  leftOver_ = !outbox_.Empty();
  ++load_.ticks;
  if (leftOver_) ++load_.ticksLeftOver;
}

// What has left without having waited in the outbox.
void ProcessCycle::NoteToldBeside() {
  const auto note = [this](const Told& told) {
    if (told.command != kCommandReportState) outbox_.NoteSent(told.gaugeID, told.command, told.value, nowMs_);
  };
  for (std::size_t i = 0; i < moduleBytes_ / sizeof(GaugeFrame); ++i) note(moduleTold_[i]);
  if (sideFrameSet_) note(side_);
}

bool ProcessCycle::Queue(int gaugeID, int command, std::int32_t value) {
  if (!servingModule_) return outbox_.Put(gaugeID, command, value, nowMs_);
  const auto frame = BuildGaugeFrame(gaugeID, command, value);
  if (!frame || moduleBytes_ + frame->size() > moduleFrames_.size()) return false;
  std::copy(frame->begin(), frame->end(), moduleFrames_.begin() + static_cast<std::ptrdiff_t>(moduleBytes_));
  moduleTold_[moduleBytes_ / sizeof(GaugeFrame)] = {gaugeID, command, value};
  moduleBytes_ += frame->size();
  return true;
}

bool ProcessCycle::PrepareSide(int gaugeID, int command, std::int32_t value) {
  const auto frame = BuildGaugeFrame(gaugeID, command, value);
  if (!frame) return false;
  sideFrame_[0] = 0xFF;
  std::copy(frame->begin(), frame->end(), sideFrame_.begin() + 1);
  side_ = {gaugeID, command, value};
  sideFrameSet_ = true;
  return true;
}

std::uint32_t ProcessCycle::PollRoundTicks() const {
  const int polls = std::max(pollSlotMax_ + 1, 1) * (ioModuleGaugeCount_ > 0 ? 2 : 1);
  return std::max(static_cast<std::uint32_t>(polls), roundTicks_);
}

BusLoad ProcessCycle::TakeLoad() {
  const std::int64_t now = serial_.NowMs();
  const double capacity =
      static_cast<double>(std::max<std::int64_t>(now - loadSinceMs_, 1)) * kLineBytesPerMs;
  const std::uint64_t bytes = serial_.Backlog().Added();
  const GaugeOutbox::Counts counts = outbox_.TakeCounts();
  BusLoad load = load_;
  load.percent =
      static_cast<int>(std::min(100.0, 100.0 * static_cast<double>(bytes - loadBytes_) / capacity + 0.5));
  load.full = load.ticks > 0 && 2 * load.ticksLeftOver > load.ticks;
  load.updatesPerSecond =
      counts.wanted == 0
          ? 0
          : static_cast<int>(
                counts.carried * 1000.0 /
                (counts.wanted * static_cast<double>(std::max<std::int64_t>(now - loadSinceMs_, 1))));
  load.superseded += counts.superseded;
  load_ = {.superseded = load.superseded};
  loadSinceMs_ = now;
  loadBytes_ = bytes;
  return load;
}

std::uint32_t ProcessCycle::TicksPerSecond() const {
  return static_cast<std::uint32_t>(1000 / std::clamp<int>(model_.General.TransferInterval, 10, 1000));
}

}  // namespace tvx
