#include "tests/e2e/NewInstallation.h"

#include <QFile>
#include <QFileDialog>
#include <QListView>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QSlider>

namespace tvx::e2e {
namespace {

constexpr int kAirspeedGauge = 10;  // GaugeIDs of the box's instruments
constexpr int kTachometer = 20;
constexpr const char* kOwnFunction = "120";
constexpr const char* kSimulatorFolder = "X-Plane 12";

// What the simulator's own list has, in its form: name, type, whether it can be written, unit, description.
constexpr const char* kDatarefs[] = {
    "sim/cockpit2/controls/elevator_trim\tfloat\ty\tratio\tElevator trim",
    "sim/cockpit2/engine/actuators/prop_angle_degrees\tfloat[16]\ty\tdegrees\tPropeller angle",
    "sim/cockpit2/engine/actuators/prop_rotation_speed_rad_sec\tfloat[16]\ty\tradians/second\tRequested "
    "speed",
    "sim/cockpit2/engine/indicators/engine_speed_rpm\tfloat[16]\tn\trpm\tEngine speed",
    "sim/cockpit2/engine/indicators/power_watts\tfloat[16]\tn\twatts\tPower",
    "sim/cockpit2/engine/indicators/prop_speed_rpm\tfloat[16]\tn\trpm\tPropeller speed",
    "sim/cockpit2/gauges/indicators/airspeed_kts_pilot\tfloat\tn\tknots\tAirspeed",
    "sim/cockpit2/gauges/indicators/ground_speed_kt\tfloat\tn\tknots\tGround speed",
};

QTreeWidgetItem* LineOf(QTreeWidget& table, const QString& text, int column) {
  const auto lines = table.findItems(text, Qt::MatchExactly, column);
  if (lines.size() != 1) throw std::runtime_error("no one line with " + text.toStdString());
  return lines.front();
}

// Whoever is asked for a folder chooses this one, as soon as the question stands.
void ChooseFolderWhenAsked(const QString& folder) {
  QTimer::singleShot(0, qApp, [folder] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return ChooseFolderWhenAsked(folder);
    dialog->findChild<QLineEdit*>("fileNameEdit")->setText(folder);
    QMetaObject::invokeMethod(dialog, "accept");
  });
}

}  // namespace

BoxOfInstruments::BoxOfInstruments(const std::function<void(ConfigModel&)>& change, const vc::Traits& traits)
    : hardware(demo::DemoConfig()) {
  if (change) change(hardware);
  QDir().mkdir("Torvex");
  QDir::setCurrent("Torvex");
  cockpit = std::make_unique<vc::Cockpit>(hardware,
                                          vc::Cockpit::Settings{.port = 0, .links = false, .traits = traits});
  EXPECT_TRUE(cockpit->Start());
  cockpit->Sim().RestartFlight(130);  // in cruise
  adapters.Add(cockpit->GaugeLine().Path(), "Torvex interface module", "CIM-0417");
  adapters.Add(cockpit->ClusterLine()->Path(), "Torvex engine cluster", "TEC-0112");
  adapters.Add(cockpit->IOModuleLine(1)->Path(), "Torvex IO module", "IOM-0231");
}

const vc::NeedleDevice& BoxOfInstruments::Needle(int gaugeID) const {
  return dynamic_cast<const vc::NeedleDevice&>(*cockpit->Gauges().Find(gaugeID));
}

NewInstallation::NewInstallation(Look look) : look_(std::move(look)) {}

void NewInstallation::Everything() {
  using Step = void (NewInstallation::*)();
  for (const Step step : {&NewInstallation::StartWithNothing, &NewInstallation::AssignAdapters,
                          &NewInstallation::GiveGroupsTheirPorts, &NewInstallation::FindTheGauges,
                          &NewInstallation::DefineAFunction, &NewInstallation::TestTheFunction,
                          &NewInstallation::SetUpTheNeedles, &NewInstallation::SetUpTheCluster,
                          &NewInstallation::SaveAndSetAsStartUp, &NewInstallation::StartAgain}) {
    if (testing::Test::HasFailure()) return;
    (this->*step)();
  }
}

