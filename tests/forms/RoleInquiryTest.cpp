#include "app/RoleInquiry.h"
#include "tests/Test.h"
#include "tests/fakes/FakeSerialPort.h"

namespace tvx {
namespace {

Bytes Reply(Byte id, Byte type, Byte ninth = 0, Byte twelfth = 0) {
  Bytes reply(25, 0x20);
  reply.front() = 0x00;
  reply.back() = 0xFF;
  reply[1] = id;
  reply[2] = type;
  reply[8] = ninth;
  reply[11] = twelfth;
  return reply;
}

TEST(RoleInquiry, KnowsEachByItsAnswerAndLeavesTheLineClosed) {
  const std::pair<Bytes, Bytes> module{{0x00, 10}, Reply(10, 10)};
  const struct {
    const char* name;
    std::vector<std::pair<Bytes, Bytes>> answers;  // to the questions that begin so, each in two pieces
    std::optional<AdapterRole> role;
  } rows[] = {{"module", {module}, AdapterRole::IOModule},
              {"module among gauges", {module, {{0x00, 40}, Reply(40, 1)}}, AdapterRole::GaugeBus},
              {"yoke", {{{0x00, 2, 0x87}, Reply(2, 9, 'P', 'S')}}, AdapterRole::Yoke},
              {"cluster",
               {{{'F'}, {0xFF, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, '2', '7'}}},
               AdapterRole::EngineCluster},
              {"known gauge", {{{0x00, 40}, Reply(40, 1, 'P', 'S')}}, AdapterRole::GaugeBus},
              {"last gauge", {{{0x00, 255}, Reply(255, 1)}}, AdapterRole::GaugeBus},
              {"nobody", {}, std::nullopt}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    FakeSerialPort port;
    RoleInquiry inquiry(port);
    inquiry.Start(1, {1, 2}, {40});
    std::size_t heard = 0;
    Bytes late;
    for (int tick = 0; inquiry.Running() && tick < 2000; ++tick) {
      port.Arrive(std::exchange(late, {}));
      for (; heard < port.Writes.size(); ++heard) {
        const Bytes& frame = port.Writes[heard];
        for (const auto& [asked, reply] : row.answers) {
          if (frame.size() < asked.size() || !std::equal(asked.begin(), asked.end(), frame.begin())) continue;
          port.Arrive(ByteView(reply).first(7));
          late.assign(reply.begin() + 7, reply.end());
        }
      }
      inquiry.Tick();
    }
    EXPECT_EQ(inquiry.Found(), row.role);
    EXPECT_EQ(port.State(), SerialState::Closed);
    for (const Bytes& frame : port.Writes)
      EXPECT_TRUE(frame.size() != 6 || frame[2] >> 4 == 7) << "nothing but the question for a report";
  }
}

TEST(RoleInquiry, APortThatDoesNotOpenEndsIt) {
  FakeSerialPort port;
  RoleInquiry inquiry(port);
  port.OpenResult = SerialState::Busy;
  inquiry.Start(1, {}, {});
  inquiry.Tick();
  EXPECT_EQ(inquiry.Words(), "is in use by another program");
  port.OpenResult = SerialState::Opening;
  inquiry.Start(1, {}, {});
  for (int tick = 0; tick < 200; ++tick) inquiry.Tick();
  EXPECT_FALSE(inquiry.Running());
  EXPECT_EQ(inquiry.Words(), "does not open: pull it out and plug it in again");
}

}  // namespace
}  // namespace tvx
