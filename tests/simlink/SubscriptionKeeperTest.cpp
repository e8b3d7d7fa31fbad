// The keeper of subscriptions on a clock that goes on only when a test says so.
#include <random>

#include "simlink/SubscriptionKeeper.h"
#include "tests/simlink/Fixture.h"

namespace tvx::subscriptionkeepertest {

using Keep = SubscriptionKeeper::Keep;
constexpr int kTickMs = 20;

// A simulator that reads once a frame what its buffer held, answers what it knows, and may lose datagrams.
struct ModelSimulator {
  static constexpr std::size_t kBuffer = 230, kReads = 148;
  std::set<int> known;  // identifiers on the wire that it has values for
  std::set<int> subscribed;
  std::deque<std::string> buffer;
  std::mt19937 chance{1};
  unsigned lostPerCent = 0;
  bool present = true;
  std::size_t overflowed = 0;

  bool Lost() { return chance() % 100 < lostPerCent; }
  void Take(const std::string& request) {
    if (!present || Lost()) return;
    if (buffer.size() < kBuffer) return buffer.push_back(request);
    ++overflowed;
  }
  void Restart() {
    subscribed.clear();
    buffer.clear();
  }
  // The identifiers whose values leave; empty where the datagram with them is lost.
  std::set<int> Frame() {
    for (std::size_t i = 0; present && i < kReads && !buffer.empty(); ++i, buffer.pop_front()) {
      const std::string& r = buffer.front();
      if (!r.starts_with("RREF")) continue;  // shorter: it asks for groups
      const int identifier = static_cast<Byte>(r[9]) + 256 * static_cast<Byte>(r[10]);
      if (r[5] == 0) subscribed.erase(identifier);
      if (r[5] != 0 && known.contains(identifier)) subscribed.insert(identifier);
    }
    return !present || Lost() ? std::set<int>() : subscribed;
  }
};

struct Keeper : testing::Test {
  void Ask(int identifier) { keeper.AskForDataref("sim/d", 20, identifier, Keep::Yes); }
  // What has left since the last call, as the log has it: "time:+identifier".
  void Collect() {
    for (const std::string& r : socket.TakeSent()) {
      sentAt.push_back(clock.now);
      simulator.Take(r);
      const bool dataref = r.starts_with("RREF");
      const int number =
          static_cast<Byte>(r[dataref ? 9 : 5]) + (dataref ? 256 * static_cast<Byte>(r[10]) : 0);
      const bool ends = dataref ? r[5] == 0 : r.starts_with("USEL");
      log << (log.tellp() > 0 ? " " : "") << clock.now - 1000 << ':' << (dataref ? "" : "g")
          << (ends ? '-' : '+') << number;
    }
  }
  // Ticks, and a frame of the simulator after every second tick.
  void Run(std::int64_t ms) {
    for (const std::int64_t end = clock.now + ms; clock.now < end;) {
      clock.Advance(kTickMs);
      if (clock.now / kTickMs % 2 == 0) {
        const std::set<int> values = simulator.Frame();
        if (!values.empty()) keeper.Heard();
        for (const int identifier : values) keeper.DatarefAnswered(identifier);
      }
      keeper.Tick();
      Collect();
    }
  }
  void Do(const std::string& step) {
    const int number = step.find_first_of("0123456789") == std::string::npos
                           ? 0
                           : std::stoi(step.substr(step.find_first_of("0123456789")));
    const std::string what = step.substr(0, step.find_first_of("0123456789"));
    if (what == "+") Ask(number);
    if (what == "-") keeper.CancelDataref("sim/d", number);
    if (what == "once+") keeper.AskForDataref("sim/d", 20, number, Keep::No);
    if (what == "g+") keeper.AskForGroup(number, Keep::Yes);
    if (what == "g-") keeper.CancelGroup(number);
    if (what == "knows") simulator.known.insert(number);
    if (what == "drops") simulator.known.erase(number), simulator.subscribed.erase(number);
    if (what == "run") Run(number);
    if (what == "open") keeper.Opened();
    if (what == "close") keeper.Close();
    if (what == "hold") keeper.Hold(true);
    if (what == "look") keeper.Hold(false);
    if (what == "quiet") log.str({});
    // So much leaves that the next request has to wait.
    if (what == "full") {
      for (int i = 0; i < 100; ++i) keeper.AskForDataref("sim/d", 20, 99, Keep::No);
      socket.Sent.clear();
    }
    Collect();
  }
  std::size_t MostAtOnce() const {
    std::size_t most = 0;
    for (std::size_t first = 0, last = 0; last < sentAt.size(); ++last) {
      while (sentAt[last] - sentAt[first] > SubscriptionKeeper::kWindowMs) ++first;
      most = std::max(most, last - first + 1);
    }
    return most;
  }
  void AskForKnown(int count) {
    for (int i = 0; i < count; ++i) simulator.known.insert(RrefIdentifierOnWire(i)), Ask(i);
    Collect();
  }
  bool AllKnownAnswered() const {
    return std::all_of(simulator.known.begin(), simulator.known.end(), [this](int identifier) {
      const auto answered = keeper.OfDataref(identifier).answeredMs;
      return answered && clock.now - *answered < 500;
    });
  }
  // Milliseconds until everything that the simulator knows arrives.
  std::int64_t TimeToComplete() {
    const std::int64_t begin = clock.now;
    while (!AllKnownAnswered() && clock.now - begin < 60000) Run(kTickMs);
    return clock.now - begin;
  }

