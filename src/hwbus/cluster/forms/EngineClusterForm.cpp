#include "hwbus/cluster/forms/EngineClusterForm.h"

#include <QGridLayout>

#include "ui/Look.h"

namespace tvx {
namespace {

constexpr int kRefreshMs = 50;         // slower, one would see the needles jump
constexpr unsigned kTurnsToAText = 4;  // nobody reads numbers that change faster
constexpr int kPerRow = 4;
constexpr const char* kWidestValue = "-00000.00";

QString CaptionOf(const ConfigModel& model, int channel) {
  const EngineClusterRecord& record = model.EngineCluster[static_cast<std::size_t>(channel)];
  const FunctionRecord* function = record.Value2 < 1 ? nullptr : model.FunctionOf(record.Value2);
  return function == nullptr ? EngineClusterForm::tr("Channel %1").arg(channel + 1)
                             : ToText(function->ShortName);
}

}  // namespace

EngineClusterForm::EngineClusterForm(EngineCluster& cluster, const ConfigModel& model,
                                     EngineClusterWindows& windows)
    : Form("frmStatusEC"), cluster_(cluster), model_(model), windows_(windows) {
  setWindowTitle(tr("Engine cluster"));
  setAttribute(Qt::WA_ShowWithoutActivating);
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  auto* head = new QHBoxLayout;
  status_ = MakeLabel("LabelStatus", {}, "title");
  status_->setWordWrap(true);
  boxUnitReply_ = MakeLabel("boxUnitReply", {}, "caption");
  head->addWidget(status_, 1);
  head->addWidget(boxUnitReply_);
  column->addLayout(head);
  auto* grid = new QGridLayout;
  grid->setSpacing(look::Gap());
  for (int k = 0; k < kECChannels; ++k) {
    auto* cell = new QVBoxLayout;
    auto* dial = new NeedleDial(QStringLiteral("Needle%1").arg(k));
    QLabel* caption = MakeLabel("", {}, "caption");
    caption->setObjectName(QStringLiteral("Caption%1").arg(k));
    caption->setAlignment(Qt::AlignCenter);
    caption->setWordWrap(true);
    auto* value =
        new Reading(QStringLiteral("boxValue%1").arg(k), kWidestValue, Qt::AlignCenter, look::Ground::Form);
    cell->addWidget(dial, 1);
    cell->addWidget(caption);
    cell->addWidget(value);
    grid->addLayout(cell, k / kPerRow, k % kPerRow);
    dials_[static_cast<std::size_t>(k)] = dial;
    captions_[static_cast<std::size_t>(k)] = caption;
    values_[static_cast<std::size_t>(k)] = value;
  }
  column->addLayout(grid, 1);
  column->addLayout(MakeButtons());
  connect(&refresh_, &QTimer::timeout, this, [this] {
    if (!isVisible() || isMinimized()) return;
    if (++turn_ % kTurnsToAText == 0) {
      ShowState();
    } else {
      ShowNeedles();
    }
  });
  refresh_.start(kRefreshMs);
  ShowChannels();
  ShowState();
}

QLayout* EngineClusterForm::MakeButtons() {
  cmdRun_ = MakeButton("cmdRun", tr("&Run"), tr("Starts moving the needles"));
  cmdStop_ = MakeButton("cmdStop", tr("&Stop"), tr("Halts; the needles stay where they are"));
  cmdRecalibrate_ = MakeButton("cmdRecalibrate", tr("Re&calibrate"),
                               tr("Sweeps every needle once and finds its zero again; while running"));
  QPushButton* setUp = MakeButton("cmdConfigEC", tr("Set &up..."), tr("What each channel shows, and how"));
  QPushButton* test = MakeButton("cmdTestEC", tr("&Test..."), tr("Moves single needles"));
  QPushButton* hide = MakeButton("cmdHide", tr("&Hide"), tr("Hides this window; the cluster goes on"));
  connect(cmdRun_, &QPushButton::clicked, this, [this] { cluster_.cmdRun_Click(), ShowState(); });
  connect(cmdStop_, &QPushButton::clicked, this, [this] { cluster_.cmdStop_Click(), ShowState(); });
  connect(cmdRecalibrate_, &QPushButton::clicked, this, [this] { cluster_.Recalibrate(), ShowState(); });
  connect(setUp, &QPushButton::clicked, this, [this] { windows_.ShowSetUp(); });
  connect(test, &QPushButton::clicked, this, [this] { windows_.ShowTest(); });
  connect(hide, &QPushButton::clicked, this, [this] { CloseAsked(); });
  auto* row = new QHBoxLayout;
  for (QPushButton* button : {cmdRun_, cmdStop_, cmdRecalibrate_, setUp, test}) row->addWidget(button);
  row->addWidget(MakeFollowButton([this] {
    int channel = 0;
    while (channel + 1 < kECChannels && !cluster_.ChannelEnabled(channel)) ++channel;
    return Subject{Subject::Kind::Channel, channel};
  }));
  row->addStretch(1);
  row->addWidget(hide);
  return row;
}

void EngineClusterForm::ShowChannels() {
  for (int k = 0; k < kECChannels; ++k) {
    SetTextIfChanged(captions_[static_cast<std::size_t>(k)], CaptionOf(model_, k));
  }
}

void EngineClusterForm::ShowState() {
  SetTextIfChanged(status_, cluster_.StatusText());
  SetTextIfChanged(boxUnitReply_, cluster_.boxUnitReply());
  cmdRun_->setEnabled(!cluster_.Running());
  cmdStop_->setEnabled(cluster_.Running());
  cmdRecalibrate_->setEnabled(cluster_.Running() && !cluster_.Recalibrating());
  for (int k = 0; k < kECChannels; ++k)
    values_[static_cast<std::size_t>(k)]->SetText(cluster_.boxValue(k).View());
  ShowNeedles();
}

void EngineClusterForm::ShowNeedles() {
  for (int k = 0; k < kECChannels; ++k)
    dials_[static_cast<std::size_t>(k)]->SetPosition(cluster_.Position(k), cluster_.ChannelEnabled(k));
}

}  // namespace tvx