void NewInstallation::Begin() {
  program_ = std::make_unique<Program>(&boxes, &keys_, &box_.adapters);
  program_->Begin();
}

void NewInstallation::StartWithNothing() {
  EXPECT_TRUE(QDir().isEmpty());
  Begin();
  ASSERT_TRUE(Eventually([this] { return !boxes.shown.empty(); }));
  EXPECT_TRUE(Begins(std::exchange(boxes.shown, {})[0], "Error Configuration file. "));
  ASSERT_TRUE(Eventually([this] { return program_->Sim().UdpOpen(); })) << "it looks for a simulator already";
  Seen("start");
  OnForm("frmMain").Press("CmdConfigure");
  ASSERT_TRUE(Eventually([] { return FormShown("FrmMainConfigure") != nullptr; }));
}

void NewInstallation::AssignAdapters() {
  OnForm("FrmMainConfigure").Press("cmdAdapters");
  const OnForm form("frmAdapters");
  auto& list = form.The<QTreeWidget>("ListAdapters");
  for (const auto& [adapter, number] : {std::pair{"Torvex interface module", "5"},
                                        {"Torvex IO module", "6"},
                                        {"Torvex engine cluster", "7"}}) {
    list.setCurrentItem(LineOf(list, adapter, 0));
    form.Do({{"ComboAssign", number}, {"cmdAssignAdapter"}});
    EXPECT_TRUE(Holds(form.Text("LabelAdvice"), std::string("COM ") + number + " leads to "));
    EXPECT_TRUE(QFile::exists(QString("comports/com") + number));
  }
  Seen("adapters");
  form.Press("CmdClose");
}

void NewInstallation::GiveGroupsTheirPorts() {
  const OnForm form("FrmMainConfigure");
  form.Do({{"ComboComGS", "5"},
           {"cmdSetCommport"},
           {"ComboCOMIOM", "6"},
           {"cmdSetCommportIOM"},
           {"ComboComEC", "7"},
           {"cmdSetCommportEC"},
           {"boxRemotePort", QString::number(box_.cockpit->Simulation().Port())},
           {"boxLocalPort", QString::number(FreePort())},
           {"cmdSetUDP"}});
  EXPECT_TRUE(Holds(form.The<QComboBox>("ComboComGS").currentText().toStdString(),
                    "Torvex interface module, serial CIM-0417"));
  EXPECT_TRUE(Eventually([&] { return Holds(form.Text("LabelBus"), "COM 5 open"); }));
  Seen("ports");
}

void NewInstallation::FindTheGauges() {
  const OnForm form("FrmMainConfigure");
  form.Press("cmdStartTest");
  auto& progress = form.The<QProgressBar>("ProgressBar1");
  ASSERT_TRUE(Eventually([&] { return progress.value() > 34; }, std::chrono::seconds(60)));
  Seen("search");
  ASSERT_TRUE(Eventually([&] { return !progress.isVisible(); }, std::chrono::seconds(120)));
  const ConfigModel& model = program_->Model();
  for (std::size_t id = 0; id < model.Gauges.size(); ++id) {
    const GaugeRecord &there = box_.hardware.Gauges[id], &found = model.Gauges[id];
    EXPECT_EQ(
        std::tuple(found.GaugeType, found.GaugeSetting1, model.GaugeState[id] == GaugeConnection::Connected),
        std::tuple(there.GaugeType, there.GaugeSetting1, there.GaugeType != 0))
        << "GaugeID " << id;
  }
  Seen("found");
}

