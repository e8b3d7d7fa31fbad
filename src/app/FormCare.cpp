#include "app/FormCare.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <algorithm>

#include "ui/windows/Accessible.h"

namespace tvx {
namespace {

constexpr int kLookMs = 200;
constexpr const char* kCared = "cared";

// The forms that change the configuration. The one that saves it has a Save of its own.
constexpr const char* kSaveForm = "SaveConfig";
constexpr const char* kEditing[] = {
    "FrmMainConfigure",      "frmGuide",       kSaveForm,           "frmAdapters",
    "frmInstrument",         "frmCalibrate",   "frmTestGauges",     "ConfigIOM",
    "ConfigSwitch",          "ConfigAnalogue", "ConfigLamp",        "frmConfigEC",
    "frmConfigY1",           "frmConfigY2",    "frmFunctionEditor", "frmListFunctions",
    "frmTestXplaneInterface"};

bool Edits(const Form& form) {
  return std::any_of(std::begin(kEditing), std::end(kEditing),
                     [&form](const char* name) { return form.objectName() == QLatin1String(name); });
}

// Whether a text has something of its own to undo or redo; the keys are its own then.
bool HasOwnSteps(const QObject* watched, bool again) {
  if (const auto* line = qobject_cast<const QLineEdit*>(watched))
    return again ? line->isRedoAvailable() : line->isUndoAvailable();
  if (const auto* text = qobject_cast<const QPlainTextEdit*>(watched))
    return again ? text->document()->isRedoAvailable() : text->document()->isUndoAvailable();
  return true;
}

}  // namespace

FormCare::FormCare(Parts parts) : parts_(std::move(parts)) {
  look_.setObjectName("LookTimer");
  connect(&look_, &QTimer::timeout, this, &FormCare::Look);
  if (const auto theme = memory_.Theme(); theme && *theme != look::CurrentTheme()) look::Apply(*qApp, *theme);
  qApp->installEventFilter(this);
}

bool FormCare::AnyBar() const {
  return std::any_of(bars_.begin(), bars_.end(), [](const auto& bar) { return bar && bar->isVisible(); });
}

void FormCare::Look() {
  if (parts_.busy()) return;
  parts_.history.Look();
  if (AnyBar()) {
    ShowBars();
  } else {
    look_.stop();
  }
}

void FormCare::Welcome(Form& form) {
  if (form.property(kCared).toBool()) return;
  form.setProperty(kCared, true);
  connect(&form, &Form::FollowAsked, this, [this](const Subject& subject) { parts_.follow(subject); });
  if (Edits(form)) AddBar(form);
  NameControls(&form);
  // Once it has been fitted to its screen, which may have made it smaller than it could be before.
  QMetaObject::invokeMethod(
      &form,
      [this, &form] {
        if (!form.Unloading()) memory_.Restore(form);
      },
      Qt::QueuedConnection);
}

void FormCare::AddBar(Form& form) {
  // What changed while no form was open that changes it was another file, or the program itself.
  std::erase_if(bars_, [](const auto& bar) { return bar.isNull(); });
  if (!AnyBar() && parts_.history.Look()) parts_.history.Begin();
  EditBar::Actions actions{[this] { Undo(false); }, [this] { Undo(true); }, {}};
  if (form.objectName() != QLatin1String(kSaveForm)) {
    actions.save = [this] {
      parts_.save();
      Look();
    };
  }
  auto* bar = new EditBar(std::move(actions), &form);
  bars_.emplace_back(bar);
  form.AddFoot(bar);
  ShowBars();
  look_.start(kLookMs);
}

void FormCare::Undo(bool again) {
  if (parts_.busy()) return;
  if (again ? parts_.history.Redo() : parts_.history.Undo()) {
    parts_.replaced();
    for (QWidget* window : QApplication::topLevelWidgets()) {
      auto* form = qobject_cast<Form*>(window);
      if (form != nullptr && !form->Unloading()) form->ConfigurationReplaced();
    }
  }
  ShowBars();
}

void FormCare::ShowBars() {
  const ConfigModel& model = parts_.model;
  const QString file = ToText(model.ConfigFileName);
  const EditBar::View view{ToText(parts_.history.UndoName()), ToText(parts_.history.RedoName()),
                           model.ConfigChanged ? tr("%1: not saved").arg(file) : tr("%1: saved").arg(file),
                           ToText(parts_.saveWords()), model.ConfigChanged};
  for (const auto& bar : bars_) {
    if (bar) bar->Show(view);
  }
}

// False: the key was pressed elsewhere than in a form.
bool FormCare::HelpAsked(QObject* watched) {
  const auto* widget = qobject_cast<QWidget*>(watched);
  const auto* form = widget == nullptr ? nullptr : qobject_cast<Form*>(widget->window());
  if (form == nullptr) return false;
  parts_.help(form->objectName());
  return true;
}

bool FormCare::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Show) {
    if (auto* form = qobject_cast<Form*>(watched)) Welcome(*form);
  } else if (event->type() == QEvent::Hide && !event->spontaneous()) {
    if (const auto* form = qobject_cast<Form*>(watched)) memory_.Keep(*form);
  } else if (event->type() == QEvent::ApplicationPaletteChange && watched == qApp) {
    memory_.KeepTheme(look::CurrentTheme());
  } else if (event->type() == QEvent::ShortcutOverride) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool undo = key->matches(QKeySequence::Undo), redo = key->matches(QKeySequence::Redo);
    if ((undo || redo) && AnyBar() && !HasOwnSteps(watched, redo)) {
      event->ignore();
      return true;
    }
  } else if (event->type() == QEvent::KeyPress &&
             static_cast<QKeyEvent*>(event)->matches(QKeySequence::HelpContents)) {
    return HelpAsked(watched);
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace tvx
