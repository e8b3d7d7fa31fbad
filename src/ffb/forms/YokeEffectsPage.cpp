// The page of a yoke's form with the aircraft's speeds and the effects, which both yokes share.
#include "ffb/forms/YokeConfigForm.h"
#include "ui/Look.h"
#include "ui/NumberBox.h"

namespace tvx {
namespace {

constexpr const char* kEffectNames[kEffects] = {QT_TR_NOOP("Stall buffet"),  QT_TR_NOOP("Overspeed"),
                                                QT_TR_NOOP("Turbulence"),    QT_TR_NOOP("Wheel shock"),
                                                QT_TR_NOOP("Runway rumble"), QT_TR_NOOP("Stick shaker")};

struct SharedRow {
  const char* name;
  const char* caption;
  const char* suffix;
  std::int16_t YokeRecord::*field;
};
constexpr SharedRow kShared[] = {
    {"boxStallSpeed", QT_TR_NOOP("Stall speed at 1 g"), " kt", &YokeRecord::StallSpeed},
    {"boxNeverExceedSpeed", QT_TR_NOOP("Never-exceed speed"), " kt", &YokeRecord::NeverExceedSpeed},
    {"boxServoSpeed", QT_TR_NOOP("Servo speed, counts a second"), "", &YokeRecord::ServoSpeed},
    {"boxRunwayBumps", QT_TR_NOOP("Distance of the runway's bumps"), " dm", &YokeRecord::RunwayBumps},
};

}  // namespace

QWidget* YokeConfigForm::MakeEffectsPage() {
  auto* page = new QWidget;
  auto* grid = PageGrid(page);
  QLabel* hint =
      MakeLabel("LabelEffects", tr("Both yokes share these values. \"Standard\" takes the program's own."));
  hint->setWordWrap(true);
  grid->addWidget(hint, 0, 0, 1, 5);
  int line = 1;
  for (const SharedRow& row : kShared) {
    auto* box = new NumberSpin;
    box->setObjectName(QString::fromLatin1(row.name));
    box->setRange(0, 2000);
    box->setSuffix(QString::fromLatin1(row.suffix));
    box->setSpecialValueText(tr("Standard"));
    shared_.push_back({box, row.field});
    grid->addWidget(MakeLabel("", tr(row.caption), "caption"), line, 0);
    grid->addWidget(box, line++, 1);
    connect(box, &QSpinBox::valueChanged, this, [this, field = row.field](int value) {
      if (!loading_) presenter_.SetShared(field, value);
    });
  }
  grid->addWidget(MakeLabel("", tr("Roll"), "caption"), line, 1, 1, 2);
  grid->addWidget(MakeLabel("", tr("Pitch"), "caption"), line++, 3, 1, 2);
  for (std::size_t place = 0; place < 2 * kEffects; ++place) {
    auto* frequency = new NumberSpin;
    frequency->setObjectName(QString("boxFrequency%1").arg(place));
    frequency->setRange(0, 50);
    frequency->setSuffix(" Hz");
    auto* level = new NumberSpin;
    level->setObjectName(QString("boxLevel%1").arg(place));
    level->setRange(0, 100);
    level->setSuffix(" %");
    const int row = line + static_cast<int>(place / 2);
    const int column = place % 2 == 0 ? 1 : 3;
    if (place % 2 == 0) grid->addWidget(MakeLabel("", tr(kEffectNames[place / 2])), row, 0);
    grid->addWidget(frequency, row, column);
    grid->addWidget(level, row, column + 1);
    effects_.push_back({frequency, level});
    const auto changed = [this, place] {
      if (!loading_) {
        presenter_.SetEffect(place, effects_[place].frequency->value(), effects_[place].level->value());
      }
    };
    connect(frequency, &QSpinBox::valueChanged, this, changed);
    connect(level, &QSpinBox::valueChanged, this, changed);
  }
  grid->setColumnStretch(5, 1);
  grid->setRowStretch(line + static_cast<int>(kEffects), 1);
  return page;
}

void YokeConfigForm::LoadEffects() {
  const YokeRecord shared = presenter_.Shared();
  for (const SharedLine& line : shared_) line.box->setValue(shared.*line.field);
  for (std::size_t place = 0; place < effects_.size(); ++place) {
    effects_[place].frequency->setValue(static_cast<int>(shared.Effects[place].Frequency));
    effects_[place].level->setValue(shared.Effects[place].Level);
  }
}

}  // namespace tvx
