#include "tests/Test.h"
#include "tests/virtualcockpit/Bytes.h"
#include "virtualcockpit/bus/Frames.h"

namespace tvx::vc {
namespace {

using test::operator+;

std::string TextOf(const Frame& frame) {
  if (const auto* address = std::get_if<AddressFrame>(&frame))
    return std::to_string(address->gaugeID) + "=>" + std::to_string(address->newGaugeID);
  const auto& command = std::get<CommandFrame>(frame);
  return std::to_string(command.gaugeID) + ":" + std::to_string(command.command) + ":" +
         std::to_string(command.value);
}

struct Decoded {
  Texts frames;
  FrameDecoder decoder;
};
Decoded Decode(const Bytes& bytes, std::size_t piece) {
  Decoded decoded;
  for (std::size_t at = 0; at < bytes.size(); at += piece)
    decoded.decoder.Take(ByteView(bytes).subspan(at, std::min(piece, bytes.size() - at)),
                         [&](const Frame& frame) { decoded.frames.push_back(TextOf(frame)); });
  return decoded;
}

const Bytes kFrame{0x00, 0x0C, 0x3C, 0x2D, 0x03, 0xFF};    // 12, command 3, -300
const Bytes kZero{0x00, 0x05, 0x08, 0x01, 0x02, 0xFF};     // 5, command 0, 0
const Bytes kLargest{0x00, 0x07, 0x5B, 0xFF, 0xFF, 0xFF};  // 7, command 5, 65535
const Bytes kAddress{0x00, 0x14, 0x2C, 0x16, 0xAA, 0xFF, 0x20};
const Bytes kAddressZero{0x00, 0x00, 0x2C, 0x00, 0xAA, 0xFF, 0x20};

// However the bytes are cut, every whole frame is found, and what lies between is told apart.
TEST(FrameDecoder, FindsFramesInPiecesOfAnySize) {
  const struct {
    const char* name;
    Bytes bytes;
    Texts frames;
    std::uint64_t garbage, fillers;
  } cases[] = {
      {"negative", kFrame, {"12:3:-300"}, 0, 0},
      {"end marks as data", kLargest + kZero, {"7:5:65535", "5:0:0"}, 0, 0},
      {"side frame behind its filler", kZero + Bytes{0xFF} + kFrame, {"5:0:0", "12:3:-300"}, 0, 1},
      {"new address and its blank", kAddress + kZero, {"20=>22", "5:0:0"}, 0, 1},
      {"new address zero", kAddressZero, {"0=>0"}, 0, 1},
      {"gauge zero", {0x00, 0x00, 0x78, 0x01, 0x02, 0xFF}, {"0:7:0"}, 0, 0},
      {"noise before", Bytes{0x5A, 0x00, 0x11} + kZero, {"5:0:0"}, 3, 0},
      {"cut frame before", Bytes{0x00, 0x0C, 0x3C} + kFrame, {"12:3:-300"}, 3, 0},
      {"zero before", Bytes{0x00} + kLargest, {"7:5:65535"}, 1, 0},
      {"missing end", Bytes{0x00, 0x05, 0x08, 0x01, 0x02} + kFrame, {"12:3:-300"}, 5, 0},
      {"always set bit missing", Bytes{0x00, 0x05, 0x50, 0x01, 0x02, 0xFF} + kZero, {"5:0:0"}, 5, 1},
      {"nothing whole", {0x00, 0x05, 0x08, 0x01}, {}, 0, 0},
  };
  for (const auto& c : cases) {
    for (const std::size_t piece : {1u, 2u, 5u, 100u}) {
      SCOPED_TRACE(std::string(c.name) + " in pieces of " + std::to_string(piece));
      const Decoded decoded = Decode(c.bytes, piece);
      EXPECT_EQ(decoded.frames, c.frames);
      EXPECT_EQ((std::tuple{decoded.decoder.Frames(), decoded.decoder.Garbage(), decoded.decoder.Fillers()}),
                (std::tuple{c.frames.size(), c.garbage, c.fillers}));
    }
  }
}

}  // namespace
}  // namespace tvx::vc