  ConfigModel model;
  FakeUdpSocket socket;
  FakeClock clock;
  LinkSocket link{model, socket};
  SubscriptionKeeper keeper{link, clock};
  ModelSimulator simulator;
  std::ostringstream log;
  std::vector<std::int64_t> sentAt;
};

struct Script {
  const char *name, *steps, *sent;
};

class KeeperScript : public Keeper, public testing::WithParamInterface<Script> {};

TEST_P(KeeperScript, Sends) {
  std::istringstream steps(GetParam().steps);
  for (std::string step; steps >> step;) Do(step);
  EXPECT_EQ(log.str(), GetParam().sent);
}

// Identifier 1 mostly stands for the rest, which answers all the time.
INSTANTIATE_TEST_SUITE_P(
    All, KeeperScript,
    testing::Values(
        Script{"AnsweredIsLeftAlone", "knows1 +1 run30000", "0:+1"},
        Script{"UnansweredIsAskedMoreAndMoreSeldom", "knows1 +1 +5 run100000",
               "0:+1 0:+5 1000:+5 3000:+5 7000:+5 15000:+5 31000:+5 61000:+5 91000:+5"},
        Script{"ASilentSimulatorIsAskedOnceASecond", "+5 run4000", "0:+5 1000:+5 2020:+5 3020:+5"},
        Script{"WhatFallsSilentIsAskedAgain", "knows1 knows2 +1 +2 run1000 drops2 run10200",
               "0:+1 0:+2 4140:+2 5140:+2 7140:+2 11140:+2"},
        Script{"WhatStayedAwayWakesTheOthers", "knows1 +1 +5 run10000 +6 run10000 quiet knows6 run6000",
               "25000:+6 25040:+5"},
        Script{"CancelsGoFirst", "knows1 knows2 +1 +2 run120 quiet full +3 -1 g+4 g-7 run200",
               "240:-1 240:g-7 240:+3 240:g+4"},
        Script{"WhatIsCancelledBeforeItLeftNeverDoes", "full +3 once+4 once+5 -3 -4 run200",
               "120:-3 120:-4 120:+5"},
        Script{"OneCancelIsEnough", "full -3 -3 g-4 g-4 run200 -3", "120:-3 120:g-4 200:-3"},
        Script{"AskedAnewAfterItsCancel", "full +3 -3 +3 run200", "120:-3 120:+3"},
        Script{"OnceMeansOnce", "once+3 run9000", "0:+3"},
        Script{"CancelledIsNotAskedAgain", "+3 run1500 -3 run9000", "0:+3 1000:+3 1500:-3"},
        Script{"AClosedLinkSendsItsCancelsOnly", "+1 run120 full +2 -1 close run5000", "0:+1 240:-1"},
        Script{"OpenedAgainWhatDoesNotComeIsAskedFor",
               "knows1 +1 +2 run2000 close run50000 quiet drops2 open run900 run200", "53000:+2"},
        Script{"NothingIsJudgedWhileNobodyLooks", "knows1 +1 +2 run500 hold run9000 look run900 run200",
               "0:+1 0:+2 10500:+2"}),
    [](const auto& row) { return row.param.name; });

TEST_F(Keeper, ThreeHundredAreCompleteInTime) {
  // A start as the program makes it: everything is asked for, given up, and asked for again.
  for (int g = 0; g <= 135; ++g) keeper.CancelGroup(g);
  for (int i = 0; i < 300; ++i) Ask(i);
  for (int i = 0; i < 300; ++i) keeper.CancelDataref("sim/d", i);
  AskForKnown(300);
  EXPECT_LT(TimeToComplete(), 3000);
  EXPECT_EQ(simulator.overflowed, 0u);
  EXPECT_EQ(MostAtOnce(), 100u);

  struct Case {
    unsigned lost;
    std::int64_t awayMs, within;
  };
  for (const Case& row :
       {Case{3, 0, 10000}, {0, 500, 5000}, {0, 10000, 5000}, {0, 200000, 5000}, {3, 90000, 10000}}) {
    SCOPED_TRACE(row.awayMs);
    simulator.lostPerCent = row.lost;
    simulator.present = false;
    Run(row.awayMs);
    simulator.Restart();
    simulator.present = true;
    Run(600);  // so that what came before does not count
    EXPECT_LT(TimeToComplete() + 600, row.within);
    EXPECT_EQ(simulator.overflowed, 0u);
    EXPECT_LE(MostAtOnce(), 100u);
  }
}

// The rest goes on answering; each that is lost is missed by itself.
TEST_F(Keeper, EachThatFallsSilentIsAskedForHoweverMuchElseArrives) {
  AskForKnown(190);
  Run(2000);
  for (int lost = 0; lost < 190; lost += 7) simulator.subscribed.erase(RrefIdentifierOnWire(lost));
  Run(2000);
  EXPECT_FALSE(AllKnownAnswered());
  EXPECT_LT(TimeToComplete(), 1500);
  sentAt.clear();
  Run(60000);
  EXPECT_TRUE(sentAt.empty()) << "all is well";
}

TEST_F(Keeper, TellsHowItStands) {
  simulator.known = {1};
  Ask(1);
  Ask(2);
  Run(5000);
  const SubscriptionState answering = keeper.OfDataref(1), silent = keeper.OfDataref(2);
  EXPECT_TRUE(answering.wanted && !answering.silent && silent.wanted && silent.silent);
  EXPECT_EQ(
      (std::tuple{answering.asked, answering.askedMs, answering.answeredMs, silent.asked, silent.askedMs}),
      (std::tuple{1, 1000, clock.now - clock.now % 40, 3, 4000}));
  EXPECT_FALSE(silent.answeredMs || keeper.OfDataref(3).wanted || keeper.OfGroup(-1).wanted);
}

TEST_F(Keeper, TheGoodbyeEndsInTwoSecondsAtTheLatest) {
  for (int i = 0; i < 3000; ++i) keeper.CancelDataref("sim/d", i);
  keeper.Close();
  Run(1980);
  EXPECT_TRUE(keeper.Closing() && link.IsOpen());
  Run(20);
  EXPECT_FALSE(keeper.Closing() || link.IsOpen());
  EXPECT_EQ(keeper.RequestsWaiting(), 0u);
}

TEST_F(Keeper, NeitherAnswersNorTicksAllocate) {
  AskForKnown(300);
  TimeToComplete();
  socket.Sent.clear();
  const std::size_t before = allocations;
  for (int i = 0; i < 300; ++i) {
    clock.Advance(kTickMs);
    keeper.Heard();
    for (int k = 0; k < 150; ++k) keeper.DatarefAnswered(k);
    keeper.Tick();
  }
  EXPECT_EQ(allocations, before);
  EXPECT_GT(socket.Sent.size(), 150u) << "the other half was asked for";
}

}  // namespace tvx::subscriptionkeepertest
