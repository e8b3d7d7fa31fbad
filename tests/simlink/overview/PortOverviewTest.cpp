#include "simlink/overview/PortListing.h"
#include "simlink/overview/PortOverview.h"
#include "tests/simlink/Fixture.h"

namespace tvx::portoverviewtest {

using enum DataType;

struct Overview : LinkTest {
  Port Open(int function, DataType type, std::int16_t opener, int index, int value, bool enabled = true) {
    Define(function, type, index, value).FullName = "#1:sim/a" + std::to_string(function) + "\r\n";
    sim.SetCurrentOpener(opener);
    const Port port = sim.OpenSimPort(function, 1);
    if (enabled) sim.EnableReadSimPort(port);
    return port;
  }
  std::string Line(std::size_t line) const {
    std::string text;
    for (std::size_t c = 0; c < kPortColumns; ++c)
      text += (c > 0 ? "|" : "") + overview.Cell(line, static_cast<PortColumn>(c));
    return text;
  }
  std::string Order() const {
    std::string ports;
    for (std::size_t line = 0; line < overview.Lines(); ++line)
      ports += std::to_string(overview.PortOf(line)) + (overview.IsLate(line) ? "! " : " ");
    return ports;
  }

  PortOverview overview{model, sim};
};

TEST_F(Overview, TellsUserTypeSourceAndValuesOfEveryPort) {
  model.Gauges[7].GaugeType = 101;
  model.Gaugetypes[11] = {101, "Altimeter"};
  const struct {
    Port port;
    const char *line, *details;
  } cases[] = {
      {Open(60, Float, 7, 10, 3),
       "000|ID:007|060|--------Float---------|F60|2|10|0.2 s|10.0|0|Data group 10, value 3",
       "Used by Gauge Type: Altimeter|DATA (float), name: F60|Index Nr: 10 Value Nr: 3"},
      {Open(61, XplaneDataref, 1000, 10, 3),
       "001|IOM#1|061|Xplane Dataref |F61|1.5|7.5|12 s|0.0|0|sim/a61, 3 times a second",
       "Gauge type: IOM#1|RREF Ident (Port#)= 1|Frequency =3|Dataref= sim/a61"},
      {Open(62, XplaneDataref, 4000, 10, 0), "002|ENGCl|062|Xplane Dataref |F62||||||sim/a62, written only",
       "Gauge type: ENGCl|It is a RREF Write only (DREF)."},
      {Open(63, XplaneCmnd, 5000, 10, 3, false), "003|YOKES|063|Xplane CMND   |F63||||||#1:sim/a63",
       "Gauge type: YOKES|CMND, Dataref= #1:sim/a63\r\n"},
      {Open(64, Integer, 3000, 20, 1), "004|INTRN|064|Integer       |F64|||never|||Data group 20, value 1",
       "Gauge type: INTRN|DATA (float), name: F64|Index Nr: 20 Value Nr: 1"},
  };
  model.Functions[60].Multiplier = model.Functions[61].Multiplier = 5;
  socket.Deliver(RrefDatagram({{1, 1.5f}}));
  clock.Advance(12000);
  for (int i = 0; i < 3; ++i) {
    socket.Deliver(DataDatagram(10, {0, 0, 0, 2}));
    clock.Advance(i < 2 ? 100 : 200);
  }
  overview.Refresh();
  ASSERT_EQ(overview.Lines(), std::size(cases));
  for (const auto& c : cases) {
    EXPECT_EQ(Line(c.port), c.line);
    std::string details;
    for (const std::string& detail : PortDetails(model, sim, c.port))
      details += (details.empty() ? "" : "|") + detail;
    EXPECT_EQ(details, c.details);
  }
  EXPECT_TRUE(PortDetails(model, sim, 5).empty());

  // The order that comes of it, with "!" where the value is late.
  const std::tuple<const char*, PortColumn, bool, const char*> views[] = {
      {"", PortColumn::Nr, true, "4! 3 2 1! 0 "},  {"", PortColumn::Value, false, "2 3 4! 1! 0 "},
      {"", PortColumn::Age, true, "4! 1! 0 2 3 "}, {"", PortColumn::UsedBy, false, "2 0 4! 1! 3 "},
      {" ALTI\tf60", PortColumn::Nr, false, "0 "}, {"sim/a6", PortColumn::Lost, false, "2 3 1! "},
      {"group 20", PortColumn::Nr, false, "4! "},  {"group dataref", PortColumn::Nr, false, ""},
  };
  for (const auto& [words, column, descending, order] : views) {
    overview.Search(words);
    overview.SortBy(column, descending);
    EXPECT_EQ(Order(), order) << words;
  }
  overview.Search("sim/");
  overview.SortBy(PortColumn::Nr, true);
  EXPECT_EQ(overview.LineOf(1), 2);
  EXPECT_EQ(overview.LineOf(0), -1);
  const std::string heading =
      "Port#\tUsed by\tFunc#\tDatatype\tFunc. Name\tRaw value\tValue\tAge\tA second\tLost\tSource\n";
  EXPECT_EQ(
      overview.Text(std::vector<std::size_t>{2}),
      heading + "001\tIOM#1\t061\tXplane Dataref\tF61\t1.5\t7.5\t12 s\t0.0\t0\tsim/a61, 3 times a second\n");
  EXPECT_EQ(overview.Text({}).size() > heading.size() + 100, true) << "all that is shown";
}

}  // namespace tvx::portoverviewtest
