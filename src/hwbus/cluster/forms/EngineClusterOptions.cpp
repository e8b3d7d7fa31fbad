#include "hwbus/cluster/forms/EngineClusterOptions.h"

#include <QButtonGroup>
#include <QHBoxLayout>

#include "ui/Look.h"
#include "ui/NumberBox.h"
#include "ui/Widgets.h"

namespace tvx {

EngineClusterOptions::EngineClusterOptions(EngineClusterPresenter& presenter, Extent extent)
    : presenter_(presenter),
      OptionSingleEngine_(new QRadioButton(tr("&Single engine"))),
      OptionDualEngine_(new QRadioButton(tr("&Dual engine"))),
      CheckBacklight_(new QCheckBox(tr("&Backlight always on"))) {
  setObjectName("PanelOptions");
  look::SetRole(this, "panel");
  OptionSingleEngine_->setObjectName("OptionSingleEngine");
  OptionSingleEngine_->setToolTip(tr("Each channel moves the needle of its own number"));
  OptionDualEngine_->setObjectName("OptionDualEngine");
  OptionDualEngine_->setToolTip(tr("The last four channels are the second engine's"));
  CheckBacklight_->setObjectName("CheckBacklight");
  CheckBacklight_->setToolTip(tr("The face is lit whatever the cockpit's lighting says"));
  connect(OptionSingleEngine_, &QRadioButton::clicked, this, [this] { presenter_.SetDual(false); });
  connect(OptionDualEngine_, &QRadioButton::clicked, this, [this] { presenter_.SetDual(true); });
  connect(CheckBacklight_, &QCheckBox::clicked, this, [this](bool on) { presenter_.SetBacklight(on); });
  auto* row = new QHBoxLayout(this);
  row->setSpacing(look::Gap());
  for (QWidget* widget : {static_cast<QWidget*>(OptionSingleEngine_),
                          static_cast<QWidget*>(OptionDualEngine_), static_cast<QWidget*>(CheckBacklight_)}) {
    row->addWidget(widget);
  }
  if (extent == Extent::All) {
    row->addSpacing(look::Margin());
    row->addLayout(MakeBits(), 1);
  } else {
    row->addStretch(1);
  }
  Refresh();
}

QLayout* EngineClusterOptions::MakeBits() {
  boxExtraBits_ = new QLineEdit;
  boxExtraBits_->setObjectName("boxExtraBits");
  boxExtraBits_->setMaxLength(8);
  boxExtraBits_->setMaximumWidth(look::Margin() * 5);
  boxExtraBits_->setAlignment(Qt::AlignRight);
  boxExtraBits_->setToolTip(
      tr("More bits of the frame's lighting byte, as one number from 0 to 255: what a special version of "
         "the cluster needs; otherwise 0"));
  LabelExtraBits_ = MakeLabel("LabelExtraBits", {}, "caption");
  LabelExtraBits_->setWordWrap(true);
  QLabel* caption = MakeLabel("LabelExtraBitsCaption", tr("Code of a special &type"));
  caption->setBuddy(boxExtraBits_);
  connect(boxExtraBits_, &QLineEdit::textEdited, this, [this] {
    bitsEdited_ = true;
    ShowBitsRemark();
  });
  connect(boxExtraBits_, &QLineEdit::editingFinished, this, &EngineClusterOptions::TakeBits);
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  row->addWidget(caption);
  row->addWidget(boxExtraBits_);
  row->addWidget(LabelExtraBits_, 1);
  return row;
}

void EngineClusterOptions::TakeBits() {
  if (!bitsEdited_) return;
  const std::string text = boxExtraBits_->text().toStdString();
  if (!EngineClusterPresenter::ReadExtraBits(text)) return;
  bitsEdited_ = false;
  presenter_.SetExtraBits(text);
}

void EngineClusterOptions::ShowBitsRemark() {
  const std::string typed = boxExtraBits_->text().toStdString();
  MarkWrong(boxExtraBits_, !EngineClusterPresenter::ReadExtraBits(typed));
  SetTextIfChanged(LabelExtraBits_, EngineClusterPresenter::ExtraBitsRemark(typed));
}

bool EngineClusterOptions::Untaken() const {
  return bitsEdited_ && EngineClusterPresenter::ReadExtraBits(boxExtraBits_->text().toStdString()) !=
                            std::optional<int>(presenter_.ExtraBits());
}

void EngineClusterOptions::Refresh() {
  (presenter_.Dual() ? OptionDualEngine_ : OptionSingleEngine_)->setChecked(true);
  CheckBacklight_->setChecked(presenter_.Backlight());
  if (boxExtraBits_ == nullptr) return;
  if (!bitsEdited_) boxExtraBits_->setText(QString::number(presenter_.ExtraBits()));
  ShowBitsRemark();
}

}  // namespace tvx
