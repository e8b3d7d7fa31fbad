// Beacons, and the list of simulators that is made from them.
#include "simlink/beacon/SimulatorFinder.h"
#include "tests/Test.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeMulticastListener.h"

namespace tvx::findertest {

std::optional<Beacon> Read(std::string_view bytes) {
  return ReadBeacon({reinterpret_cast<const Byte*>(bytes.data()), bytes.size()});
}

TEST(Beacon, FieldByField) {
  const auto beacon = Read(BeaconBytes("SIM-PC", 2, 49001));
  ASSERT_TRUE(beacon);
  EXPECT_EQ((std::tuple{beacon->version, beacon->role, beacon->port, beacon->name, beacon->rakNetPort}),
            (std::tuple{121100, 2u, 49001, "SIM-PC", 49010}));
}

// Each case changes the good beacon of 30 bytes: "SIM-PC" at 21, its NUL at 27, the RakNet port at 28.
TEST(Beacon, WhatCountsAndWhatDoesNot) {
  using Change = void (*)(std::string&);
  const struct {
    const char* what;
    Change change;
    std::optional<std::string> name;  // std::nullopt: no beacon
    bool rakNet = true;
  } rows[] = {
      {"byte 4 is not looked at", [](std::string& b) { b[4] = '+'; }, "SIM-PC"},
      {"another label", [](std::string& b) { b[3] = 'M'; }, {}},
      {"major version 2", [](std::string& b) { b[5] = 2; }, {}},
      {"minor version 1 has no RakNet port", [](std::string& b) { b[6] = 1; }, "SIM-PC", false},
      {"a later minor version", [](std::string& b) { b[6] = 3; }, "SIM-PC"},
      {"Plane Maker", [](std::string& b) { b[7] = 2; }, {}},
      {"host 257", [](std::string& b) { b[8] = 1; }, {}},
      {"port 0", [](std::string& b) { b[19] = b[20] = 0; }, {}},
      {"20 bytes", [](std::string& b) { b.resize(20); }, {}},
      {"21 bytes", [](std::string& b) { b.resize(21); }, "", false},
      {"no name, a port", [](std::string& b) { b.erase(21, 7); }, ""},
      {"an empty name", [](std::string& b) { b.erase(21, 6); }, ""},
      {"a name without its end", [](std::string& b) { b.resize(27); }, "", false},
      {"one byte behind the name", [](std::string& b) { b.resize(29); }, "SIM-PC", false},
      {"filled to 500 bytes", [](std::string& b) { b.resize(523); }, "SIM-PC"},
      {"what no line can hold", [](std::string& b) { b.replace(21, 3, "\n\"\x7F"); }, "-PC"},
      {"a semicolon", [](std::string& b) { b[24] = ';'; }, "SIMPC"},
      {"63 letters and one of two bytes",
       [](std::string& b) { b.replace(21, 6, std::string(63, 'a') + "\xC3\xBC"); }, std::string(63, 'a')},
  };
  for (const auto& row : rows) {
    std::string bytes = BeaconBytes("SIM-PC");
    row.change(bytes);
    const auto beacon = Read(bytes);
    ASSERT_EQ(beacon.has_value(), row.name.has_value()) << row.what;
    if (!beacon) continue;
    EXPECT_EQ(beacon->name, *row.name) << row.what;
    EXPECT_EQ(beacon->rakNetPort.has_value(), row.rakNet) << row.what;
  }
}

TEST(Beacon, VersionsAsXplaneWritesThem) {
  const std::pair<std::int32_t, const char*> rows[] = {
      {104103, "10.41"},         {113201, "11.32"},          {115501, "11.55"},
      {110500, "11.05"},         {120012, "12.0"},           {120900, "12.0.9"},
      {121000, "12.1"},          {121100, "12.1.1"},         {124013, "12.4"},
      {0, "of unknown version"}, {-5, "of unknown version"}, {1000000, "of unknown version"}};
  for (const auto& [version, words] : rows) EXPECT_EQ(XplaneVersionWords(version), words);
}

struct FinderTest : testing::Test {
  Texts Lines() const {
    Texts lines;
    for (const FoundSimulator& simulator : finder.Found()) lines.push_back(simulator.Words());
    return lines;
  }

