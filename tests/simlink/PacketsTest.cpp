// Every datagram, byte for byte.
#include "tests/simlink/Fixture.h"

namespace tvx::packetstest {

const std::string kZeros(500, '\0');

std::string Text(const Datagram& d) {
  return {d.bytes.begin(), d.bytes.begin() + static_cast<long>(d.size)};
}

TEST(Packets, AreBuiltByteForByte) {
  const std::string longest(500, 'p');
  const std::string m999f = Hex("00 C0 79 C4"), m999i = Hex("FF FF FC 19");
  const auto times = [](int n, const std::string& s) {
    std::string all;
    for (int i = 0; i < n; ++i) all += s;
    return all;
  };
  const std::tuple<const char*, bool (*)(Datagram&), std::string> cases[] = {
      {"DSEL", [](Datagram& d) { return BuildDSEL(20, d); }, Hex("44 53 45 4C 30 14 00 00 00")},
      {"USEL", [](Datagram& d) { return BuildUSEL(255, d); }, Hex("55 53 45 4C 30 FF 00 00 00")},
      {"float", [](Datagram& d) { return BuildDataFloat(8, 0, 1.0f, d); },
       Hex("44 41 54 41 30 08 00 00 00 00 00 80 3F") + times(7, m999f)},
      {"integer", [](Datagram& d) { return BuildDataInt(8, 2, 1, d); },
       Hex("44 41 54 41 30 08 00 00 00") + times(2, m999i) + Hex("00 00 00 01") + times(5, m999i)},
      {"negative integer", [](Datagram& d) { return BuildDataInt(255, 7, -2, d); },
       Hex("44 41 54 41 30 FF 00 00 00") + times(7, m999i) + Hex("FF FF FF FE")},
      {"CHAR", [](Datagram& d) { return BuildCHAR('x', "10.0.0.2", d); }, "CHAR0x10.0.0.20000000"},
      {"CHAR long host", [](Datagram& d) { return BuildCHAR(1, "255.255.255.255.9", d); },
       "CHAR0\x01"
       "255.255.255.255"},
      {"CMND", [](Datagram& d) { return BuildCMND("sim/b", d); }, "CMND0sim/b"},
      {"CMND longest", [](Datagram& d) { return BuildCMND(std::string(1400, 'c'), d); },
       "CMND0" + std::string(1400, 'c')},
      {"DREF", [](Datagram& d) { return BuildDREF("a/b", 1.0f, d); },
       "DREF0" + Hex("00 00 80 3F") + "a/b" + kZeros.substr(0, 497)},
      {"DREF longest", [](Datagram& d) { return BuildDREF(std::string(500, 'p'), 1.0f, d); },
       "DREF0" + Hex("00 00 80 3F") + longest},
      {"RREF", [](Datagram& d) { return BuildRREF("a/b", 20, 7, d); },
       Hex("52 52 45 46 00 14 00 00 00 07 00 00 00") + "a/b" + kZeros.substr(0, 397)},
      {"RREF longest", [](Datagram& d) { return BuildRREF(std::string(400, 'p'), 0, 0, d); },
       "RREF" + kZeros.substr(0, 9) + longest.substr(0, 400)},
  };
  for (const auto& [name, build, expected] : cases) {
    Datagram packet;
    EXPECT_TRUE(build(packet)) << name;
    EXPECT_EQ(Text(packet), expected) << name;
  }
}

TEST(Packets, RrefIdentifierHasARoundedHighByte) {
  const std::pair<int, const char*> cases[] = {{100, "64 00"}, {128, "80 00"},  {129, "81 01"},
                                               {255, "FF 01"}, {256, "00 01"},  {383, "7F 01"},
                                               {384, "80 02"}, {32766, "FE 80"}};
  for (const auto& [identifier, bytes] : cases) {
    Datagram packet;
    ASSERT_TRUE(BuildRREF("a", 300, identifier, packet));
    EXPECT_EQ(Text(packet).substr(5, 8), Hex("2C 00 00 00 ") + Hex(bytes) + Hex("00 00")) << identifier;
  }
}

TEST(Packets, EntriesAreCutAtFixedDistances) {
  const std::tuple<std::string, int, std::optional<std::string_view>> cases[] = {
      {"#1:sim/a\r\n#2:sim/b\r\n", 1, "sim/a"},
      {"#1:sim/a\r\n#2:sim/b\r\n", 2, "sim/b"},
      {"#1:sim/a\r\n#2:sim/b\r\n", 3, std::nullopt},
      {"#1:sim/a\r\n#2:sim/b", 2, std::nullopt},  // no line end
      {"#1:sim/a\n#2:sim/b\r\n", 1, "sim/a\n#2:sim/b"},
      {"text #2:x\r\n", 2, "x"},                // the key counts wherever it stands
      {"#1:a\r\n#12:sim/c\r\n", 12, ":sim/c"},  // a longer number keeps its ":"
      {"#1:", 1, std::nullopt},
  };
  for (const auto& [lines, number, entry] : cases)
    EXPECT_EQ(CutEntry(lines, number), entry) << lines << number;
}

TEST(Packets, RecordCountsRoundHalvesToEven) {
  const std::tuple<std::size_t, std::size_t, int> cases[] = {
      {5, 8, 0},  {9, 8, 0},   {10, 8, 1},  {17, 8, 2},  {25, 8, 2},
      {33, 8, 4}, {23, 36, 0}, {24, 36, 1}, {59, 36, 2}, {95, 36, 2}};
  for (const auto& [bytes, size, count] : cases)
    EXPECT_EQ(RecordCount(bytes, size), count) << bytes << "/" << size;
}

// Each view is a heap block of its own size, so a sanitizer sees a single byte read past its end.
TEST(Packets, RecordsAreReadOnlyWhenTheyLieWithin) {
  const std::string rref = RrefDatagram({{0x0102, 2.5f}, {3, -1.0f}});
  EXPECT_EQ(ReadRrefRecord(View(rref), 0)->identifier, 0x0102);
  EXPECT_EQ(ReadRrefRecord(View(rref), 1)->value, -1.0f);
  const std::string data = DataDatagram({{20, 1.5f}});
  EXPECT_EQ(ReadDataGroup(View(data), 0)->index, 20);
  EXPECT_EQ(ReadDataGroup(View(data), 0)->values[7], 8.5f);
  for (std::size_t size = 0; size < 21; ++size) {
    const Bytes cut(rref.begin(), rref.begin() + static_cast<long>(size));
    EXPECT_EQ(ReadRrefRecord(cut, 0).has_value(), size >= 13) << size;
    EXPECT_FALSE(ReadRrefRecord(cut, 1)) << size;
    EXPECT_FALSE(ReadDataGroup(cut, 0)) << size;
    EXPECT_FALSE(ReadRrefRecord(cut, -1)) << size;
  }
}

TEST(Packets, Ise4NamesTheTargetOfTheDataOutput) {
  Datagram out;
  ASSERT_TRUE(BuildISE4("192.168.1.20", "49003", out));
  const std::string expected = std::string("ISE4\0\x40\0\0\0", 9) + "192.168.1.20" + std::string(4, '\0') +
                               "49003" + std::string("\0\0\0\x01\0\0\0", 7);
  EXPECT_EQ(std::string(out.View().begin(), out.View().end()), expected);
  EXPECT_TRUE(BuildISE4("123456789012345", "1234567", out));
  EXPECT_FALSE(BuildISE4("1234567890123456", "1", out) || BuildISE4("1", "12345678", out));
}

}  // namespace tvx::packetstest
