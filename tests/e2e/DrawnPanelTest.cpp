// The panel that the program draws, beside the instruments that it was drawn after.
#include <QRegularExpression>
#include <QTabWidget>
#include <QTest>

#include "drawn/faces/MakeFace.h"
#include "drawn/faces/units/ClusterFace.h"
#include "drawn/faces/units/ModuleFace.h"
#include "follow/forms/DrawnPanel.h"
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
  CockpitTile* Tile(const QString& name) const { return form->findChild<CockpitTile*>("Tile" + name); }
  std::string WordsOf(const QString& tile) const {
    const std::string name = Tile(tile)->accessibleName().toStdString();
    return name.substr(name.find(": ") + 2);
  }
  // The gauges that are drawn otherwise than they are.
  std::string Differences() const {
    std::string all;
    for (const auto& face : faces) {
      face->Advance(0.1);
      const QString id = QString::number(face->Gauge().Id().gaugeID);
      const std::string is = face->Words().toStdString(), shown = WordsOf(id);
      if (is != shown) all += id.toStdString() + " is \"" + is + "\", drawn \"" + shown + "\"\n";
    }
    return all;
  }
};

TEST(DrawnPanel, ShowsEveryInstrumentAsItStands) {
  Cruise flight;
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
  flight.TheCockpit().Gauges().Find(12)->SetFault(vc::DeviceFault::Silent);
  EXPECT_TRUE(Eventually([&] { return panel.WordsOf("12").starts_with("No answer from 012"); }))
      << panel.WordsOf("12");
  panel.Tile("12")->click();
  ASSERT_NE(flight.TheProgram().Watch().Road(), nullptr);
  const auto* diagnosis = flight.TheProgram().Watch().Road()->findChild<QLabel*>("LabelDiagnosis");
  EXPECT_TRUE(Eventually([&] { return diagnosis->text().startsWith("No answer from 012"); }));
}

// Engine cluster, IO module and a yoke, without the gauges.
struct DrawnUnits : testing::Test {
  // Drawn at the same size, the panel's picture is that of the hardware.
  bool Same(drawn::UnitFace& real, const Panel& panel) const {
    auto* shown = panel.form->findChild<drawn::UnitFace*>(real.objectName());
    real.resize(shown->size());
    return panel.WordsOf("_" + real.objectName()) == real.Words().toStdString() &&
           real.grab().toImage() == shown->grab().toImage();
  }
  vc::IOModuleUnit& Module() { return flight.TheCockpit().IOModuleOf(1); }

  Cruise flight{[](ConfigModel& model) {
    model.Gauges.fill({});
    model.General.ComPortYoke1 = 31;
    Calibrate(model.Yoke1, 1, yokeoption::kSendPositions, YokeMode::Centre);
  }};
  std::vector<std::unique_ptr<vc::YokeLine>> yokes{YokesOf(flight.Model(), flight.TheCockpit())};
};

TEST_F(DrawnUnits, LookAsTheHardwareDoes) {
  constexpr int kParkingBrake = 0, kThrottle = 0, kOther = 13;
  Module().SetSwitch(kParkingBrake, true);  // its lamp is lit by the simulator
  Module().SetSwitch(kOther, true);
  Module().SetAxis(kThrottle, 3000);
  ASSERT_TRUE(Eventually([&] { return Module().Lamp(0) && flight.TheCockpit().Cluster().Needle(0) > 200; }));
  flight.Sim().SetPaused(true);
  const Panel panel(flight);
  drawn::ModuleFace module(drawn::LegendOfModule(flight.Model(), 1), 1, nullptr);
  drawn::ClusterFace cluster(drawn::LegendOfCluster(flight.Model()), nullptr);
  const auto look = [&] {
    module.Show(Module().State());
    cluster.Show(flight.TheCockpit().Cluster().State());
    return Same(module, panel) && Same(cluster, panel);
  };
  EXPECT_TRUE(Eventually(look)) << panel.WordsOf("_ioModule1") << " / " << panel.WordsOf("_engineCluster");
  EXPECT_TRUE(Begins(module.Words().toStdString(), "lamps 1"));
  EXPECT_TRUE(Holds(module.Words().toStdString(), "switches A1 B6, axis 1 at 3000"));
  Module().SetSwitch(kOther, false);
  EXPECT_TRUE(Eventually(look)) << "and goes on so";
}

TEST_F(DrawnUnits, AYokeStandsWhereItsAnswersSay) {
  const Panel panel(flight);
  vc::YokeDevice& yoke = yokes[0]->Device();
  yoke.Grip(0, 0.5);
  yoke.Grip(1, -0.25);
  const auto drawn = [&] {
    static const QRegularExpression places("roll (-?\\d+) %, pitch (-?\\d+) %");
    const auto found = places.match(QString::fromStdString(panel.WordsOf("_yoke1")));
    return found.hasMatch() && std::abs(found.captured(1).toInt() - 100 * yoke.Position(0)) < 3 &&
           std::abs(found.captured(2).toInt() - 100 * yoke.Position(1)) < 3;
  };
  EXPECT_TRUE(Eventually([&] { return yoke.Position(0) > 0.3 && drawn(); })) << panel.WordsOf("_yoke1");
  yokes[0]->Unplug();
  EXPECT_TRUE(Eventually([&] { return Holds(panel.WordsOf("_yoke1"), "oke 1"); })) << panel.WordsOf("_yoke1");
}

TEST_F(DrawnUnits, AClickFollowsThePartUnderIt) {
  const Panel panel(flight);
  std::vector<Subject> asked;
  QObject::connect(panel.form->findChild<DrawnPanel*>(), &DrawnPanel::FollowAsked,
                   [&](const Subject& subject) { asked.push_back(subject); });
  const auto click = [&](const QString& name, int part) {
    auto* face = panel.form->findChild<drawn::UnitFace*>(name);
    for (int y = 0; y < face->height(); y += 2) {
      for (int x = 0; x < face->width(); x += 2) {
        if (face->PartAt(QPointF(x, y)) != part) continue;
        return QTest::mouseClick(face->parentWidget(), Qt::LeftButton, {}, face->pos() + QPoint(x, y));
      }
    }
  };
  const std::pair<std::pair<const char*, int>, Subject> parts[] = {
      {{"ioModule1", 9}, {Subject::Kind::Input, 1009}},     // switch B2
      {{"ioModule1", 101}, {Subject::Kind::Input, 1101}},   // an axis
      {{"ioModule1", 203}, {Subject::Kind::Input, 1203}},   // a lamp
      {{"engineCluster", 1}, {Subject::Kind::Channel, 1}},  // a dial
      {{"yoke1", 1}, {Subject::Kind::YokeAxis, 1, 1}},      // the pitch's bar
      {{"yoke1", -1}, {Subject::Kind::YokeAxis, 1, 0}},     // elsewhere: its first value
  };
  for (const auto& [part, subject] : parts) {
    click(part.first, part.second);
    ASSERT_FALSE(asked.empty()) << part.first;
    EXPECT_EQ(asked.back(), subject) << part.first << ", part " << part.second;
    asked.clear();
  }
}

}  // namespace
}  // namespace tvx::e2e
