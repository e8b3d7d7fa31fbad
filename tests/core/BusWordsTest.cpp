#include "core/BusWords.h"
#include "tests/Test.h"

namespace tvx::buswordstest {

TEST(BusHealth, CountsWhatWasAskedAndSaysWhoIsSilent) {
  ConfigModel model;
  model.Gauges[14].GaugeType = 3;
  model.Gauges[15].GaugeType = 4;
  model.Gaugetypes[1] = {3, "Heading Indicator  "};
  model.Gaugetypes[2] = {3, "another name for it"};
  BusHealth health;
  health.Add(14);
  health.Add(15);
  health.Begin(1000);
  const auto ask = [&health](int gaugeID, std::int64_t atMs, bool answers) {
    health.NoteAsked(gaugeID, atMs);
    if (answers) health.NoteAnswer(gaugeID, atMs + 10);
    health.Watch(atMs + BusHealth::kAnswerMs);
  };
  const auto words = [&](std::int64_t nowMs) { return BusTroubleWords(model, health, {}, nowMs); };
  ask(14, 1000, true);
  ask(15, 1000, true);
  ask(14, 3400, false);
  EXPECT_EQ(words(4100), "") << "one answer that got lost";
  ask(14, 5800, false);
  EXPECT_EQ(words(4000), "") << "not for long enough";
  EXPECT_EQ(words(6400), "014 Heading Indicator has not answered for 5 s");
  ask(15, 5800, false);
  ask(15, 8200, false);
  EXPECT_EQ(words(9010), "014 Heading Indicator has not answered for 8 s, nor another one");
  health.NoteRest();
  ask(14, 8240, false);
  health.NoteDamaged();
  const std::vector<AskedGauge> lines = AskedGauges(model, health, 9010);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].LastAnswer + "|" + lines[0].Every + "|" + lines[0].Answers, "8.0 s ago|2.4 s|1");
  EXPECT_EQ(lines[0].Missed + lines[0].Damaged + lines[1].Missed + lines[1].Damaged, "3021");
  health.NoteDamaged();
  EXPECT_EQ(health.Gauges()[0].damaged, 1u) << "asked last, and no other had begun";
  EXPECT_TRUE(lines[0].Silent && lines[1].Silent);
  EXPECT_EQ(health.NoteAnswer(14, 9020), 3u);
  EXPECT_FALSE(AskedGauges(model, health, 9030)[0].Silent);
}

TEST(BusLoadWords, NameOnlyWhatThereIs) {
  const std::tuple<std::uint32_t, std::uint64_t, const char*> rows[] = {
      {0, 0, "The line is 40 % busy."},
      {1, 0, "The line is 40 % busy. 1 value was replaced by newer ones before they left."},
      {9, 0, "The line is 40 % busy. 9 values were replaced by newer ones before they left."},
      {0, 1, "The line is 40 % busy. 1 tick could not be sent; what they carried went out later."},
      {0, 2, "The line is 40 % busy. 2 ticks could not be sent; what they carried went out later."}};
  for (const auto& [superseded, dropped, words] : rows) {
    BusLoad load;
    load.percent = 40;
    load.superseded = superseded;
    EXPECT_EQ(BusLoadWords(load, dropped), words);
  }
}

}  // namespace tvx::buswordstest
