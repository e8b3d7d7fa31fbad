// The virtual cockpit: a stand-in simulator and stand-in instruments, drawn.
#include <QApplication>
#include <QTimer>
#include <cstdio>
#include <filesystem>

#include "base/Version.h"
#include "virtualcockpit/Cockpit.h"
#include "virtualcockpit/EndSignals.h"
#include "virtualcockpit/Options.h"
#include "virtualcockpit/Replay.h"
#include "virtualcockpit/panel/PanelWindow.h"
#include "virtualcockpit/yokes/YokeWindow.h"

namespace {

using namespace tvx;

constexpr int kBadCommandLine = 2;
constexpr int kPictureBeforeEndMs = 300;

void Say(const std::string& text) {
  std::fprintf(stderr, "virtual-cockpit: %s\n", text.c_str());
}

QString Utf8(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// What --help and --version print; std::nullopt when neither was asked for. Needs no display.
std::optional<QString> AnswerWithoutWindow(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  vc::Options options;
  QString ignored;  // Qt's own options, as -platform, are still among the arguments
  vc::ParseOptions(QCoreApplication::arguments(), options, ignored);
  if (options.help) return vc::HelpText();
  if (!options.version) return std::nullopt;
  return QCoreApplication::applicationName() + QStringLiteral(" ") + QCoreApplication::applicationVersion() +
         QStringLiteral("\n");
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
  QCoreApplication::setApplicationName(QStringLiteral("virtual-cockpit"));
  QCoreApplication::setApplicationVersion(Utf8(kProgramVersion));
  if (const auto answer = AnswerWithoutWindow(argc, argv)) {
    std::fputs(qUtf8Printable(*answer), stdout);
    return 0;
  }
  QApplication application(argc, argv);
  vc::Options options;
  QString reason;
  if (!vc::ParseOptions(QCoreApplication::arguments(), options, reason)) {
    Say(reason.toStdString());
    std::fputs(qUtf8Printable(vc::HelpText()), stderr);
    return kBadCommandLine;
  }
  // Files are named from where the program was called, whatever folder it then works in.
  for (std::optional<std::string>* file : {&options.config, &options.screenshot, &options.replay}) {
    if (*file) *file = std::filesystem::absolute(**file).string();
  }
  std::error_code failure;
  std::filesystem::current_path(options.folder, failure);
  if (failure) {
    Say(options.folder + ": " + failure.message());
    return kBadCommandLine;
  }

  ConfigModel model;
  std::string error;
  Trace trace;
  const bool loaded = options.replay
                          ? vc::LoadTrace(*options.replay, trace, model, error)
                          : vc::LoadConfiguration(
                                options.config ? *options.config : vc::DefaultConfiguration(), model, error);
  if (!loaded) Say(error);
  vc::Cockpit cockpit(model, {options.port, ".", true, options.traits, options.simulator});
  cockpit.Sim().SetSpeed(options.speed);
  if (!cockpit.Start()) Say(cockpit.Simulation().LastError() + cockpit.GaugeLine().Line().LastError());
  const auto yokes = vc::MakeYokes(model, ".", cockpit.Traits().lines, cockpit.Traits().yokes);
  for (const auto& yoke : yokes) {
    if (!yoke->Plug()) Say(yoke->Line().LastError());
  }
  std::optional<vc::Replay> replay;
  if (options.replay && loaded) {
    const auto program = vc::PeerOf("127.0.0.1", model.General.LocalPort);
    replay.emplace(trace, cockpit, yokes, program.value_or(vc::Peer{}));
    replay->Start();
  }
  const auto setYokes = [&yokes](const vc::Traits& traits) {
    vc::SetYokeTraits(yokes, traits.lines, traits.yokes);
  };
  vc::PanelWindow window(cockpit, yokes.empty() ? std::function<void(const vc::Traits&)>() : setYokes);
  window.ShowParts({!options.withoutInstruments, !options.withoutUnits, !options.withoutControls});
  if (!loaded) window.SetNotice(QString::fromStdString(error));
  const vc::EndSignals signalsToEnd([] { QApplication::quit(); });
  Schedule(options, window, application);
  vc::YokeWindow yokeWindow(yokes);
  if (!yokes.empty() && !options.withoutYokes) yokeWindow.show();
  window.show();
  const int status = QApplication::exec();
  cockpit.Stop();
  return status;
}
