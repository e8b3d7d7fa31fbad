// Takes a picture of every step of a set-up from nothing, and of every form of the program, flying the
// demonstration against the virtual cockpit: the manual's pictures, and a quick look after a change of the
// forms. Arguments: the folder for the pictures, and "light" for the day's colours.
#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QListWidget>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidget>
#include <QWidget>
#include <cstdio>
#include <functional>
#include <vector>

#include "tests/e2e/Flight.h"
#include "tests/e2e/Hands.h"
#include "tools/SetUpPictures.h"
#include "ui/Look.h"

namespace {

using tvx::e2e::Eventually;
using tvx::e2e::Flight;

QWidget* VisibleControl(const char* name) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (!window->isVisible()) continue;
    if (auto* control = window->findChild<QWidget*>(name); control != nullptr && control->isVisible())
      return control;
  }
  return nullptr;
}

// Presses a button; false, with a word on it, where it is not there.
bool Press(const char* name) {
  auto* button = qobject_cast<QAbstractButton*>(VisibleControl(name));
  if (button == nullptr || !button->isEnabled()) {
    std::fprintf(stderr, "no button %s\n", name);
    return false;
  }
  button->click();
  return true;
}

void RunFor(std::chrono::milliseconds time) {
  const auto end = std::chrono::steady_clock::now() + time;
  Eventually([end] { return std::chrono::steady_clock::now() > end; });
}

// "FrmMainConfigure" is in frm-main-configure.png, its second page in frm-main-configure-1.png.
QString FileName(const QWidget& form, int page = 0) {
  QString name = form.objectName();
  static const QRegularExpression wordBegins("(?<=[a-z])(?=[A-Z])");
  name = name.replace(wordBegins, "-").toLower();
  return name + (page > 0 ? "-" + QString::number(page) : QString()) + ".png";
}

// Pictures of the visible forms that have none yet, named after them.
void TakePictures(const QDir& folder) {
  RunFor(std::chrono::milliseconds(700));
  for (QWidget* window : QApplication::topLevelWidgets()) {
    const QString file = folder.filePath(FileName(*window));
    if (!window->isVisible() || window->objectName().isEmpty() || QFile::exists(file)) continue;
    window->grab().save(file);
    std::printf("%s\n", qPrintable(QFileInfo(file).fileName()));
  }
}

// Every page of the tabs that are to be seen, named after its form and its place.
void TakePages(const QDir& folder) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    auto* tabs = window->isVisible() ? window->findChild<QTabWidget*>() : nullptr;
    if (tabs == nullptr) continue;
    for (int page = 1; page < tabs->count(); ++page) {
      tabs->setCurrentIndex(page);
      RunFor(std::chrono::milliseconds(700));
      window->grab().save(folder.filePath(FileName(*window, page)));
    }
  }
}

// Opens the definitions of an axis and of a lamp too: those in the list behind the 48 switches.
void TakeOtherInputs(const QDir& folder) {
  for (const int row : {48, 56}) {
    auto* form = VisibleControl("cmdEdit");
    auto* list = form == nullptr ? nullptr : form->window()->findChild<QListWidget*>();
    if (list == nullptr || list->count() <= row) return;
    list->setCurrentRow(row);
    Press("cmdEdit");
    TakePictures(folder);
  }
}

// What is offered for several gauges at once.
void TakeManyGauges(const QDir& folder) {
  auto* list = qobject_cast<QTreeWidget*>(VisibleControl("Configlist"));
  if (list == nullptr) return;
  const auto tick = [list](Qt::CheckState state) {
    for (const int row : {0, 2, 4}) list->topLevelItem(row)->setCheckState(0, state);
  };
  tick(Qt::Checked);
  RunFor(std::chrono::milliseconds(300));
  list->window()->grab().save(folder.filePath("many-gauges.png"));
  tick(Qt::Unchecked);
}

void CloseForm(const char* name) {
  if (QWidget* form = tvx::e2e::FormShown(name)) form->close();
  RunFor(std::chrono::milliseconds(100));
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const bool light = argc > 2 && std::string_view(argv[2]) == "light";
  tvx::look::Apply(application, light ? tvx::look::Theme::Light : tvx::look::Theme::Dark);
  const QDir folder(QDir(argc > 1 ? argv[1] : ".").absolutePath());
  folder.mkpath(".");
  tvx::tools::TakeSetUpPictures(folder);
  Flight flight([](tvx::ConfigModel& model) {
    model.General.TransferInterval = 40;
    model.General.ComPortYoke1 = 8;
    model.General.ComPortYoke2 = 9;
  });
  flight.Sim().RestartFlight(60);
  flight.TheProgram().Begin();
  TakePictures(folder);
  Eventually([&] { return flight.TheProgram().Run().Running(); });
  RunFor(std::chrono::seconds(2));
  TakePictures(folder);
  for (const char* button : {"cmdShowPorts", "cmdMessages", "cmdShowIOM", "cmdShowECStatus", "cmdShowYokes",
                             "cmdCockpit", "cmdFollow"}) {
    if (Press(button)) TakePictures(folder);
  }
  TakePages(folder);  // of the cockpit
  Press("CmdConfig");
  TakePictures(folder);
  TakeManyGauges(folder);
  // Each button of the configuration, and those of the forms that it opens.
  const std::vector<std::vector<const char*>> ways = {
      {"cmdSaveConfig"},
      {"cmdGetOffset"},
      {"cmdTestXplaneInterface"},
      {"cmdGotoIOM", "cmdConfigIOM", "cmdEdit"},
      {"cmdGotoEC", "cmdTestEC", "cmdConfigEC"},
      {"cmdGotoFFB", "cmdConfigY1"},
      {"cmdPlates"},
      {"cmdTestGauges"},
      {"cmdAdapters"},
      {"cmdAircraft"},
      {"cmdGuide"},
  };
  for (const auto& way : ways) {
    for (const char* button : way) {
      if (Press(button)) TakePictures(folder);
    }
    TakePages(folder);
    TakeOtherInputs(folder);
    // By name: closing one may take others away.
    QStringList open;
    for (const QWidget* window : QApplication::topLevelWidgets()) {
      const QString name = window->objectName();
      if (window->isVisible() && name != "FrmMainConfigure" && name != "frmMain") open << name;
    }
    for (const QString& name : open) CloseForm(qPrintable(name));
  }
  for (const int gaugeID : {12, 21, 33}) {  // instruments with much to set
    flight.TheProgram().Configuration().OpenGauge(gaugeID);
    TakePictures(folder);
    const QString taken = folder.filePath("frm-instrument.png");
    QFile::rename(taken, folder.filePath(QString("frm-instrument-%1.png").arg(gaugeID)));
    CloseForm("frmInstrument");
  }
  flight.TheProgram().Exit();
  return 0;
}