void NewInstallation::DefineAFunction() {
  const std::string folder = std::string(kSimulatorFolder) + "/Resources/plugins/";
  std::string datarefs = "2 1210 Mon Nov 24 10:10:21 2025\n\n";
  for (const char* line : kDatarefs) datarefs += std::string(line) + '\n';
  for (int i = 0; i < 3000; ++i)
    datarefs +=
        "sim/multiplayer/position/plane" + std::to_string(i) + "_throttle\tfloat\ty\tratio\tThrottle\n";
  ScratchFolder::Put(folder + "DataRefs.txt", datarefs);
  ScratchFolder::Put(folder + "Commands.txt",
                     "sim/autopilot/heading                Autopilot heading-hold.\n");
  OnForm("FrmMainConfigure").Press("cmdGetOffset");
  const OnForm form("frmFunctionEditor");
  form.Type("SearchFunction", kOwnFunction);
  auto& functions = form.The<QListView>("ListFunctions");
  functions.setCurrentIndex(functions.model()->index(0, 0));
  ChooseFolderWhenAsked(QDir(kSimulatorFolder).absolutePath());
  form.Do({{"ComboDT", "Xplane Dataref"}, {"cmdImportLists"}, {"SearchText", "prop speed"}});
  EXPECT_EQ(std::exchange(boxes.shown, {}),
            Texts{"3008 data references were imported.\r\n1 commands were imported."});
  auto& paths = form.The<QListView>("ListXplaneReferences");
  ASSERT_EQ(paths.model()->rowCount(), 2) << "every word typed must be in the path";
  paths.setCurrentIndex(paths.model()->index(1, 0));
  form.Press("cmdCopyEntry");
  EXPECT_EQ(form.The<QPlainTextEdit>("FullName").toPlainText(),
            "#1:sim/cockpit2/engine/indicators/prop_speed_rpm[0]\n");
  form.Do({{"ShortName", "Propeller RPM"},
           {"FuncType", "Gauge"},
           {"ComboClass", "Engines"},
           {"boxMaximumValue", "3500"}});
  Seen("function");
  form.Press("CmdSave");
  EXPECT_EQ(program_->Model().Functions[120].ShortName, "Propeller RPM");
}

void NewInstallation::TestTheFunction() {
  OnForm("frmFunctionEditor").Press("cmdTestFunction");
  const OnForm form("frmTestFunction");
  form.Press("CmdRead");
  const double rpm =
      *box_.cockpit->Sim().Datarefs().ValueOf("sim/cockpit2/engine/indicators/prop_speed_rpm[0]");
  EXPECT_GT(rpm, 1500);
  EXPECT_TRUE(Eventually([&] {
    const QString shown = QString::fromStdString(form.Text("BoxCorrectedValue"));
    return std::abs(shown.toDouble() - rpm) < 200;
  }));
  Seen("test");
  form.Press("CmdClose");
  OnForm("frmFunctionEditor").Press("CmdClose");
  EXPECT_EQ(boxes.asked, Texts{});
}

void NewInstallation::OpenGauge(int gaugeID) {
  auto& list = OnForm("FrmMainConfigure").The<QTreeWidget>("Configlist");
  list.setFocus();
  list.setCurrentItem(LineOf(list, QString("%1").arg(gaugeID, 3, 10, QChar('0')), 0));
  OnForm::Key(list, Qt::Key_Return);
}

void NewInstallation::MakePlate(const char* name, const std::vector<Point>& points, int gaugeID,
                                const char* picture) {
  const OnForm form("frmCalibrate");
  const vc::NeedleDevice& gauge = box_.Needle(gaugeID);
  form.Press("CmdCreateNewPlate");
  const auto& slider = form.The<QSlider>("SliderMoveNeedle");
  for (std::size_t i = 0; i < points.size(); ++i) {
    const QString box = i == 0 ? QString("CalMinimumValue") : "boxValue" + QString::number(i);
    form.Type(qPrintable(box), points[i].value);
    // With the keys, until the live needle points to the number.
    for (const int by : {100, 10, 1}) {
      const std::string step = std::to_string(by), more = "cmdJogPlus" + step, less = "cmdJogMinus" + step;
      while (slider.value() + by <= points[i].position) form.Press(more.c_str());
      while (slider.value() - by >= points[i].position) form.Press(less.c_str());
    }
    EXPECT_TRUE(Eventually([&] { return gauge.First() == points[i].position; })) << box.toStdString();
    form.Press("cmdTakeNeedle");
  }
  form.Do({{"PlateName", name}, {"cmdSetCheck"}});
  EXPECT_EQ(std::exchange(boxes.shown, {}), Texts{"Plate verified and no errors found"});
  form.Do({{"CmdSaveNewPlate"}, {"cmdAssignPlate"}});
  Seen(picture);
  form.Press("CmdClose");
}

