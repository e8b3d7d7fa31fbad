#include "tools/monkey/Live.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <memory>

#include "platform/linux/TerminationSignals.h"
#include "platform/qt/QtFdWatcher.h"
#include "tools/monkey/Life.h"
#include "ui/Look.h"

namespace tvx::monkey {
namespace {

// The program is put together as its own main() does it.
constexpr int kFaultStatus = 96;
Journal* theJournal = nullptr;

void OnQtMessage(QtMsgType, const QMessageLogContext&, const QString& text) {
  // What this platform has not is no fault.
  if (text.startsWith("This plugin does not support") || text.startsWith("QStandardPaths: XDG_RUNTIME_DIR"))
    return;
  if (theJournal != nullptr) theJournal->Write("qt", text.toStdString());
}

// A desktop that takes every key.
class NoDesktop final : public KeyInjector {
 public:
  bool Inject(std::span<const KeyStroke>) override { return true; }
  std::string Trouble() const override { return {}; }
};

// No browser is started.
class NoBrowser : public QObject {
  Q_OBJECT
 public:
  NoBrowser() {
    for (const char* scheme : {"file", "http", "https"})
      QDesktopServices::setUrlHandler(scheme, this, "Open");
  }
 public slots:
  void Open(const QUrl&) {}
};

// The user's home is the life's folder; only what fonts have cached stays where it is.
void LiveAtHome() {
  if (!qEnvironmentVariableIsSet("XDG_CACHE_HOME"))
    qputenv("XDG_CACHE_HOME", QDir::home().filePath(".cache").toLocal8Bit());
  for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
    qputenv(variable, QDir::currentPath().toLocal8Bit());
}

void LiveInProgram(std::uint64_t seed, World& world, Journal& journal, Watchdog& watchdog) {
  NoDesktop keys;
  Program program(nullptr, &keys, &world.Adapters());
  const TerminationSignals termination(std::make_unique<QtFdWatcher>(), [&program] { program.Exit(); });
  Life life(seed, {program, world, journal, watchdog});
  program.Begin();
  life.Ended(program.Ended() ? 0 : QApplication::exec());
}

}  // namespace

int Live(std::uint64_t seed, int argc, char** argv) {
  LiveAtHome();
  qputenv("QT_QPA_PLATFORM", "offscreen");
  Journal journal(Journal::kFile);
  theJournal = &journal;
  qInstallMessageHandler(OnQtMessage);
  QApplication application(argc, argv);
  look::Apply(application, look::Theme::Dark);
  const NoBrowser noBrowser;
  World world(Dice(seed, 0));
  {
    Watchdog watchdog(journal.Handle());
    LiveInProgram(seed, world, journal, watchdog);
    journal.Write("ended", std::to_string(watchdog.SinceEndExpectedMs()));
  }
  const std::string trouble = world.TheFiles().Trouble();
  if (!trouble.empty()) journal.Fault(trouble);
  theJournal = nullptr;
  return journal.Faulty() ? kFaultStatus : 0;
}

}  // namespace tvx::monkey

#include "Live.moc"
