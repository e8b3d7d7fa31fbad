#include "app/SideForms.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace tvx {
namespace {

// The manual as it was installed with the program, or in the sources that it was built from.
constexpr const char* kManualPlaces[] = {"../share/doc/torvex-control/manual.md", "../../docs/manual.md",
                                         "../../../docs/manual.md", "manual.md"};

// Its file; empty where there is none.
QString FindManual() {
  const QString folder = QCoreApplication::applicationDirPath() + '/';
  for (const char* place : kManualPlaces) {
    const QFileInfo manual(folder + QString::fromLatin1(place));
    if (manual.isFile()) return manual.canonicalFilePath();
  }
  return {};
}

}  // namespace

void SideForms::ShowHelp(const QString& form) {
  const QString manual = FindManual();
  if (manual.isEmpty()) {
    const QString expected = QCoreApplication::applicationDirPath() + '/' + QLatin1String(kManualPlaces[0]);
    boxes_.Show("The manual was not found: " + QDir::cleanPath(expected).toStdString());
    return;
  }
  const auto make = [&manual] {
    return new HelpForm(manual,
                        [](const QString& file) { QDesktopServices::openUrl(QUrl::fromLocalFile(file)); });
  };
  HelpForm& help = help_.GetOrMake(make);
  help.BringToFront();
  const auto [file, headline] = HelpForm::PlaceOf(form);
  help.Open(file, headline);
}

void SideForms::ShowMessages() {
  messages_.GetOrMake([this] { return new MessagesForm(said_); }).BringToFront();
}

void SideForms::Unload() {
  messages_.Unload();
  help_.Unload();
}

}  // namespace tvx