void NewInstallation::SetUpTheNeedles() {
  OpenGauge(kAirspeedGauge);
  const OnForm form("frmInstrument");
  form.Do({{"ComboFunction1", "1"}, {"cmdRead"}});
  EXPECT_TRUE(Holds(form.Text("LabelIdentity"), "model 1"));
  Seen("instrument");
  form.Press("CmdCalibrate1");
  MakePlate("Airspeed 40-200 kt", {{"40", 90}, {"80", 366}, {"120", 636}, {"160", 858}, {"200", 1032}},
            kAirspeedGauge, "calibration");
  form.Press("CmdClose");
  OpenGauge(kTachometer);
  form.Do({{"ComboFunction1", kOwnFunction}, {"CmdCalibrate1"}});
  MakePlate("Engine speed 0-3500 RPM", {{"0", 150}, {"1500", 462}, {"2500", 699}, {"3500", 930}}, kTachometer,
            "second-plate");
  form.Press("CmdClose");
  EXPECT_EQ(program_->Model().Gauges[kTachometer].GaugeSetting3, program_->Model().PlateCount() - 1);
}

void NewInstallation::SetUpTheCluster() {
  OnForm("FrmMainConfigure").Press("cmdGotoEC");
  const OnForm status("frmStatusEC");
  status.Press("cmdConfigEC");
  const OnForm form("frmConfigEC");
  form.Do({{"ComboFunction0", kOwnFunction},
           {"ComboPlate0", QString::number(program_->Model().PlateCount() - 1)}});
  EXPECT_TRUE(form.The<QAbstractButton>("CheckEnabled0").isChecked()) << "the first Function switches it on";
  form.Press("cmdTryHigh0");
  EXPECT_TRUE(Eventually([this] { return box_.cockpit->Cluster().Needle(0) == 930; }))
      << "the end of the scale";
  Seen("cluster");
  form.Press("cmdClose");
  status.Window()->close();
}

void NewInstallation::SaveAndSetAsStartUp() {
  OnForm("FrmMainConfigure").Press("cmdSaveConfig");
  const OnForm form("SaveConfig");
  boxes.texts = {"1"};
  form.Do({{"FileName", "MyCockpit.cfg"}, {"cmdSave"}, {"cmdSetAsStartup"}});
  EXPECT_EQ(boxes.shown.at(0), "File saved as: MyCockpit.cfg");
  EXPECT_TRUE(Begins(boxes.asked.at(0), "Give autostart time delay"));
  boxes.shown = boxes.asked = {};
  Seen("save");
  form.Press("CmdClose");
  OnForm("FrmMainConfigure").Press("CmdClose");
  EXPECT_EQ(boxes.asked, Texts{}) << "everything is saved";
  ASSERT_TRUE(
      Eventually([] { return FormShown("frmMain") != nullptr && FormShown("FrmMainConfigure") == nullptr; }));
}

void NewInstallation::StartAgain() {
  program_->Exit();
  program_.reset();
  Begin();
  ASSERT_TRUE(Eventually([this] { return program_->Run().Running(); }, std::chrono::seconds(60)));
  ASSERT_TRUE(Eventually([this] { return program_->Run().View().Simulator.Text == "X-Plane is answering"; }));
  Seen("fly");
}

}  // namespace tvx::e2e
