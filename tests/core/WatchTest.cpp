// What is told of links, and what is kept of all that was said.
#include "core/watch/LinkNews.h"
#include "core/watch/SaidLog.h"
#include "tests/Test.h"
#include "tests/fakes/FakeHost.h"

namespace tvx::watchtest {

// Each string is a link, a letter for each second: + well, - in trouble, . the program does not run. The
// result names the second and the links that were told of: "10:0 40:01".
std::string NewsOf(const Texts& links) {
  LinkNews news;
  std::string told;
  for (std::size_t second = 0; second < links[0].size(); ++second) {
    bool well[4] = {};
    for (std::size_t i = 0; i < links.size(); ++i) well[i] = links[i][second] == '+';
    const auto changed =
        news.Tick(links[0][second] != '.', {well, links.size()}, static_cast<std::int64_t>(second) * 1000);
    if (changed.empty()) continue;
    told += (told.empty() ? "" : " ") + std::to_string(second) + ":";
    for (const std::size_t link : changed) told += std::to_string(link);
  }
  return told;
}

std::string Times(int count, const char* letters) {
  std::string text;
  for (int i = 0; i < count; ++i) text += letters;
  return text;
}

TEST(LinkNewsTest, TellsWhatLastsOnceAndTogether) {
  const std::tuple<const char*, Texts, const char*> rows[] = {
      {"an ordinary start and stop", {Times(9, "-") + Times(30, "+") + Times(9, ".") + Times(20, "+")}, ""},
      {"missing from the start on", {Times(60, "-")}, "10:0"},
      {"gone for long, and back", {Times(20, "+") + Times(40, "-") + Times(40, "+")}, "24:0 64:0"},
      {"gone for a moment", {Times(20, "+---")}, ""},
      {"a loose plug", {Times(12, "+") + Times(20, "-----+++++")}, "16:0 51:0 116:0"},
      {"two within a moment are told together",
       {Times(20, "+") + Times(30, "-"), Times(22, "+") + Times(28, "-")},
       "24:01"},
      {"the second later: after the quiet time",
       {Times(20, "+") + Times(50, "-"), Times(30, "+") + Times(40, "-")},
       "24:0 54:1"},
      {"stopped, and run again with the same trouble",
       {Times(20, "-") + Times(10, ".") + Times(30, "-")},
       "10:0 40:0"},
  };
  for (const auto& [what, links, told] : rows) EXPECT_EQ(NewsOf(links), told) << what;
}

TEST(SaidLogTest, KeepsTheLastThousandLinesWithTheirTimes) {
  FakeClock clock;
  SaidLog log(clock);
  log.Note("first\r\nsecond");
  EXPECT_EQ(log.Lines().front(), "2024-03-05 14:30:15  first second");
  log.Note(std::string(499, 'x') + "\xc3\xa4");
  EXPECT_EQ(log.Lines().back().substr(21), std::string(499, 'x')) << "no half letter";
  for (int i = 0; i < 1000; ++i) log.Note(std::to_string(i));
  EXPECT_EQ(log.Lines().size(), 1000U);
  EXPECT_EQ(log.Lines().front().substr(21), "0");
}

TEST(SaidLogTest, NotesAStateWhenItChanges) {
  FakeClock clock;
  SaidLog log(clock);
  const std::tuple<int, const char*, std::size_t> rows[] = {
      {0, "silent for 2 s", 1}, {1000, "silent for 3 s", 1},  {1000, "answering", 1},
      {9000, "answering", 2},   {20000, "silent for 4 s", 3}, {20000, "silent for 9 s", 3}};
  for (const auto& [afterMs, state, lines] : rows) {
    clock.Advance(afterMs);
    log.NoteState("X-Plane", state);
    EXPECT_EQ(log.Lines().size(), lines) << state << " at " << clock.now;
  }
}

TEST(SaidLogTest, NotesBoxesAndTheirAnswers) {
  FakeClock clock;
  SaidLog log(clock);
  FakeMessageBoxes screen;
  NotedBoxes boxes(screen, log);
  Texts standing;
  const Registration watch = log.WatchBoxes([&](std::string_view text) { standing.emplace_back(text); });
  screen.answers = {kAnswerYes};
  screen.texts = {"12"};
  boxes.Show("a message");
  EXPECT_EQ(boxes.Ask("delete it?"), kAnswerYes);
  EXPECT_EQ(boxes.Ask("again?"), kAnswerNo);
  EXPECT_EQ(boxes.AskText("how many?", "1"), "12");
  EXPECT_EQ(standing, (Texts{"a message", "delete it?", "again?", "how many?"}));
  Texts noted;
  for (const std::string& line : log.Lines()) noted.push_back(line.substr(21));
  EXPECT_EQ(noted, (Texts{"a message", "delete it?", "Answered: Yes", "again?", "Answered: No", "how many?",
                          "Answered: 12"}));
}

}  // namespace tvx::watchtest
