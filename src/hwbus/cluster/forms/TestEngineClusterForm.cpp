#include "hwbus/cluster/forms/TestEngineClusterForm.h"

#include <QGridLayout>

#include "config/plates/PlateLookup.h"
#include "ui/Look.h"

namespace tvx {

TestEngineClusterForm::TestEngineClusterForm(EngineCluster& cluster, EngineClusterPresenter& presenter)
    : Form("frmTestEC"),
      cluster_(cluster),
      options_(new EngineClusterOptions(presenter, EngineClusterOptions::Extent::VersionAndBacklight)) {
  setWindowTitle(tr("Engine cluster: test and set-up"));
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addWidget(options_);
  column->addWidget(MakeNeedles(), 1);
  auto* row = new QHBoxLayout;
  QPushButton* recalibrate = MakeButton("cmdRecalibrate", tr("Re&calibrate"),
                                        tr("Sweeps every needle once; takes effect while running"));
  QPushButton* reset = MakeButton("cmdReset", tr("&Reset"), tr("Lets the cluster start anew; while running"));
  QPushButton* close = MakeButton("cmdClose", tr("C&lose"), tr("Closes this window"));
  connect(recalibrate, &QPushButton::clicked, this, [this] { cluster_.Recalibrate(); });
  connect(reset, &QPushButton::clicked, this, [this] { cluster_.ResetCluster(); });
  connect(close, &QPushButton::clicked, this, [this] { CloseAsked(); });
  row->addWidget(recalibrate);
  row->addWidget(reset);
  row->addStretch(1);
  row->addWidget(close);
  column->addLayout(row);
}

QWidget* TestEngineClusterForm::MakeNeedles() {
  QFrame* panel = MakePanel("PanelNeedles");
  auto* grid = new QGridLayout(panel);
  for (int needle = 0; needle < kECSingleNeedles; ++needle) {
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setObjectName(QStringLiteral("SliderNeedle%1").arg(needle));
    slider->setRange(0, kNeedlePositions - 1);
    slider->setMinimumWidth(look::Margin() * 8);
    slider->setToolTip(tr("Moves this needle alone; the others go to zero"));
    QLabel* shown = MakeLabel("", QStringLiteral("0"), "caption");
    shown->setMinimumWidth(look::Margin() * 3);
    connect(slider, &QSlider::valueChanged, this, [this, needle, shown](int value) {
      SetTextIfChanged(shown, QString::number(value));
      cluster_.MoveSingleNeedle(needle, value);
    });
    const int column = needle / 8 * 3;
    grid->addWidget(MakeLabel("", tr("Needle %1").arg(needle), "caption"), needle % 8, column);
    grid->addWidget(slider, needle % 8, column + 1);
    grid->addWidget(shown, needle % 8, column + 2);
  }
  return panel;
}

}  // namespace tvx
