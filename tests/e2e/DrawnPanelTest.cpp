// The panel that the program draws, beside the instruments that it was drawn after.
#include <QAbstractButton>
#include <QPushButton>
#include <QTabWidget>

#include "drawn/faces/MakeFace.h"
#include "follow/forms/InstrumentTile.h"
#include "tests/e2e/Flight.h"

namespace tvx::e2e {
namespace {

struct Panel {
  Flight& flight;
  CockpitForm* form = nullptr;
  std::vector<std::unique_ptr<drawn::InstrumentWidget>> faces{};  // of the instruments as they are

  // Opened in flight, when all has long been sent.
  explicit Panel(Flight& opened) : flight(opened) {
    flight.TheProgram().StatusWindow()->findChild<QPushButton*>("cmdCockpit")->click();
    form = flight.TheProgram().Watch().Cockpit();
    form->findChild<QTabWidget*>("TabsCockpit")->setCurrentIndex(1);
    for (const auto& device : flight.TheCockpit().Gauges().Devices())
      faces.emplace_back(drawn::MakeFace(*device, flight.Model(), nullptr));
  }
  InstrumentTile* Tile(int gaugeID) const {
    return form->findChild<InstrumentTile*>(QStringLiteral("Tile%1").arg(gaugeID));
  }
  std::string WordsOf(int gaugeID) const {
    const std::string name = Tile(gaugeID)->accessibleName().toStdString();
    return name.substr(name.find(": ") + 2);
  }
  // The gauges that are drawn otherwise than they are.
  std::string Differences() const {
    std::string all;
    for (const auto& face : faces) {
      face->Advance(0.1);
      const int id = face->Gauge().Id().gaugeID;
      const std::string is = face->Words().toStdString(), shown = WordsOf(id);
      if (is != shown) all += std::to_string(id) + " is \"" + is + "\", drawn \"" + shown + "\"\n";
    }
    return all;
  }
};

TEST(DrawnPanel, ShowsEveryInstrumentAsItStands) {
  Flight flight;
  flight.Sim().RestartFlight(130);
  flight.Run();
  flight.Sim().SetPaused(true);
  const std::uint64_t frames = flight.TheCockpit().Gauges().Decoder().Frames();
  EXPECT_TRUE(Eventually([&] { return flight.TheCockpit().Gauges().Decoder().Frames() > frames + 300; }));
  const Panel panel(flight);
  EXPECT_TRUE(Eventually([&] { return panel.Differences().empty(); })) << panel.Differences();
}

TEST(DrawnPanel, MarksTroubleAndFollowsAClick) {
  Flight flight;
  flight.Run();
  const Panel panel(flight);
  constexpr int kAltimeter = 12;
  flight.TheCockpit().Gauges().Find(kAltimeter)->SetFault(vc::DeviceFault::Silent);
  EXPECT_TRUE(Eventually([&] { return panel.WordsOf(kAltimeter).starts_with("No answer from 012"); }))
      << panel.WordsOf(kAltimeter);
  panel.Tile(kAltimeter)->click();
  ASSERT_NE(flight.TheProgram().Watch().Road(), nullptr);
  EXPECT_TRUE(Eventually([&] {
    return flight.TheProgram()
        .Watch()
        .Road()
        ->findChild<QLabel*>("LabelDiagnosis")
        ->text()
        .startsWith("No answer from 012");
  }));
}

}  // namespace
}  // namespace tvx::e2e
