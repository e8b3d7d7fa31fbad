#include "follow/forms/DrawnPanel.h"

#include <QEvent>
#include <QResizeEvent>
#include <algorithm>

#include "core/BusWords.h"
#include "ui/FieldGrid.h"
#include "ui/Look.h"
#include "ui/Widgets.h"

namespace tvx {
namespace {

constexpr int kLinesToADial = 9;
constexpr double kMsToASecond = 1000.0, kLongestStep = 1.0;

}  // namespace

DrawnPanel::DrawnPanel(const FollowedParts& parts)
    : parts_(parts), mirror_(parts), ground_(new QWidget), empty_(MakeLabel("LabelNoGauges")) {
  setObjectName("PanelCockpit");
  setAccessibleName(tr("The drawn cockpit"));
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::NoFocus);
  setWidgetResizable(true);
  empty_->setParent(ground_);
  empty_->setText(tr("No gauge is configured"));
  setWidget(ground_);
  Rebuild();
  since_.start();
}

void DrawnPanel::Rebuild() {
  qDeleteAll(tiles_);
  tiles_.clear();
  mirror_.Rebuild();
  for (std::size_t i = 0; i < mirror_.Count(); ++i) {
    drawn::Device& device = mirror_.At(i);
    auto* tile =
        new InstrumentTile(device, parts_.Model, ToText(GaugeWords(parts_.Model, device.Id().gaugeID)));
    tile->setParent(ground_);
    tile->installEventFilter(this);
    connect(tile, &QAbstractButton::clicked, this, [this, tile] {
      emit FollowAsked({Subject::Kind::Gauge, tile->GaugeID()});
    });
    tile->show();
    tiles_.push_back(tile);
  }
  Arrange();
}

void DrawnPanel::Show(const CockpitList& list) {
  if (mirror_.Outdated()) Rebuild();
  bool moved = false;
  for (std::size_t i = 0; i < tiles_.size(); ++i) {
    bool listed = false;
    std::string trouble;
    for (std::size_t line = 0; line < list.Lines(); ++line) {
      const Subject& subject = list.SubjectOf(line);
      if (subject.kind != Subject::Kind::Gauge || subject.number != tiles_[i]->GaugeID()) continue;
      listed = true;
      if (trouble.empty() && list.InTrouble(line)) trouble = list.Cell(line, CockpitColumn::State);
    }
    tiles_[i]->SetState(mirror_.Known(i), ToText(trouble));
    moved = moved || tiles_[i]->isHidden() == listed;
    tiles_[i]->setVisible(listed);
  }
  if (moved) Arrange();
}

void DrawnPanel::Refresh() {
  const double seconds = std::min(static_cast<double>(since_.restart()) / kMsToASecond, kLongestStep);
  mirror_.Refresh();
  // Those out of sight too: what they show is also told in words, and is not painted.
  for (InstrumentTile* tile : tiles_) tile->Advance(seconds);
}

// In rows from left to right, each as high as its highest.
void DrawnPanel::Arrange() {
  const int gap = look::Gap();
  const int dial = kLinesToADial * fontMetrics().lineSpacing();
  const int width = viewport()->width();
  int x = 0, y = 0, high = 0;
  for (InstrumentTile* tile : tiles_) {
    if (tile->isHidden()) continue;
    const QSize size = tile->SizeFor(dial).boundedTo({std::max(width, dial), dial * 4});
    if (x > 0 && x + size.width() > width) {
      x = 0;
      y += high + gap;
      high = 0;
    }
    tile->setGeometry({{x, y}, size});
    x += size.width() + gap;
    high = std::max(high, size.height());
  }
  empty_->setVisible(high == 0);
  empty_->setGeometry(0, 0, width, fontMetrics().lineSpacing() * 2);
  ground_->setMinimumHeight(y + high);
}

void DrawnPanel::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  Arrange();
}

bool DrawnPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) chosen_ = static_cast<InstrumentTile*>(watched)->GaugeID();
  return QScrollArea::eventFilter(watched, event);
}

}  // namespace tvx
