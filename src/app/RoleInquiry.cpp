#include "app/RoleInquiry.h"

#include <algorithm>
#include <array>
#include <utility>

#include "ffb/YokeFrame.h"
#include "hwbus/GaugeFrame.h"
#include "hwbus/cluster/EngineClusterFrame.h"
#include "hwbus/iomodule/IOModuleReport.h"

namespace tvx {
namespace {

constexpr int kOpeningTicks = 150;  // 3 s
constexpr int kListeningTicks = 5;
constexpr int kAnswerTicks = 5;
constexpr int kGaugeTicks = 3;  // as long as in a search
constexpr int kGaugetypeIOModule = 10;
constexpr Byte kClusterAnswerStart = 0xFF;
constexpr std::size_t kMostOfAnAnswer = 256;

template <typename Frame>
std::vector<Byte> BytesOf(const Frame& frame) {
  return {frame.begin(), frame.end()};
}

const char* WordsOf(AdapterRole role) {
  switch (role) {
    case AdapterRole::GaugeBus:
      return "answers as the gauge bus";
    case AdapterRole::IOModule:
      return "answers as an IO module";
    case AdapterRole::EngineCluster:
      return "answers as the engine cluster";
    case AdapterRole::Yoke:
      return "answers as a yoke";
  }
  return "";
}

}  // namespace

void RoleInquiry::AddGauge(int address) {
  if (const auto frame = BuildGaugeFrame(address, kCommandReportState, 0))
    questions_.push_back({Kind::Gauge, BytesOf(*frame), kGaugeTicks});
}

void RoleInquiry::Start(int comNumber, const std::vector<Byte>& yokes, const std::vector<int>& gauges) {
  Cancel();
  questions_.assign(1, {Kind::Listen, {}, kListeningTicks});
  questions_.push_back(
      {Kind::Module, BytesOf(*BuildGaugeFrame(kIOModuleBusAddress, kCommandReportState, 0)), kAnswerTicks});
  for (const Byte yoke : yokes) {
    const auto frame = YokeFrame(yoke, static_cast<Byte>(YokeCommand::Report), 0, 0, 0, 0);
    questions_.push_back({Kind::Yoke, BytesOf(frame), kAnswerTicks});
  }
  ECFrame zero = EmptyECFrame();
  FinishECFrame(zero, {});
  questions_.push_back({Kind::Cluster, BytesOf(zero), kAnswerTicks});
  for (const int address : gauges) AddGauge(address);
  known_ = questions_.size();
  for (int address = 0; address <= kHighestGaugeID; ++address) {
    if (std::find(gauges.begin(), gauges.end(), address) == gauges.end()) AddGauge(address);
  }
  next_ = 0;
  ticks_ = 0;
  module_ = false;
  answer_.clear();
  found_.reset();
  words_ = "is being asked";
  running_ = true;
  port_.SetReceiveThreshold(1);
  port_.Open(comNumber);
}

void RoleInquiry::Cancel() {
  if (running_) End({});
}

void RoleInquiry::End(std::string words) {
  running_ = false;
  words_ = std::move(words);
  port_.Close();
}

void RoleInquiry::Take(AdapterRole role) {
  found_ = role;
  End(WordsOf(role));
}

void RoleInquiry::Tick() {
  if (!running_) return;
  ++ticks_;
  if (!port_.IsOpen()) {
    const SerialState state = port_.State();
    if (state == SerialState::Busy) return End("is in use by another program");
    if (state != SerialState::Opening) return End("cannot be opened");
    if (ticks_ > kOpeningTicks) End("does not open: pull it out and plug it in again");
    return;
  }
  std::array<Byte, kMostOfAnAnswer> room;
  const std::size_t count = port_.Read(room);
  if (answer_.size() + count <= kMostOfAnAnswer)
    answer_.insert(answer_.end(), room.begin(), room.begin() + static_cast<std::ptrdiff_t>(count));
  const std::optional<AdapterRole> role = Judge();
  if (role && role != AdapterRole::IOModule) return Take(*role);
  if (role) {
    module_ = true;
    answer_.clear();
  }
  if (next_ == 0 || ticks_ >= questions_[next_ - 1].ticks) AskNext();
}

void RoleInquiry::AskNext() {
  const auto skipped = [](const Question& question) {
    return question.kind == Kind::Yoke || question.kind == Kind::Cluster;
  };
  while (module_ && next_ < known_ && skipped(questions_[next_])) ++next_;
  if (module_ && next_ >= known_) return Take(AdapterRole::IOModule);
  if (next_ == questions_.size()) return End("has nobody who answers");
  ticks_ = 0;
  answer_.clear();
  words_ = "is being asked, " + std::to_string(next_ * 100 / questions_.size()) + " %";
  port_.Write(questions_[next_++].frame);
}

// A gauge's own letters may look like a yoke's: what answers the question to a gauge is one.
std::optional<AdapterRole> RoleInquiry::Judge() const {
  const Kind asked = next_ > 0 ? questions_[next_ - 1].kind : Kind::Listen;
  YokeReply yoke;
  if (asked != Kind::Gauge && ReadYokeReply(answer_, 0, yoke) == YokeReplyKind::Correct)
    return AdapterRole::Yoke;
  if (IsReplyEnvelope(answer_)) {
    const int type = ReplyGaugetype(ReplyView(answer_.data(), kReplySize));
    return type == kGaugetypeIOModule || type == 0 ? AdapterRole::IOModule : AdapterRole::GaugeBus;
  }
  const bool cluster = answer_.size() == kECReplySize && answer_.front() == kClusterAnswerStart;
  return cluster ? std::optional(AdapterRole::EngineCluster) : std::nullopt;
}

}  // namespace tvx
