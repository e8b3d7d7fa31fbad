#include "simlink/aircraft/AircraftSwitch.h"
#include "tests/fakes/ScratchFolder.h"
#include "tests/simlink/Fixture.h"

namespace tvx::aircrafttest {

TEST(AircraftList, PatternsFitWholeTexts) {
  for (const auto& [pattern, text] : {std::pair{"C172", "c172"},
                                      {"b738*", "B738"},
                                      {"b738*", "b738_4k.acf"},
                                      {"*.acf", "x.acf.acf"},
                                      {"C1?2", "C152"},
                                      {"*a*b", "xaxxb"},
                                      {"**", ""}})
    EXPECT_TRUE(FitsPattern(pattern, text)) << pattern << text;
  for (const auto& [pattern, text] :
       {std::pair{"C17", "C172"}, {"C172", "C17"}, {"C1?2", "C12"}, {"*a*b", "xbxxa"}, {"", ""}})
    EXPECT_FALSE(FitsPattern(pattern, text)) << pattern << text;
}

TEST(AircraftList, SurvivesItsFileAndKeepsWhatIsNoLine) {
  AircraftList list;
  list.On = true;
  list.Lines = {{"C172", "My -> Cockpit.cfg"}, {"b738*", "Boeing.cfg"}};
  list.Lines[0].File = "My Cockpit.cfg";
  list.Unread = {"what is this?"};
  EXPECT_EQ(ReadAircraftList(WriteAircraftList(list)), list);
  const AircraftList strange = ReadAircraftList("on\r\nC172 -> a.cfg\r\n->\n\n");
  EXPECT_FALSE(strange.On) << "without its title the file is another one";
  EXPECT_EQ(strange.Unread, (Texts{"on", "->"}));
  EXPECT_EQ(strange.Lines, (std::vector<AircraftLine>{{"C172", "a.cfg"}}));
}

struct AircraftTest : LinkTest, AircraftSwitch::Host {
  AircraftTest() {
    model.ConfigFileName = "Default.cfg";
    sim.OpenUDP();
    aircraft = std::make_unique<AircraftSwitch>(model, sim, boxes, clock, *this);
    EXPECT_TRUE(aircraft->SetList({true, {{"C172", "Trainer.cfg"}, {"air*", "Liner.cfg"}}, {}}));
    Seconds(1);
  }
  bool MayChangeConfiguration() const override { return may; }
  bool UseConfiguration(const std::string& file) override {
    used.push_back(file);
    if (loads) model.ConfigFileName = file;
    return loads;
  }
  // The program's second; the simulator sends every letter that it was asked for, or those below `most`.
  void Seconds(int seconds, int most = AircraftName::kLetters) {
    for (int i = 0; i < seconds; ++i) {
      std::string letters = icao;
      letters.resize(AircraftName::kIcaoLetters);
      letters += path;
      letters.resize(AircraftName::kLetters);
      for (int letter = 0; letter < most; ++letter) {
        const float value = letters[static_cast<std::size_t>(letter)];
        socket.Deliver(RrefDatagram({{AircraftName::kFirstIdentifier + letter, value}}));
      }
      clock.Advance(1000);
      aircraft->Tick();
    }
  }

  const ScratchFolder folder;
  std::string icao = "C172", path = "Aircraft/x/trainer.acf";
  bool may = true, loads = true;
  Texts used;
  std::unique_ptr<AircraftSwitch> aircraft;
};

TEST_F(AircraftTest, TheConfigurationFollowsOnceForEachAircraft) {
  Seconds(2);
  EXPECT_EQ(used, Texts{}) << "letters may still be another aircraft's";
  Seconds(2);
  EXPECT_EQ(used, Texts{"Trainer.cfg"});
  EXPECT_EQ(aircraft->Words(), "For C172 (trainer.acf)");
  model.ConfigFileName = "Other.cfg";  // the user's own choice
  Seconds(5);
  icao = "B738";
  path = "Aircraft/y/airliner.acf";
  Seconds(5);
  EXPECT_EQ(used, (Texts{"Trainer.cfg", "Liner.cfg"})) << "by its file's name";
  icao = "PA28";
  path = "";
  Seconds(5);
  EXPECT_EQ(used.size(), 2u);
  EXPECT_EQ(aircraft->Words(), "No configuration is listed for PA28; this one stays");
}

TEST_F(AircraftTest, WaitsWhileTheConfigurationIsEditedAndSaysWhatFails) {
  may = loads = false;
  Seconds(5);
  EXPECT_EQ(used, Texts{});
  EXPECT_EQ(aircraft->Words(), "Trainer.cfg for C172 (trainer.acf) waits until the configuration is closed");
  may = true;
  Seconds(5);
  EXPECT_EQ(used, Texts{"Trainer.cfg"}) << "tried once";
  EXPECT_EQ(aircraft->Words(), "Trainer.cfg for C172 (trainer.acf) cannot be loaded; this one stays");
}

// X-Plane versions that do not have the path are silent about it.
TEST_F(AircraftTest, ATypeAloneIsEnoughAndHalfATypeIsNot) {
  Seconds(10, 3);
  EXPECT_EQ(used, Texts{});
  Seconds(3, AircraftName::kIcaoLetters);
  EXPECT_EQ(used, Texts{"Trainer.cfg"});
  EXPECT_EQ(aircraft->Words(), "For C172");
}

TEST_F(AircraftTest, WhatWasAskedForIsCancelledBeforeTheLinkCloses) {
  bool pathAsked = false;
  const auto count = [&] {
    int asked = 0;
    for (const std::string& sent : socket.TakeSent()) {
      if (sent.starts_with("RREF")) asked += sent[5] != 0 ? 1 : -1;
      pathAsked = pathAsked || sent.find("/acf_relative_path[0]") != std::string::npos;
    }
    return asked;
  };
  Settle();
  EXPECT_EQ(count(), AircraftName::kLetters);
  EXPECT_TRUE(pathAsked);
  sim.CloseUDP();
  Settle();
  EXPECT_EQ(count(), -AircraftName::kLetters);
  sim.OpenUDP();
  Seconds(5);
  EXPECT_EQ(used, Texts{"Trainer.cfg"});
  AircraftList off = aircraft->List();
  off.On = false;
  EXPECT_TRUE(aircraft->SetList(off));
  Settle();
  count();
  Seconds(1, 0);
  Settle();
  EXPECT_EQ(count(), -AircraftName::kLetters);
  EXPECT_EQ(aircraft->Words(), "");
}

}  // namespace tvx::aircrafttest
