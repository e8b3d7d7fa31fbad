#include "platform/ByteRing.h"
#include "tests/Test.h"

namespace tvx {
namespace {

TEST(ByteRing, KeepsTheNewestInTheirOrder) {
  ByteRing<8> ring;
  const auto pop = [&ring](std::size_t most) {
    std::string out(most, ' ');
    out.resize(ring.Pop({reinterpret_cast<Byte*>(out.data()), most}));
    return out;
  };
  const auto push = [&ring](std::string_view text) {
    for (const char c : text) ring.Push(static_cast<Byte>(c));
  };
  push("abcde");
  EXPECT_EQ(pop(3), "abc");
  push("fghijklm");  // over the end of the room, and over the oldest
  EXPECT_EQ(ring.Size(), 8u);
  EXPECT_EQ(pop(5), "fghij");
  push("n");
  EXPECT_EQ(pop(9), "klmn");
  push("o");
  ring.Clear();
  EXPECT_EQ(pop(9), "");
}

}  // namespace
}  // namespace tvx
