#include <gtest/gtest.h>

#include <QMouseEvent>
#include <QWheelEvent>

#include "virtualcockpit/devices/RadioDevice.h"
#include "virtualcockpit/panel/Faces.h"
#include "virtualcockpit/panel/InstrumentPanel.h"
#include "virtualcockpit/panel/PanelWindow.h"
#include "virtualcockpit/panel/Scale.h"

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
std::string Labels(const Scale& scale) {
  std::string labels;
  for (const ScaleMark& mark : scale.Marks()) {
    if (!mark.label.empty()) labels += (labels.empty() ? "" : " ") + mark.label;
  }
  return labels;
}

TEST(Scale, LabelsAreThoseAPilotWouldPrint) {
  const struct {
    std::vector<std::pair<double, int>> points;
    const char* labels;
    int divisor;
  } cases[] = {
      {{{0, 180}, {5, 250}, {20, 387}, {26, 450}}, "0 5 20 26", 1},
      {{{40, 100}, {50, 140}, {60, 180}, {70, 220}, {80, 260}}, "40 60 80", 1},  // crowded points
      {{{0, 150}, {500, 300}, {1000, 450}}, "0 5 10", 100},
      {{{0, 0}, {50, 540}}, "0 10 20 30 40 50", 1},
      {{{0, 0}, {50, 500}, {100, 1040}}, "50 100", 1},  // the end meets the beginning
  };
  for (const auto& c : cases) {
    const Scale scale(PlateOf(c.points));
    EXPECT_EQ(Labels(scale), c.labels);
    EXPECT_EQ(scale.Divisor(), c.divisor) << c.labels;
    for (const auto& [value, position] : c.points) EXPECT_DOUBLE_EQ(scale.PositionOf(value), position);
  }
}

