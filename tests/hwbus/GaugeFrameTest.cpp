#include "hwbus/GaugeFrame.h"
#include "tests/Test.h"

namespace tvx::gaugeframetest {

TEST(GaugeFrame, CommandFramesByteForByte) {
  const std::tuple<int, int, std::int32_t, GaugeFrame> cases[] = {
      {12, 3, -300, {0x00, 0x0C, 0x3C, 0x2D, 0x03, 0xFF}},
      {5, 0, -1, {0x00, 0x05, 0x0D, 0x01, 0x02, 0xFF}},
      {0, 7, 0, {0x00, 0x00, 0x78, 0x01, 0x02, 0xFF}},
      {255, 15, 65535, {0x00, 0xFF, 0xFB, 0xFF, 0xFF, 0xFF}},
      {1, 5, 1079, {0x00, 0x01, 0x59, 0x37, 0x06, 0xFF}},
      {1, 5, 512, {0x00, 0x01, 0x5A, 0x01, 0x02, 0xFF}},
      {1, 5, -65535, {0x00, 0x01, 0x5F, 0xFF, 0xFF, 0xFF}},
      {1, 0x1F3, 0, {0x00, 0x01, 0x38, 0x01, 0x02, 0xFF}},
  };
  for (const auto& [gaugeID, command, value, frame] : cases) {
    SCOPED_TRACE(testing::Message() << gaugeID << ' ' << command << ' ' << value);
    EXPECT_EQ(BuildGaugeFrame(gaugeID, command, value), frame);
  }
}

TEST(GaugeFrame, EveryMagnitudeComesBackAndHidesNoStartByte) {
  for (std::int32_t value = -65535; value <= 65535; ++value) {
    const auto f = BuildGaugeFrame(9, 5, value);
    ASSERT_TRUE(f);
    const auto& b = *f;
    const int magnitude = ((b[4] & 0xFD) | (b[2] & 0x02)) * 256 + ((b[3] & 0xFE) | (b[2] & 0x01));
    ASSERT_EQ((b[2] & 0x04) != 0 ? -magnitude : magnitude, value);
    ASSERT_TRUE(b[2] != 0 && b[3] != 0 && b[4] != 0) << value;
  }
}

TEST(GaugeFrame, WhatDoesNotFitGivesNoFrame) {
  EXPECT_FALSE(BuildGaugeFrame(1, 5, 65536));
  EXPECT_FALSE(BuildGaugeFrame(1, 5, -65536));
  EXPECT_FALSE(BuildGaugeFrame(-1, 5, 0));
  EXPECT_FALSE(BuildGaugeFrame(256, 5, 0));
}

TEST(GaugeFrame, ReplyEnvelope) {
  Bytes reply(kReplySize, 0x20);
  reply.front() = 0x00;
  reply.back() = 0xFF;
  EXPECT_TRUE(IsReplyEnvelope(reply));
  for (const std::size_t end : {0u, 24u}) {
    auto changed = reply;
    changed[end] ^= 1;
    EXPECT_FALSE(IsReplyEnvelope(changed)) << end;
  }
  EXPECT_FALSE(IsReplyEnvelope(ByteView(reply).first(24)));
  reply.insert(reply.begin() + 1, 0x20);
  EXPECT_FALSE(IsReplyEnvelope(reply));
  EXPECT_FALSE(IsReplyEnvelope({}));
}

}  // namespace tvx::gaugeframetest
