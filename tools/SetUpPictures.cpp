#include "tools/SetUpPictures.h"

#include <QElapsedTimer>
#include <cstdio>

#include "tests/e2e/NewInstallation.h"

namespace tvx::tools {
namespace {

// The window that the user looks at then: the one that was opened last.
QWidget* UppermostForm() {
  static constexpr const char* kUppermostFirst[] = {
      "frmConfigEC", "frmTestFunction", "frmFunctionEditor", "frmCalibrate", "frmInstrument",
      "SaveConfig",  "frmAdapters",     "FrmMainConfigure",  "frmStatus",    "frmMain"};
  for (const char* name : kUppermostFirst) {
    if (QWidget* form = e2e::FormShown(name)) return form;
  }
  return nullptr;
}

}  // namespace

void TakeSetUpPictures(const QDir& folder) {
  e2e::NewInstallation installation([&folder](const char* name) {
    QElapsedTimer shown;
    shown.start();
    // What has just been pressed lets go, and readings arrive.
    e2e::Eventually([&shown] { return shown.elapsed() > 700; });
    QWidget* form = UppermostForm();
    const QString file = QString("set-up-%1.png").arg(name);
    if (form == nullptr || !form->grab().save(folder.filePath(file))) {
      std::fprintf(stderr, "no picture of %s\n", name);
      return;
    }
    std::printf("%s\n", qPrintable(file));
  });
  installation.Everything();
}

}  // namespace tvx::tools
