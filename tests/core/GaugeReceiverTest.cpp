#include "core/GaugeReceiver.h"
#include "tests/fakes/CockpitRig.h"

namespace tvx::gaugereceivertest {

Bytes Reply(Byte gauge, Byte type) {
  Bytes reply(kReplySize, 1);
  reply[0] = 0x00;
  reply[1] = gauge;
  reply[2] = type;
  reply[24] = 0xFF;
  return reply;
}

struct ReceiverRig : CockpitRig {
  GaugeReceiver receiver{model, serial, cycle, sim, special};
  Registration events;
  ReceiverRig() {
    events = Bus().SetHandler([this](SerialEvent event) { receiver.OnComm(event, false); });
    Start();
  }
};

TEST(GaugeReceiver, KeepsWellFormedRepliesAndDiscardsTheRest) {
  const Bytes good = Reply(12, 101);
  Bytes badEnd = good;
  badEnd[24] = 0xFE;
  const std::tuple<const char*, Bytes, bool, std::size_t> cases[] = {
      {"a reply", good, true, 0},
      {"a wrong last byte", badEnd, false, 0},
      {"24 bytes wait for their last", {good.begin(), good.end() - 1}, false, 24}};
  for (const auto& [what, bytes, kept, left] : cases) {
    ReceiverRig rig;
    rig.Bus().Arrive(bytes);
    EXPECT_EQ(rig.serial.ReplyReceived(), kept) << what;
    EXPECT_EQ(rig.receiver.ReplyText().size(), kept ? kReplySize : 0) << what;
    EXPECT_EQ(rig.Bus().Waiting(), left) << what;
  }
}

TEST(GaugeReceiver, ABadReplyTakesWhatWaitsBehindItAlong) {
  ReceiverRig rig;
  rig.Bus().Arrive(Bytes(kReplySize + 3, 0x0C));
  EXPECT_EQ(rig.Bus().Waiting(), 0u);
  rig.Bus().Arrive(Reply(13, 101));
  ASSERT_EQ(rig.receiver.ReplyText().size(), kReplySize);
  EXPECT_EQ(rig.receiver.ReplyText()[1], 13);
}

TEST(GaugeReceiver, BreakAndFramingErrorsDiscardWhatWaits) {
  for (const SerialEvent event : {SerialEvent::Break, SerialEvent::Framing}) {
    ReceiverRig rig;
    rig.Bus().Arrive({0x00, 0x0C});
    rig.Bus().Raise(event);
    EXPECT_EQ(rig.Bus().Waiting(), 0u);
    rig.Bus().Arrive({1, 2, 3, 4, 5, 6, 7});
    rig.Bus().Raise(SerialEvent::Received);  // out of turn: seven bytes are no reply
    EXPECT_FALSE(rig.serial.ReplyReceived());
    EXPECT_EQ(rig.Bus().Waiting(), 0u);
  }
}

}  // namespace tvx::gaugereceivertest
