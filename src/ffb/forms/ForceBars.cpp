#include "ffb/forms/ForceBars.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/Look.h"

namespace tvx {
namespace {

constexpr const char* kBarNames[] = {QT_TRANSLATE_NOOP("ForceBars", "Roll"),
                                     QT_TRANSLATE_NOOP("ForceBars", "Pitch"),
                                     QT_TRANSLATE_NOOP("ForceBars", "Gate")};
constexpr const char* kSourceNames[] = {
    QT_TRANSLATE_NOOP("ForceBars", "Spring"), QT_TRANSLATE_NOOP("ForceBars", "Gusts"),
    QT_TRANSLATE_NOOP("ForceBars", "Vibration"), QT_TRANSLATE_NOOP("ForceBars", "Friction")};

QColor SourceColour(int source) {
  const look::Colours& colours = look::CurrentColours();
  const QColor of[] = {colours.accent, QColor(0x9b, 0x6f, 0xd0), QColor(0xd8, 0x8a, 0x2b), colours.dim};
  return of[source];
}

QString Words(const char* text) {
  return QCoreApplication::translate("ForceBars", text);
}

}  // namespace

ForceBars::ForceBars(const char* name) : PaintedOnce(look::Ground::Unknown) {
  setObjectName(QString::fromLatin1(name));
  setAccessibleName(tr("Forces by their sources, and the gate"));
  setToolTip(
      tr("What the motors are told to give now, as parts of what the yoke can: the coloured parts are added; "
         "the "
         "mark is the limit of them all. Nothing passes a shut gate."));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

ForceBars::View ForceBars::ViewOf(const Yoke& yoke) {
  View view;
  view.gate = yoke.Opening();
  if (view.gate <= 0) return view;
  const ForceCommand& command = yoke.Commanded();
  const auto position = yoke.Position();
  double vibration = 0;
  for (std::size_t i = 0; i < kAxes; ++i) {
    view.axes[i] = SourcesOf(command, static_cast<Axis>(i), position[i]);
    vibration = std::max(vibration, command.axes[i].amplitude);
  }
  view.servo = command.drive == Drive::Servo;
  view.limit = command.limit + vibration;
  return view;
}

QSize ForceBars::sizeHint() const {
  const int text = fontMetrics().height();
  return {16 * text, kBars * (text + look::Gap()) + 2 * text};
}

QRect ForceBars::BarOf(int bar) const {
  const int text = fontMetrics().height();
  const int left = fontMetrics().horizontalAdvance(Words(kBarNames[1])) + text;
  const int right = fontMetrics().horizontalAdvance("100 %") + text / 2;
  const int height = text * 3 / 4;
  return {left, bar * (text + look::Gap()) + (text - height) / 2, std::max(width() - left - right, 1),
          height};
}

int ForceBars::Pixels(double share) const {
  return static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * BarOf(0).width()));
}

ForceBars::Ends ForceBars::EndsOf(const View& view) const {
  Ends ends{};
  for (std::size_t i = 0; i < kAxes; ++i) {
    const ForceSources& of = view.axes[i];
    double sum = 0;
    int source = 0;
    for (const double part : {std::abs(of.main), std::abs(of.bias), of.vibration, of.friction}) {
      sum += part;
      ends[i][static_cast<std::size_t>(source++)] = Pixels(sum);
    }
    ends[i][kSources] = Pixels(view.limit);
  }
  ends[kAxes][0] = Pixels(view.gate);
  return ends;
}

void ForceBars::Show(const View& view) {
  if (view.servo != view_.servo) PaintStillAgain();
  const Ends ends = EndsOf(view);
  const bool same = ends == shown_ && std::lround(100 * view.gate) == std::lround(100 * view_.gate);
  view_ = view;
  shown_ = ends;
  if (!same) update();
}

void ForceBars::PaintStill(QPainter& painter) const {
  const look::Colours& colours = look::CurrentColours();
  for (int bar = 0; bar < kBars; ++bar) {
    const QRect rect = BarOf(bar);
    painter.setPen(colours.dim);
    painter.drawText(QRect(0, rect.top() - rect.height(), rect.left(), 3 * rect.height()),
                     Qt::AlignLeft | Qt::AlignVCenter, Words(kBarNames[bar]));
    painter.setPen(QPen(colours.line, 1));
    painter.setBrush(colours.ground);
    painter.drawRect(rect.adjusted(-1, -1, 0, 0));
  }
  DrawLegend(painter);
}

void ForceBars::DrawLegend(QPainter& painter) const {
  const int text = fontMetrics().height();
  int x = BarOf(0).left();
  const int y = kBars * (text + look::Gap()) + text / 4;
  for (int source = 0; source < kSources; ++source) {
    painter.fillRect(QRect(x, y + text / 4, text / 2, text / 2), SourceColour(source));
    const QString words = source == 0 && view_.servo ? tr("Servo") : Words(kSourceNames[source]);
    painter.setPen(look::CurrentColours().text);
    painter.drawText(QRect(x + text * 3 / 4, y, width(), text), Qt::AlignLeft | Qt::AlignVCenter, words);
    x += fontMetrics().horizontalAdvance(words) + text * 3 / 2;
  }
}

void ForceBars::PaintMoving(QPainter& painter) const {
  const look::Colours& colours = look::CurrentColours();
  const Ends ends = EndsOf(view_);
  for (std::size_t bar = 0; bar < kAxes; ++bar) {
    const QRect rect = BarOf(static_cast<int>(bar));
    int from = 0;
    for (int source = 0; source < kSources; ++source) {
      const int to = ends[bar][static_cast<std::size_t>(source)];
      painter.fillRect(QRect(rect.left() + from, rect.top(), to - from, rect.height()), SourceColour(source));
      from = to;
    }
    if (view_.gate <= 0) continue;
    painter.fillRect(QRect(rect.left() + ends[bar][kSources] - 1, rect.top() - 2, 2, rect.height() + 4),
                     colours.text);
  }
  const QRect gate = BarOf(kAxes);
  painter.fillRect(QRect(gate.left(), gate.top(), ends[kAxes][0], gate.height()),
                   view_.gate < 1 ? colours.trouble : colours.good);
  painter.setPen(colours.text);
  const auto percent = [&](int bar, double share) {
    const QRect rect = BarOf(bar);
    painter.drawText(
        QRect(rect.right() + 2, rect.top() - rect.height(), width() - rect.right() - 2, 3 * rect.height()),
        Qt::AlignRight | Qt::AlignVCenter, QString::number(std::lround(100 * share)) + " %");
  };
  for (std::size_t bar = 0; bar < kAxes; ++bar) {
    const ForceSources& of = view_.axes[bar];
    percent(static_cast<int>(bar), std::abs(of.main) + std::abs(of.bias) + of.vibration + of.friction);
  }
  percent(kAxes, view_.gate);
}

}  // namespace tvx