TEST(Scale, NeedlePositionAndValueAreInverse) {
  const Scale scale(PlateOf({{0, 900}, {20, 861}, {50, 789}, {90, 690}, {115, 630}}));
  for (double value = 0; value <= 115; value += 2.5)
    EXPECT_NEAR(scale.ValueAt(scale.PositionOf(value)), value, 1e-9);
  EXPECT_EQ(scale.PositionOf(-10), 900);
  EXPECT_EQ(scale.PositionOf(1000), 630);
  EXPECT_EQ(scale.ValueAt(1079), 0);
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

TEST(Needle, FollowsWithoutOvershootAndTakesTheShortWayRound) {
  Needle needle;
  needle.Jump(0);
  double last = 0;
  for (int i = 0; i < 60; ++i) {
    needle.Follow(600, 0.04);
    EXPECT_GE(needle.At(), last);
    last = needle.At();
  }
  EXPECT_EQ(last, 600);
  EXPECT_FALSE(needle.Follow(600, 0.04)) << "nothing to repaint";
  needle.Jump(1070);
  needle.Follow(10, 0.04, 1080);
  EXPECT_TRUE(needle.At() > 1070 || needle.At() < 10);
}

TEST(PanelPlan, FitsInAnyRoom) {
  for (const int larges : {0, 1, 6, 40}) {
    for (const int smalls : {0, 1, 8, 90}) {
      if (larges + smalls == 0) continue;
      const PanelPlan plan = PlanPanel(larges, smalls, 1044, 796);
      EXPECT_GT(plan.size, 20) << larges << " and " << smalls;
      EXPECT_LE(plan.largeColumns * plan.size, 1044 + 1e-6);
    }
  }
}

// Every kind is drawn at every size, before and after commands of any value, lit and dark, with every fault.
TEST(Faces, DrawEveryKindWhateverTheBusBrings) {
  ConfigModel model;
  model.Plates.push_back(PlateOf({{0, 0}, {50, 500}, {100, 1040}}));
  model.Functions[1].ShortName = "Vert. speed";
  for (const int type : {1,   2,   3,   4,   5,   6,   8,   10,  101, 103, 104, 105, 106, 107, 108,
                         109, 110, 111, 112, 113, 114, 120, 121, 122, 123, 124, 125, 130, 140, 200}) {
    GaugeRecord& record = model.Gauges[10];
    record.GaugeType = static_cast<Byte>(type);
    record.GaugeSetting4 = 77;  // no such Plate
    record.GaugeFunction1 = 1;
    record.GaugeFunction2 = static_cast<std::int16_t>(type == 3 ? 1 : -5);
    const auto device = MakeDevice({10, record.GaugeType, 1, 1});
    const std::unique_ptr<InstrumentWidget> face(MakeFace(*device, model, nullptr));
    for (const int size : {4, 90, 300}) {
      face->resize(size, size);
      for (const std::int32_t value : {0, 1013, 65535, -65535}) {
        for (int command = 0; command < 16; ++command) device->Receive(command, value);
        face->Advance(0.04);
        EXPECT_FALSE(face->grab().isNull()) << type;
      }
    }
    const QImage works = face->grab().toImage();
    device->SetFault(DeviceFault::Silent);
    EXPECT_NE(face->grab().toImage(), works) << "a fault is shown, type " << type;
  }
}

TEST(PanelPlan, StackAndDialsNeverOverlapAndSixStayTogether) {
  const std::vector<double> heights(11, 80);
  for (const double width : {700.0, 1280.0, 1900.0}) {
    const StackPlan plan = PlanStack(10, 10, heights, width, 780);
    ASSERT_GT(plan.Legible(), 60) << width;
    double tallest = 0;
    std::vector<int> all;
    for (const auto& column : ColumnsOf(heights, plan.columns)) {
      tallest = std::max(tallest, static_cast<double>(column.size()) * 80 * plan.wideWidth / kWideUnits);
      all.insert(all.end(), column.begin(), column.end());
    }
    EXPECT_EQ(all.size(), 11u);
    const auto high = [](int count, int columns) {
      return static_cast<double>(RowsOf(count, columns, true).size());
    };
    const double larges = high(10, plan.rounds.largeColumns) * plan.rounds.size;
    const double smalls = high(10, plan.rounds.smallColumns) * plan.rounds.size * kSmallPart;
    const double dials = plan.rounds.beside ? std::max(larges, smalls) : larges + smalls;
    EXPECT_LE(dials + (plan.below ? tallest : 0), 780 + 1e-6) << width;
  }
  EXPECT_EQ(RowsOf(10, 4, true), (std::vector<std::vector<int>>{{0, 1, 2, 6}, {3, 4, 5, 7}, {8, 9}}));
  EXPECT_EQ(RowsOf(10, 10, true).size(), 1u);
  EXPECT_EQ(RowsOf(7, 3, false), (std::vector<std::vector<int>>{{0, 1, 2}, {3, 4}, {5, 6}}));
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
  const auto click = [&mouse](QPointF at) {
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) mouse(type, at);
  };
  const auto wheel = [&face](QPointF at, int delta) {
    QWheelEvent event(at, at, {}, {0, delta}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(face.get(), &event);
  };
  const Control& swap = face->Controls()[0];
  const Control& outer = face->Controls()[1];
  const Control& inner = face->Controls()[2];
  wheel(place(outer, {0, -28}), 120);
  EXPECT_EQ(radio.Frequencies().standby, 22700) << "the outer knob";
  wheel(place(inner, {0, 0}), -60);
  wheel(place(inner, {0, 0}), -60);
  EXPECT_EQ(radio.Frequencies().standby, 22675) << "two halves of a click";
  click(place(inner, {8, 0}));
  EXPECT_EQ(radio.Frequencies().standby, 22700) << "a click on the right half";
  mouse(QEvent::MouseButtonPress, place(outer, {0, 28}));
  mouse(QEvent::MouseMove, place(outer, {0, 28}) - QPointF(20, 0));
  mouse(QEvent::MouseButtonRelease, place(outer, {0, 28}) - QPointF(20, 0));
  EXPECT_EQ(radio.Frequencies().standby, 20700) << "dragged to the left by two clicks";
  click(place(swap, {0, 0}));
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
  const auto click = [&window](const char* name) {
    window.findChild<QPushButton*>(QString::fromLatin1(name))->click();
  };
  const auto text = [&window](const char* name) {
    return window.findChild<QLabel*>(QString::fromLatin1(name))->text();
  };
  click("cmdPause");
  EXPECT_TRUE(cockpit.Sim().Paused());
  click("cmdSimulator");
  EXPECT_FALSE(cockpit.Simulation().Present());
  EXPECT_TRUE(text("labelSimulator").startsWith("Off"));
  click("cmdSimulator");
  EXPECT_TRUE(cockpit.Simulation().Present());
  click("cmdAdapter");
  EXPECT_FALSE(cockpit.GaugeLine().Line().Plugged());
  EXPECT_EQ(text("labelBus"), "Adapter unplugged");
  click("cmdAdapter");
  EXPECT_TRUE(cockpit.GaugeLine().Line().Plugged());
  window.findChild<QComboBox*>("comboLineFault")->setCurrentIndex(3);
  EXPECT_EQ(cockpit.Gauges().Fault(), LineFault::Deaf);
  cockpit.Sim().RestartFlight(100);
  click("cmdRestart");
  EXPECT_EQ(cockpit.Sim().State().time, 0);
  for (const QWidget* control : window.findChildren<QAbstractButton*>())
    EXPECT_FALSE(control->objectName().isEmpty());
}

}  // namespace
}  // namespace tvx::vc