  FakeMulticastListener network;
  FakeClock clock;
  SimulatorFinder finder{network, clock};
  int changes = 0;
};

TEST_F(FinderTest, ListsEachOnceAndForgetsTheSilentOne) {
  const Registration listening = finder.Listen([this] { ++changes; });
  network.Deliver(BeaconBytes("VISUAL", 2), "10.0.0.9");
  network.Deliver(BeaconBytes("SIM-PC"), "10.0.0.7");
  network.Deliver(BeaconBytes("SIM-PC"), "10.0.0.7");
  network.Deliver(BeaconBytes("HERE", 3, 49100), "10.0.0.2", true);
  network.Deliver("BECN, but no beacon at all", "10.0.0.3");
  EXPECT_EQ(Lines(), (Texts{"X-Plane 12.1.1 on host SIM-PC at 10.0.0.7",
                            "X-Plane 12.1.1 on host HERE at 127.0.0.1 port 49100 (instructor station)",
                            "X-Plane 12.1.1 on host VISUAL at 10.0.0.9 (external visual)"}));
  EXPECT_EQ(changes, 3) << "what repeats is no change";
  clock.Advance(SimulatorFinder::kForgottenAfterMs - 1);
  network.Deliver(BeaconBytes("SIM-PC"), "10.0.0.7");
  finder.Tick();
  EXPECT_EQ(finder.Found().size(), 3u);
  clock.Advance(1);
  finder.Tick();
  EXPECT_EQ(Lines(), Texts{"X-Plane 12.1.1 on host SIM-PC at 10.0.0.7"});
  EXPECT_EQ(changes, 4);
  network.Deliver(BeaconBytes("RENAMED"), "10.0.0.7");
  EXPECT_EQ(Lines(), Texts{"X-Plane 12.1.1 on host RENAMED at 10.0.0.7"});
}

TEST_F(FinderTest, ListensOnlyWhileSomebodyWantsToKnow) {
  EXPECT_FALSE(network.open);
  std::optional<Registration> form = finder.Listen([this] { ++changes; });
  std::optional<Registration> follower = finder.Listen();
  EXPECT_TRUE(network.open);
  form.reset();
  EXPECT_TRUE(network.open);
  network.Deliver(BeaconBytes("SIM-PC"), "10.0.0.7");
  EXPECT_EQ(changes, 0);
  follower.reset();
  EXPECT_FALSE(network.open);
  EXPECT_TRUE(finder.Found().empty()) << "who listens next begins anew";
}

TEST_F(FinderTest, WhoIsToldMayLeaveAndMayOutliveTheFinder) {
  Registration outlives;
  {
    FakeMulticastListener other;
    SimulatorFinder shortLived(other, clock);
    std::optional<Registration> leaving;
    leaving = shortLived.Listen([&leaving] { leaving.reset(); });
    other.Deliver(BeaconBytes("SIM-PC"), "10.0.0.7");
    EXPECT_FALSE(other.open);
    outlives = shortLived.Listen();
  }
  outlives.End();
}

TEST_F(FinderTest, ANetworkThatIsMissingIsOneLineAndIsFoundWhenItComes) {
  network.openError = "no network card can hear the group";
  const Registration listening = finder.Listen([this] { ++changes; });
  EXPECT_EQ(finder.Trouble(), network.openError);
  finder.Tick();
  EXPECT_EQ(changes, 0);
  network.openError.clear();
  finder.Tick();
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(finder.Trouble(), "");
  network.Deliver(BeaconBytes("SIM-PC"), "10.0.0.7");
  EXPECT_EQ(finder.Found().size(), 1u);
}

TEST_F(FinderTest, AFloodOfBeaconsDoesNotGrowTheList) {
  const Registration listening = finder.Listen();
  for (std::uint16_t port = 1; port <= 500; ++port) network.Deliver(BeaconBytes("X", 1, port), "10.0.0.7");
  EXPECT_EQ(finder.Found().size(), SimulatorFinder::kMost);
}

}  // namespace tvx::findertest
