#include <QCheckBox>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScreen>
#include <QSpinBox>
#include <QWheelEvent>

#include "drawn/devices/RadioDevice.h"
#include "drawn/faces/MakeFace.h"
#include "drawn/faces/dials/Scale.h"
#include "drawn/faces/units/ClusterFace.h"
#include "drawn/faces/units/ModuleFace.h"
#include "drawn/faces/units/YokeFace.h"
#include "tests/Test.h"
#include "tests/fakes/Whole.h"
#include "virtualcockpit/bus/Drawn.h"
#include "virtualcockpit/panel/InstrumentPanel.h"
#include "virtualcockpit/panel/PanelWindow.h"
#include "virtualcockpit/yokes/YokeWindow.h"

namespace tvx::vc {
namespace {

PlateRecord PlateOf(const std::vector<std::pair<double, int>>& points) {
  PlateRecord plate;
  const auto set = [&plate](std::size_t entry, const std::pair<double, int>& point) {
    plate.Value[entry] = point.first;
    plate.Position[entry] = static_cast<std::int16_t>(point.second);
  };
  set(2, points.front());
  set(3, points.back());
  for (std::size_t i = 0; i < points.size(); ++i) set(4 + i, points[i]);
  return plate;
}

TEST(Scale, PlatesThatMakeNoSenseAreEmptyNotFatal) {
  EXPECT_TRUE(Scale(PlateRecord{}).Empty());
  PlateRecord plate = PlateOf({{5, 0}, {5, 100}});
  EXPECT_TRUE(Scale(plate).Empty());
  plate.Value[3] = std::numeric_limits<double>::quiet_NaN();
  EXPECT_TRUE(Scale(plate).Empty());
  const Scale huge(PlateOf({{-1e300, -5}, {0, 30000}, {1e300, 7}}));
  EXPECT_LT(huge.Marks().size(), 1000u);
}

// Numbers that look like chance, the same in every run.
struct Random {
  std::uint32_t seed;
  int operator()(int below) {
    seed = seed * 1664525u + 1013904223u;
    return static_cast<int>((seed >> 8) % static_cast<std::uint32_t>(below));
  }
  std::size_t operator()(std::size_t below) {
    return static_cast<std::size_t>((*this)(static_cast<int>(below)));
  }
};

// The screen shows what a whole painting does.
void ExpectPaintedWhole(QWidget& face, const std::string& what) {
  constexpr auto kFormat = QImage::Format_RGB32;
  EXPECT_EQ(face.screen()->grabWindow(face.winId()).toImage().convertToFormat(kFormat),
            face.grab().toImage().convertToFormat(kFormat))
      << what;
}

// Only what has moved is painted again: that is enough after any sequence of commands, frames and turns of
// the knobs. Every kind is drawn at every size, whatever the bus brings, and shows a fault.
TEST(Faces, WhatIsPaintedAgainIsEnough) {
  ConfigModel model;
  model.Plates.push_back(PlateOf({{0, 0}, {50, 500}, {100, 1040}}));
  model.Functions[1].ShortName = "Vert. speed";
  Random random{7};
  for (const int type : {1,   2,   3,   4,   5,   6,   8,   10,  101, 103, 104, 105, 106, 107, 108,
                         109, 110, 111, 112, 113, 114, 120, 121, 122, 123, 124, 125, 130, 140, 200}) {
    SCOPED_TRACE(type);
    GaugeRecord& record = model.Gauges[10];
    record.GaugeType = static_cast<Byte>(type);
    record.GaugeSetting4 = 77;  // no such Plate
    record.GaugeFunction1 = 1;
    record.GaugeFunction2 = static_cast<std::int16_t>(type % 2 == 0 ? 1 : -5);
    const auto device = MakeDevice({10, record.GaugeType, 1, 1});
    const std::unique_ptr<InstrumentWidget> face(MakeFace(*device, model, nullptr));
    face->SetBackdrop(QColor(40, 44, 50));
    face->resize(face->Wide() ? QSize(400, 80) : QSize(180, 180));
    face->show();
    for (int step = 0; step < 40; ++step) {
      const int command = random(8) + (random(2) == 0 ? 0 : 9), size = random(3);  // 8 paints everything
      device->Receive(command, random(size == 0 ? 16 : size == 1 ? 1100 : 131070) - (size == 2 ? 65535 : 0));
      if (step % 8 == 5 && !face->Controls().empty()) {
        const Control& control = face->Controls()[random(face->Controls().size())];
        if (control.turn) control.turn(1);
        if (control.press) control.press();
      }
      face->Advance(0.04);
      QCoreApplication::processEvents();
    }
    ExpectPaintedWhole(*face, std::to_string(type));
    for (const int size : {4, 90, 300}) {
      face->resize(size, size);
      EXPECT_FALSE(face->grab().isNull()) << size;
    }
    const QImage works = face->grab().toImage();
    device->SetFault(DeviceFault::Silent);
    EXPECT_NE(face->grab().toImage(), works) << "a fault is shown";
  }
}

// The same for the units.
TEST(Units, WhatIsPaintedAgainIsEnough) {
  ConfigModel model;
  for (std::size_t channel = 0; channel < 8; ++channel) model.EngineCluster[channel] = {1, 1, 0};
  model.Functions[1].ShortName = "Vert. speed";
  Random random{11};
  ClusterFace cluster(LegendOfCluster(model), nullptr);
  ModuleFace module(LegendOfModule(model, 1), 1, nullptr);
  YokeFace yoke(1, nullptr);
  ClusterState needles;
  IOModuleState board;
  YokeState hand;
  for (UnitFace* face : std::initializer_list<UnitFace*>{&cluster, &module, &yoke}) {
    face->resize(400, 190);
    face->show();
    for (int step = 0; step < 40; ++step) {
      std::array<Byte, ClusterState::kFrameSize> frame{'F'};
      frame[1 + 2 * random(std::size_t{8})] = static_cast<Byte>(random(5));
      frame[37] = static_cast<Byte>(step % 8 == 5 ? random(4) : 2);
      needles.Take(frame, 0);
      cluster.Show(needles);
      board.switches[random(board.switches.size())] = random(2) == 0;
      board.axes[random(board.axes.size())] = random(4096);
      board.TakeCommand(4 + random(3), random(65536));
      if (step % 8 == 5) board.TakeCommand(12, random(3) * 127);
      module.Show(board);
      hand.position = {random(200) / 100.0 - 1, random(200) / 100.0 - 1};
      hand.force[0] = random(200) / 100.0 - 1;
      hand.buttons = static_cast<std::uint16_t>(random(256));
      if (step == 20) hand.pedals = PedalState{-0.5, 0.2, 1};
      yoke.Show(hand);
      if (step == 30) face->SetTrouble("unplugged");
      QCoreApplication::processEvents();
    }
    ExpectPaintedWhole(*face, face->objectName().toStdString());
  }
}

// Knobs turn by wheel, by drag and by click; buttons are pressed; a place without a control does nothing.
TEST(Faces, ControlsAnswerTheMouse) {
  ConfigModel model;
  const auto device = MakeDevice({10, 111, 1, 1});
  auto& radio = dynamic_cast<RadioDevice&>(*device);
  const std::unique_ptr<InstrumentWidget> face(MakeFace(*device, model, nullptr));
  face->resize(1000, 156);  // two pixels a unit
  const auto place = [](const Control& control, QPointF off) {
    return (control.area.center() + off) * 2 + QPointF(500, 78);
  };
  const auto mouse = [&face](QEvent::Type type, QPointF at) {
    QMouseEvent event(type, at, at, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(face.get(), &event);
  };
  // Presses at one place and lets go at another.
  const auto drag = [&mouse](QPointF from, QPointF by) {
    mouse(QEvent::MouseButtonPress, from);
    if (!by.isNull()) mouse(QEvent::MouseMove, from + by);
    mouse(QEvent::MouseButtonRelease, from + by);
  };
  const auto wheel = [&face](QPointF at, int delta) {
    QWheelEvent event(at, at, {}, {0, delta}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(face.get(), &event);
  };
  const Control &swap = face->Controls()[0], &outer = face->Controls()[1], &inner = face->Controls()[2];
  wheel(place(outer, {0, -28}), 120);
  EXPECT_EQ(radio.Frequencies().standby, 22700) << "the outer knob";
  wheel(place(inner, {0, 0}), -60);
  wheel(place(inner, {0, 0}), -60);
  EXPECT_EQ(radio.Frequencies().standby, 22675) << "two halves of a click";
  drag(place(inner, {8, 0}), {});
  EXPECT_EQ(radio.Frequencies().standby, 22700) << "a click on the right half";
  drag(place(outer, {0, 28}), {-20, 0});
  EXPECT_EQ(radio.Frequencies().standby, 20700) << "dragged to the left by two clicks";
  drag(place(swap, {0, 0}), {});
  EXPECT_EQ(radio.Frequencies().active, 20700);
  wheel({5, 5}, 120);
  EXPECT_EQ(radio.Frequencies().standby, 18500);
}

TEST(PanelWindow, ControlsDoWhatTheySay) {
  ConfigModel model;
  model.General.ComPortGS = 3;
  model.Gauges[10].GaugeType = 1;
  Cockpit cockpit(model, {0, ".", false});
  ASSERT_TRUE(cockpit.Start());
  PanelWindow window(cockpit);
  const auto click = [&window](const char* name) { window.findChild<QPushButton*>(name)->click(); };
  click("cmdPause");
  EXPECT_TRUE(cockpit.Sim().Paused());
  for (const bool on : {false, true}) {
    click("cmdSimulator");
    EXPECT_EQ(cockpit.Simulation().Present(), on);
    click("cmdAdapter");
    EXPECT_EQ(cockpit.GaugeLine().Line().Plugged(), on);
  }
  window.findChild<QComboBox*>("comboLineFault")->setCurrentIndex(3);
  EXPECT_EQ(cockpit.Gauges().Fault(), LineFault::Deaf);
  cockpit.Sim().RestartFlight(100);
  click("cmdRestart");
  EXPECT_EQ(cockpit.Sim().State().time, 0);
}

// Also on the screen of a small laptop.
TEST(PanelWindow, ItsWindowsAreSeenWholeAtAnySize) {
  ConfigModel model;
  model.General.ComPortGS = 3;
  model.General.ComPortIOM1 = 6;
  model.General.ComPortIOM2 = 8;
  model.General.ComPortEC = 7;
  model.General.ComPortYoke1 = 9;
  model.General.ComPortYoke2 = 10;
  model.Gauges[10].GaugeType = 1;
  Cockpit cockpit(model, {0, ".", false});
  ASSERT_TRUE(cockpit.Start());
  const auto yokes = MakeYokes(model, "", {}, {});
  PanelWindow window(cockpit, [](const Traits&) {});
  YokeWindow yokeWindow(yokes);
  window.show();
  window.findChild<QPushButton*>("cmdBehaviour")->click();
  auto* behaviour = window.findChild<QWidget*>("behaviourPanel");
  for (QWidget* each : {static_cast<QWidget*>(&window), static_cast<QWidget*>(&yokeWindow), behaviour}) {
    SCOPED_TRACE(each->objectName().toStdString());
    each->show();
    EXPECT_LE(each->height(), each->screen()->availableGeometry().height());
    ExpectWholeAtAnySize(each);
    each->resize(1, 1);
    EXPECT_LE(each->width(), 1366);
    EXPECT_LE(each->height(), 700);
  }
}

// Every control of the behaviour's window changes the one thing that it names.
TEST(PanelWindow, TheBehaviourIsSetFromItsWindow) {
  ConfigModel model;
  model.General.LocalPort = "49003";
  Cockpit cockpit(model, {0, ".", false, Traits::Real()});
  Traits yokes;
  PanelWindow window(cockpit, [&yokes](const Traits& traits) { yokes = traits; });
  const std::pair<const char*, void (*)(Traits&)> cases[] = {
      {"spinFrame", [](Traits& t) { t.simulator.frameMs = 50; }},
      {"spinRequests", [](Traits& t) { t.simulator.requestsPerFrame = 50; }},
      {"checkBuffer", [](Traits& t) { t.simulator.usualBuffer = false; }},
      {"checkTarget", [](Traits& t) { t.simulator.dataToTarget = false; }},
      {"checkKeepsGroups", [](Traits& t) { t.simulator.keepsGroups = true; }},
      {"checkForgets", [](Traits& t) { t.simulator.forgetsValues = false; }},
      {"checkKnownNames", [](Traits& t) { t.simulator.onlyKnownNames = false; }},
      {"checkSendPort", [](Traits& t) { t.simulator.ownSendPort = false; }},
      {"checkBeacon", [](Traits& t) { t.simulator.beacon = false; }},
      {"spinLost", [](Traits& t) { t.simulator.network.lost = 50; }},
      {"spinDoubled", [](Traits& t) { t.simulator.network.doubled = 50; }},
      {"spinReordered", [](Traits& t) { t.simulator.network.reordered = 50; }},
      {"spinDelayed", [](Traits& t) { t.simulator.network.delayed = 50; }},
      {"spinSeed", [](Traits& t) { t.simulator.seed = t.lines.seed = 50; }},
      {"checkPaced", [](Traits& t) { t.lines.paced = false; }},
      {"spinLatency", [](Traits& t) { t.lines.latencyMs = 50; }},
      {"spinLeastAnswer", [](Traits& t) { t.lines.leastAnswerUs = t.lines.mostAnswerUs = 50000; }},
      {"spinMostAnswer", [](Traits& t) { t.lines.mostAnswerUs = 50000; }},
      {"checkHand", [](Traits& t) { t.devices.handRules = true; }},
      {"checkStartsAnew", [](Traits& t) { t.devices.startsAnew = false; }},
      {"spinRise", [](Traits& t) { t.yokes.riseSeconds = 0.05; }}};
  auto& preset = *window.findChild<QComboBox*>("comboBehaviour");
  for (const auto& [name, change] : cases) {
    SCOPED_TRACE(name);
    emit preset.activated(0);
    preset.setCurrentIndex(0);
    emit preset.activated(0);
    ASSERT_EQ(cockpit.Traits(), Traits::Real());
    auto* control = window.findChild<QWidget*>(name);
    ASSERT_NE(control, nullptr);
    EXPECT_FALSE(control->toolTip().isEmpty());
    if (auto* check = qobject_cast<QCheckBox*>(control)) check->click();
    if (auto* spin = qobject_cast<QSpinBox*>(control)) spin->setValue(50);
    if (auto* spin = qobject_cast<QDoubleSpinBox*>(control)) spin->setValue(50);
    Traits expected = Traits::Real();
    change(expected);
    EXPECT_EQ(cockpit.Traits(), expected);
    EXPECT_EQ(yokes, expected);
    EXPECT_EQ(preset.currentText(), "As set below");
  }
  auto& target = *window.findChild<QLineEdit*>("editOutput");
  for (const auto& [text, port] :
       {std::pair{"10.0.0.7:50000", 50000}, {"10.0.0.7", 50000}, {"1.2.3.4:x", 50000}}) {
    target.setText(text);
    emit target.editingFinished();
    EXPECT_EQ(cockpit.Sim().Output().target->port, port);
  }
  window.findChild<QPushButton*>("cmdPower")->click();
  EXPECT_FALSE(cockpit.Powered());
}

}  // namespace
}  // namespace tvx::vc
