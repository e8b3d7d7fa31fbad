#include "app/Program.h"

#include <QApplication>
#include <QThread>
#include <array>
#include <ctime>

#include "config/StandardFunctions.h"
#include "config/plates/StandardPlates.h"
#include "platform/AtomicFile.h"
#include "ui/LogoFace.h"

namespace tvx {
namespace {

constexpr int kCountdownTickMs = 50;
constexpr int kSecondMs = 1000;
constexpr int kTransmitTickMs = 20;
constexpr int kLinkTickMs = 20;
constexpr int kLinkRestMs = 100;  // while nothing waits: waking up costs more than what there is to do

}  // namespace

Program::Program(MessageBoxes* boxes, KeyInjector* keys, SerialDevices* devices, Machine* machine,
                 MulticastListener* beacons)
    : around_({boxes, keys, devices, machine, beacons}),
      file_(model_, boxes_),
      sim_(model_, connections_.ToSimulator(), boxes_, clock_),
      hardware_(model_, connections_.Ports()),
      serial_(hardware_, boxes_, clock_),
      // A keystroke meant for the simulator must not land in the program's own window.
      keystrokes_(around_.Keys(), boxes_, [this] { return statusForm_ && statusForm_->isMinimized(); }),
      finder_(around_.Beacons(), clock_),
      follower_(model_, sim_, finder_, clock_),
      run_(model_, sim_, serial_, boxes_, *this, clock_, peripherals_,
           {timers_.ProcessTimer, timers_.Timer1, timers_.WriteCmdDuringConfig}),
      ioModule1_(model_, sim_, serial_, keystrokes_, boxes_, clock_, kIOModule1Parameters,
                 [this] { return run_.Cycle().CockpitLighting().Word(); }),
      ioModule2_(model_, sim_, serial_, keystrokes_, boxes_, clock_, kIOModule2Parameters,
                 [this] { return run_.Cycle().CockpitLighting().Word(); }),
      engineCluster_(model_, sim_, hardware_, boxes_, clock_,
                     [this] { return run_.Cycle().CockpitLighting().Word(); }),
      yokes_(model_, sim_, hardware_, boxes_, clock_, around_.TheMachine().MakeJoysticks(),
             connections_.InACrash()),
      start_(model_, file_, sim_, finder_, boxes_, *this, clock_, run_,
             {timers_.WaitForAutostart, timers_.TimerWaitForFS, timers_.TimerCheckForSilence}),
      configuration_({model_,
                      file_,
                      boxes_,
                      serial_,
                      run_,
                      peripherals_,
                      around_.Adapters(),
                      adapterLine_,
                      around_.TheMachine().Numbers(),
                      engineCluster_,
                      functions_,
                      finder_,
                      aircraft_,
                      *this,
                      {&ioModule1_.Module(), &ioModule2_.Module()},
                      clock_}),
      watch_({model_,
              sim_,
              serial_,
              hardware_,
              run_.Cycle(),
              {&ioModule1_.Module(), &ioModule2_.Module()},
              engineCluster_.Cluster(),
              yokes_.Pair(),
              clock_,
              [this] { return run_.Running(); }},
             model_, sim_, connections_.Trace(), boxes_, clock_) {
  // A user without a configuration begins with these.
  FillStandardFunctions(model_);
  FillStandardPlates(model_);
  RemoveStaleTemporaries({});
  // A form that makes way for the next one must not end the program.
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setWindowIcon(ProgramIcon());
  registrations_.push_back(start_.SetChanged([this] {
    if (startForm_) startForm_->ShowView();
    ShowUnsaved();
    presence_.ShowState();
  }));
  registrations_.push_back(run_.SetChanged([this] {
    if (statusForm_) statusForm_->ShowView();
    presence_.ShowState();
  }));
  ConnectTimers();
  AddPeripherals();
}

void Program::AddPeripherals() {
  const auto add = [this](PeripheralKind kind, Peripheral& peripheral) {
    peripherals_[static_cast<std::size_t>(kind)] = &peripheral;
  };
  add(PeripheralKind::IOModule1, ioModule1_);
  add(PeripheralKind::IOModule2, ioModule2_);
  add(PeripheralKind::EngineCluster, engineCluster_);
  add(PeripheralKind::Yokes, yokes_);
  run_.SetKeystrokeTrouble(around_.Keys().Trouble());
}

Program::~Program() {
  ended_ = true;
  UnloadEverything();  // what was opened while the program was already on its way out
  // Forms that were unloaded, and that no event loop is left to delete.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Program::UnloadEverything() {
  boxes_.Dismiss();
  timers_.StopAll();
  UnloadConfigurationForms();
  // While the simulator can still be told to take its controls back.
  for (Peripheral* peripheral : peripherals_) peripheral->Unload();
  UnloadStatusForm();
  UnloadStartForm();
  sideForms_.Unload();
  serial_.CloseComPorts();
  if (!sim_.UdpOpen() && sim_.PortCount() == 0) return;
  sim_.ClearAllRREF();
  sim_.CloseAllPorts();
  sim_.CloseUDP();
}

void Program::ConnectTimers() {
  const auto connect = [this](QtTimer& timer, int milliseconds, auto tick) {
    timer.SetInterval(milliseconds);
    registrations_.push_back(timer.OnTick([this, tick] {
      if (!ended_) tick();
    }));
  };
  connect(timers_.WaitForAutostart, kCountdownTickMs, [this] { start_.WaitForAutostart_Tick(); });
  connect(timers_.TimerWaitForFS, kSecondMs, [this] { start_.TimerWaitForFS_Tick(); });
  connect(timers_.FinderTimer, kSecondMs, [this] {
    finder_.Tick();
    follower_.Tick(configuration_.MainForm() == nullptr);
    yokes_.GiveBackLeftOnes();
    aircraft_.Tick();
    run_.SetAircraftWords(aircraft_.Words());
    presence_.Tick();
  });
  timers_.FinderTimer.SetEnabled(true);
  connect(timers_.ProcessTimer, model_.General.TransferInterval, [this] { run_.ProcessTimer_Tick(); });
  connect(timers_.Timer1, kSecondMs, [this] { run_.Timer1_Tick(); });
  connect(timers_.WriteCmdDuringConfig, kTransmitTickMs, [this] {
    run_.WriteCmdDuringConfig_Tick();
    configuration_.Tick();
  });
  timers_.LinkTimer.SetInterval(kLinkTickMs);
  registrations_.push_back(timers_.LinkTimer.OnTick([this] { LinkTimer_Tick(); }));
  timers_.LinkTimer.SetEnabled(true);
}

void Program::LinkTimer_Tick() {
  sim_.Tick();
  timers_.LinkTimer.SetInterval(sim_.RequestsWait() ? kLinkTickMs : kLinkRestMs);
  if (leaving_ && !sim_.SayingGoodbye()) LeaveEventLoop();
}

void Program::Begin() {
  presence_.Begin();
  ShowStartForm();
}

void Program::ShowItself() {
  if (ended_) return;
  presence_.ShowWindows();
  boxes_.Show("This program was started again in the same folder. It runs here already.");
}

void Program::BringInUseToFront() {
  Form* inUse = startForm_.Get();
  if (statusForm_) inUse = statusForm_.Get();
  if (configuration_.MainForm() != nullptr) inUse = configuration_.MainForm();
  if (inUse != nullptr) inUse->BringToFront();
}

void Program::Exit() {
  if (ended_) return;
  boxes_.Dismiss();
  if (statusForm_) {
    run_.cmdExit_Click();
  } else {
    start_.Exit_Click();
  }
}

void Program::ShowStartForm() {
  if (ended_) return;
  const auto make = [this] {
    auto* form = new StartForm(start_, [this] { OpenWebPage(); });
    unsavedPanel_ = new UnsavedPanel(unsaved_, [this] { start_.CmdConfigure_Click(); });
    form->AddNotice(unsavedPanel_);
    form->AddChoice(presence_.MakeChoice());
    return form;
  };
  startForm_.GetOrMake(make).BringToFront();
  ShowUnsaved();
}

void Program::ShowUnsaved() {
  if (startForm_ && unsavedPanel_) unsavedPanel_->ShowFor(start_.View().FileName);
}

void Program::UnloadStartForm() {
  if (configuration_.MainForm() != nullptr) unsaved_.Follow();
  // The configuration stands above the start form.
  configuration_.Unload();
  startForm_.Unload();
}

void Program::ShowStatusForm() {
  if (ended_) return;
  statusForm_
      .GetOrMake([this] {
        return new StatusForm(
            run_, [this] { watch_.ShowPorts(); }, [this] { watch_.ShowCockpit(); },
            [this] { sideForms_.ShowMessages(); });
      })
      .BringToFront();
}

void Program::UnloadStatusForm() {
  watch_.Unload();
  statusForm_.Unload();
}

void Program::ShowMainConfiguration() {
  if (ended_) return;
  // The start form is activated when the configuration is done with it; until then the configuration file
  // stays the one that is being edited.
  if (startForm_) startForm_->HoldActivation(true);
  // The dialogs send single frames to the gauges.
  timers_.WriteCmdDuringConfig.SetEnabled(true);
  configuration_.Show(startForm_.Get());
}

FormCare::Parts Program::MakeCareParts() {
  return {model_,
          history_,
          [this] { ConfigurationReplaced(); },
          [this] { configuration_.SaveInUse(); },
          [this] { return configuration_.SaveWords(); },
          [this](const Subject& subject) { watch_.ShowRoad(subject); },
          [this] { return ended_ || file_.Loading() || configuration_.Searching(); },
          [this](const QString& form) {
            if (!ended_) sideForms_.ShowHelp(form);
          }};
}

// Whoever works with something that was made from the configuration makes it anew.
void Program::ConfigurationReplaced() {
  configuration_.ConfigurationReplaced();
  ioModule1_.ConfigurationReplaced();
  ioModule2_.ConfigurationReplaced();
  yokes_.Pair().ApplySettings();
  if (statusForm_) run_.SliderXferTimer_Change(model_.General.TransferInterval);
}

void Program::ConfigurationClosed() {
  timers_.WriteCmdDuringConfig.SetEnabled(false);
  unsaved_.Follow();
  if (ended_ || !startForm_) return;
  startForm_->HoldActivation(false);
  startForm_->BringToFront();
  startForm_->Activate();
}

bool Program::MayChangeConfiguration() const {
  return !ended_ && statusForm_ && run_.Activated() && configuration_.MainForm() == nullptr &&
         !file_.Loading();
}

bool Program::UseConfiguration(const std::string& file) {
  const std::string before = model_.ConfigFileName;
  const bool ran = run_.Running(), changed = model_.ConfigChanged;
  if (!unsaved_.Keep()) return false;
  watch_.UnloadRoad();  // its road is one of the configuration that goes
  run_.PutAway();
  model_.ConfigFileName = file;
  file_.LoadConfigFile();
  if (ended_) return false;
  const bool loaded = !model_.ConfigLoadFailed;
  if (!loaded) {
    model_.ConfigFileName = before;
    file_.LoadConfigFile();
    if (changed && !ended_) unsaved_.Take(before);
  }
  if (ended_) return false;
  run_.TakeUp(model_.ConfigFileName, ran);
  return loaded;
}

void Program::UnloadConfigurationForms() {
  watch_.UnloadRoad();
  configuration_.Unload();
  if (startForm_) startForm_->HoldActivation(false);
}

void Program::OpenWebPage() {
  if (!ended_) sideForms_.ShowHelp({});
}

void Program::EndProgram() {
  if (ended_) return;
  ended_ = true;
  presence_.End();
  unsaved_.Keep();
  UnloadEverything();
  leaving_ = true;
  if (!sim_.SayingGoodbye()) LeaveEventLoop();
}

// Not by QCoreApplication::quit(), which asks every window first whether it may close. Where no event loop
// runs yet, none is entered (main looks at Ended).
void Program::LeaveEventLoop() {
  leaving_ = false;
  timers_.LinkTimer.SetEnabled(false);
  if (QThread::currentThread()->loopLevel() > 0) QCoreApplication::exit(0);
}

std::string Program::HeaderForSaving() const {
  const std::tm now = clock_.LocalTime();
  std::array<char, 32> text{};
  std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &now);
  const StartView& view = start_.View();
  // A name without a version is no simulator that answered.
  const bool answered = !view.LabelXplaneVersion.empty();
  return BuildConfigHeader(answered ? view.SimulatorName : std::string(), view.LabelXplaneVersion,
                           text.data());
}

}  // namespace tvx
