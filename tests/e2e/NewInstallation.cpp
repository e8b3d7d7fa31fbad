#include "tests/e2e/NewInstallation.h"

#include <QFile>
#include <QFileDialog>
#include <QListView>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSlider>
#include <QTimer>

#include "drawn/devices/NeedleDevice.h"
#include "virtualcockpit/bus/Drawn.h"

namespace tvx::e2e {
namespace {

constexpr int kAirspeedGauge = 10;  // GaugeIDs of the box's instruments
constexpr int kTachometer = 20;
constexpr int kOwnFunction = 120;
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

void Write(const QString& name, const QByteArray& content) {
  QFile file(name);
  if (!file.open(QFile::WriteOnly) || file.write(content) != content.size()) {
    throw std::runtime_error("cannot write " + name.toStdString());
  }
}

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

NewInstallation::NewInstallation(Look look)
    : look_(std::move(look)), before_(QDir::currentPath()), hardware_(demo::DemoConfig()) {
  QDir(folder_.path()).mkpath("Torvex");
  QDir::setCurrent(folder_.filePath("Torvex"));
  cockpit_ = std::make_unique<vc::Cockpit>(hardware_, vc::Cockpit::Settings{.port = 0, .links = false});
  EXPECT_TRUE(cockpit_->Start());
  cockpit_->Sim().RestartFlight(130);  // in cruise
  adapters_.Add("Torvex interface module", "CIM-0417", cockpit_->GaugeLine().Path());
  adapters_.Add("Torvex engine cluster", "TEC-0112", cockpit_->ClusterLine()->Path());
  adapters_.Add("Torvex IO module", "IOM-0231", cockpit_->IOModuleLine(1)->Path());
}

NewInstallation::~NewInstallation() {
  program_.reset();
  cockpit_.reset();
  QDir::setCurrent(before_);
}

void NewInstallation::Everything() {
  using Step = void (NewInstallation::*)();
  for (const Step step : {&NewInstallation::StartWithNothing, &NewInstallation::AssignAdapters,
                          &NewInstallation::GiveGroupsTheirPorts, &NewInstallation::FindTheGauges,
                          &NewInstallation::DefineAFunction, &NewInstallation::TestTheFunction,
                          &NewInstallation::SetUpTheAirspeed, &NewInstallation::SetUpTheTachometer,
                          &NewInstallation::SetUpTheCluster, &NewInstallation::SaveAndSetAsStartUp,
                          &NewInstallation::StartAgain}) {
    if (testing::Test::HasFailure()) return;
    (this->*step)();
  }
}

void NewInstallation::Begin() {
  program_ = std::make_unique<Program>(&boxes, &keys_, &adapters_);
  program_->Begin();
}

void NewInstallation::StartWithNothing() {
  EXPECT_TRUE(QDir().isEmpty());
  Begin();
  ASSERT_TRUE(Eventually([this] { return !boxes.shown.empty(); }));
  EXPECT_EQ(boxes.shown[0].find("Error Configuration file. "), 0u);
  boxes.shown.clear();
  ASSERT_TRUE(Eventually([this] { return program_->Sim().UdpOpen(); })) << "it looks for a simulator already";
  Seen("start");
  OnForm("frmMain").Press("CmdConfigure");
  ASSERT_TRUE(Eventually([] { return FormShown("FrmMainConfigure") != nullptr; }));
}

void NewInstallation::AssignAdapters() {
  OnForm("FrmMainConfigure").Press("cmdAdapters");
  const OnForm form("frmAdapters");
  auto& list = form.The<QTreeWidget>("ListAdapters");
  const std::pair<const char*, int> wanted[] = {
      {"Torvex interface module", 5}, {"Torvex IO module", 6}, {"Torvex engine cluster", 7}};
  for (const auto& [adapter, number] : wanted) {
    list.setCurrentItem(LineOf(list, adapter, 0));
    form.Pick("ComboAssign", number);
    form.Press("cmdAssignAdapter");
    EXPECT_NE(form.Text("LabelAdvice").find("COM " + std::to_string(number) + " leads to "),
              std::string::npos);
    EXPECT_TRUE(QFile::exists("comports/com" + QString::number(number)));
  }
  Seen("adapters");
  form.Press("CmdClose");
}

void NewInstallation::GiveGroupsTheirPorts() {
  const OnForm form("FrmMainConfigure");
  const std::tuple<const char*, const char*, int> groups[] = {{"ComboComGS", "cmdSetCommport", 5},
                                                              {"ComboCOMIOM", "cmdSetCommportIOM", 6},
                                                              {"ComboComEC", "cmdSetCommportEC", 7}};
  for (const auto& [list, button, number] : groups) {
    form.Pick(list, number);
    form.Press(button);
  }
  EXPECT_NE(
      form.The<QComboBox>("ComboComGS").currentText().indexOf("Torvex interface module, serial CIM-0417"),
      -1);
  form.Type("boxRemotePort", QString::number(cockpit_->Simulation().Port()));
  form.Type("boxLocalPort", QString::number(FreePort()));
  form.Press("cmdSetUDP");
  EXPECT_TRUE(Eventually([&] { return form.Text("LabelBus").find("COM 5 open") != std::string::npos; }));
  Seen("ports");
}

void NewInstallation::FindTheGauges() {
  const OnForm form("FrmMainConfigure");
  form.Press("cmdStartTest");
  auto& progress = form.The<QProgressBar>("ProgressBar1");
  ASSERT_TRUE(Eventually([&] { return progress.value() > 34; }, std::chrono::seconds(60)));
  Seen("search");
  ASSERT_TRUE(Eventually([&] { return !progress.isVisible(); }, std::chrono::seconds(120)));
  for (std::size_t id = 0; id < hardware_.Gauges.size(); ++id) {
    const GaugeRecord &there = hardware_.Gauges[id], &found = program_->Model().Gauges[id];
    EXPECT_EQ(found.GaugeType, there.GaugeType) << "GaugeID " << id;
    EXPECT_EQ(found.GaugeSetting1, there.GaugeSetting1) << "GaugeID " << id;
    EXPECT_EQ(program_->Model().GaugeState[id] == GaugeConnection::Connected, there.GaugeType != 0);
  }
  Seen("found");
}

void NewInstallation::MakeSimulatorsLists() const {
  const QString folder = QString(kSimulatorFolder) + "/Resources/plugins/";
  QDir().mkpath(folder);
  QByteArray datarefs = "2 1210 Mon Nov 24 10:10:21 2025\n\n";
  for (const char* line : kDatarefs) datarefs += QByteArray(line) + '\n';
  for (int i = 0; i < 3000; ++i) {
    datarefs +=
        "sim/multiplayer/position/plane" + QByteArray::number(i) + "_throttle\tfloat\ty\tratio\tThrottle\n";
  }
  Write(folder + "DataRefs.txt", datarefs);
  Write(folder + "Commands.txt", "sim/autopilot/heading                Autopilot heading-hold.\n");
}

void NewInstallation::DefineAFunction() {
  MakeSimulatorsLists();
  OnForm("FrmMainConfigure").Press("cmdGetOffset");
  const OnForm form("frmFunctionEditor");
  form.Type("SearchFunction", QString::number(kOwnFunction));
  auto& functions = form.The<QListView>("ListFunctions");
  functions.setCurrentIndex(functions.model()->index(0, 0));
  form.Pick("ComboDT", "Xplane Dataref");
  ChooseFolderWhenAsked(QDir(kSimulatorFolder).absolutePath());
  form.Press("cmdImportLists");
  EXPECT_EQ(boxes.shown,
            (std::vector<std::string>{"3008 data references were imported.\r\n1 commands were imported."}));
  boxes.shown.clear();
  form.Type("SearchText", "prop speed");
  auto& paths = form.The<QListView>("ListXplaneReferences");
  ASSERT_EQ(paths.model()->rowCount(), 2) << "every word typed must be in the path";
  paths.setCurrentIndex(paths.model()->index(1, 0));
  form.Press("cmdCopyEntry");
  EXPECT_EQ(form.The<QPlainTextEdit>("FullName").toPlainText(),
            "#1:sim/cockpit2/engine/indicators/prop_speed_rpm[0]\n");
  form.Type("ShortName", "Propeller RPM");
  form.Pick("FuncType", "Gauge");
  form.Pick("ComboClass", "Engines");
  form.Type("boxMaximumValue", "3500");
  Seen("function");
  form.Press("CmdSave");
  EXPECT_EQ(program_->Model().Functions[kOwnFunction].ShortName, "Propeller RPM");
}

void NewInstallation::TestTheFunction() {
  OnForm("frmFunctionEditor").Press("cmdTestFunction");
  const OnForm form("frmTestFunction");
  form.Press("CmdRead");
  const double rpm = *cockpit_->Sim().Datarefs().ValueOf("sim/cockpit2/engine/indicators/prop_speed_rpm[0]");
  EXPECT_GT(rpm, 1500);
  EXPECT_TRUE(Eventually([&] {
    const QString shown = QString::fromStdString(form.Text("BoxCorrectedValue"));
    return std::abs(shown.toDouble() - rpm) < 200;
  }));
  Seen("test");
  form.Press("CmdClose");
  OnForm("frmFunctionEditor").Press("CmdClose");
  EXPECT_TRUE(boxes.asked.empty()) << boxes.asked[0];
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
  const auto& gauge = dynamic_cast<vc::NeedleDevice&>(*cockpit_->Gauges().Find(gaugeID));
  form.Press("CmdCreateNewPlate");
  const auto& slider = form.The<QSlider>("SliderMoveNeedle");
  for (std::size_t i = 0; i < points.size(); ++i) {
    const QString box = i == 0 ? QString("CalMinimumValue") : "boxValue" + QString::number(i);
    form.Type(qPrintable(box), points[i].value);
    // With the keys, until the live needle points to the number.
    const std::tuple<int, const char*, const char*> jogs[] = {{100, "cmdJogPlus100", "cmdJogMinus100"},
                                                              {10, "cmdJogPlus10", "cmdJogMinus10"},
                                                              {1, "cmdJogPlus1", "cmdJogMinus1"}};
    for (const auto& [by, more, less] : jogs) {
      while (slider.value() + by <= points[i].position) form.Press(more);
      while (slider.value() - by >= points[i].position) form.Press(less);
    }
    EXPECT_TRUE(Eventually([&] { return gauge.First() == points[i].position; })) << box.toStdString();
    form.Press("cmdTakeNeedle");
  }
  form.Type("PlateName", name);
  form.Press("cmdSetCheck");
  EXPECT_EQ(boxes.shown, (std::vector<std::string>{"Plate verified and no errors found"}));
  boxes.shown.clear();
  form.Press("CmdSaveNewPlate");
  form.Press("cmdAssignPlate");
  Seen(picture);
  form.Press("CmdClose");
}

void NewInstallation::SetUpTheAirspeed() {
  OpenGauge(kAirspeedGauge);
  const OnForm form("frmInstrument");
  form.Pick("ComboFunction1", 1);
  form.PressAndWait("cmdRead");
  EXPECT_NE(form.Text("LabelIdentity").find("model 1"), std::string::npos) << form.Text("LabelIdentity");
  Seen("instrument");
  form.Press("CmdCalibrate1");
  MakePlate("Airspeed 40-200 kt", {{"40", 90}, {"80", 366}, {"120", 636}, {"160", 858}, {"200", 1032}},
            kAirspeedGauge, "calibration");
  form.Press("CmdClose");
}

void NewInstallation::SetUpTheTachometer() {
  OpenGauge(kTachometer);
  const OnForm form("frmInstrument");
  form.Pick("ComboFunction1", kOwnFunction);
  form.Press("CmdCalibrate1");
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
  form.Pick("ComboFunction0", kOwnFunction);
  form.Pick("ComboPlate0", program_->Model().PlateCount() - 1);
  EXPECT_TRUE(form.The<QAbstractButton>("CheckEnabled0").isChecked()) << "the first Function switches it on";
  form.Press("cmdTryHigh0");
  EXPECT_TRUE(Eventually([this] { return cockpit_->Cluster().Needle(0) == 930; })) << "the end of the scale";
  Seen("cluster");
  form.Press("cmdClose");
  status.Window()->close();
}

void NewInstallation::SaveAndSetAsStartUp() {
  OnForm("FrmMainConfigure").Press("cmdSaveConfig");
  const OnForm form("SaveConfig");
  form.Type("FileName", "MyCockpit.cfg");
  form.Press("cmdSave");
  EXPECT_EQ(boxes.shown, (std::vector<std::string>{"File saved as: MyCockpit.cfg"}));
  boxes.texts = {"1"};
  form.Press("cmdSetAsStartup");
  ASSERT_EQ(boxes.asked.size(), 1u);
  EXPECT_EQ(boxes.asked[0].find("Give autostart time delay"), 0u);
  boxes.shown.clear();
  boxes.asked.clear();
  Seen("save");
  form.Press("CmdClose");
  OnForm("FrmMainConfigure").Press("CmdClose");
  EXPECT_TRUE(boxes.asked.empty()) << "everything is saved: " << boxes.asked[0];
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
