// The virtual cockpit: a stand-in simulator and stand-in instruments, drawn.
#include <QApplication>
#include <QTimer>
#include <cstdio>
#include <filesystem>

#include "virtualcockpit/Cockpit.h"
#include "virtualcockpit/EndSignals.h"
#include "virtualcockpit/Options.h"
#include "virtualcockpit/panel/PanelWindow.h"
#include "virtualcockpit/yokes/YokeWindow.h"

namespace {

using namespace tvx;

constexpr int kBadCommandLine = 2;
constexpr int kPictureBeforeEndMs = 300;

void Say(const std::string& text) {
  std::fprintf(stderr, "virtual-cockpit: %s\n", text.c_str());
}

// Prints, ends and takes the picture at the times that the options name.
void Schedule(const vc::Options& options, vc::PanelWindow& window, QApplication& application) {
  if (options.print) {
    auto* timer = new QTimer(&window);
    QObject::connect(timer, &QTimer::timeout, &window, [&window] {
      std::printf("%s\n", qUtf8Printable(window.Words()));
      std::fflush(stdout);
    });
    timer->start(1000);
  }
  if (!options.seconds) return;
  const int end = *options.seconds * 1000;
  QTimer::singleShot(end, &application, &QApplication::quit);
  if (!options.screenshot) return;
  QTimer::singleShot(end - kPictureBeforeEndMs, &window, [&window, file = *options.screenshot] {
    if (!window.grab().save(QString::fromStdString(file))) Say(file + ": the picture cannot be written");
  });
}

}  // namespace

int main(int argc, char** argv) {
  vc::EndSignals::HoldBack();
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("virtual-cockpit"));
  vc::Options options;
  std::string error;
  QStringList words = QApplication::arguments();
  words.removeFirst();
  std::vector<std::string> arguments;
  for (const QString& word : words) arguments.push_back(word.toStdString());
  if (!vc::ParseOptions(arguments, options, error)) {
    Say(error);
    std::fputs(vc::UsageText().c_str(), stderr);
    return kBadCommandLine;
  }
  if (options.help) {
    std::fputs(vc::UsageText().c_str(), stdout);
    return 0;
  }
  // Files are named from where the program was called, whatever folder it then works in.
  for (std::optional<std::string>* file : {&options.config, &options.screenshot}) {
    if (*file) *file = std::filesystem::absolute(**file).string();
  }
  std::error_code failure;
  std::filesystem::current_path(options.folder, failure);
  if (failure) {
    Say(options.folder + ": " + failure.message());
    return kBadCommandLine;
  }

  ConfigModel model;
  const bool loaded =
      vc::LoadConfiguration(options.config ? *options.config : vc::DefaultConfiguration(), model, error);
  if (!loaded) Say(error);
  vc::Cockpit cockpit(model, {options.port, ".", true});
  cockpit.Sim().SetSpeed(options.speed);
  if (!cockpit.Start()) Say(cockpit.Simulation().LastError() + cockpit.GaugeLine().Line().LastError());
  vc::PanelWindow window(cockpit);
  if (!loaded) window.SetNotice(QString::fromStdString(error));
  const vc::EndSignals signalsToEnd([] { QApplication::quit(); });
  Schedule(options, window, application);
  const auto yokes = vc::MakeYokes(model, ".");
  for (const auto& yoke : yokes) {
    if (!yoke->Plug()) Say(yoke->Line().LastError());
  }
  vc::YokeWindow yokeWindow(yokes);
  if (!yokes.empty()) yokeWindow.show();
  window.show();
  const int status = QApplication::exec();
  cockpit.Stop();
  return status;
}
