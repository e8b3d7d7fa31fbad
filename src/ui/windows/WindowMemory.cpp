#include "ui/windows/WindowMemory.h"

#include <QDir>

namespace tvx {
namespace {

constexpr const char* kFile = ".torvex-control-windows.ini";
constexpr const char* kCameUp = "geometryAtFirst";
constexpr const char* kTheme = "colours";
constexpr const char* kAtStart = "atStart";
constexpr const char* kComingUp[] = {"front", "minimised", "hidden"};  // by ComingUp

QString KeyOf(const QWidget& window) {
  return "windows/" + window.objectName();
}

}  // namespace

WindowMemory::WindowMemory() : file_(QDir::current().filePath(kFile), QSettings::IniFormat) {}

void WindowMemory::Restore(QWidget& window) {
  const QByteArray kept = file_.value(KeyOf(window)).toByteArray();
  if (!kept.isEmpty()) window.restoreGeometry(kept);
  window.setProperty(kCameUp, window.geometry());
}

void WindowMemory::Keep(const QWidget& window) {
  const QRect first = window.property(kCameUp).toRect();
  if (!first.isValid() || first == window.geometry() || window.isMinimized()) return;
  file_.setValue(KeyOf(window), window.saveGeometry());
}

std::optional<look::Theme> WindowMemory::Theme() const {
  const QString kept = file_.value(kTheme).toString();
  if (kept.isEmpty()) return std::nullopt;
  return kept == "day" ? look::Theme::Light : look::Theme::Dark;
}

void WindowMemory::KeepTheme(look::Theme theme) {
  if (theme != Theme()) file_.setValue(kTheme, theme == look::Theme::Light ? "day" : "night");
}

ComingUp WindowMemory::AtStart() const {
  const QString kept = file_.value(kAtStart).toString();
  for (const ComingUp how : {ComingUp::Minimised, ComingUp::Hidden}) {
    if (kept == QLatin1String(kComingUp[static_cast<int>(how)])) return how;
  }
  return ComingUp::Front;
}

void WindowMemory::KeepAtStart(ComingUp how) {
  if (how != AtStart()) file_.setValue(kAtStart, kComingUp[static_cast<int>(how)]);
}

}  // namespace tvx
