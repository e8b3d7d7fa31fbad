#include "virtualcockpit/yokes/YokeWindow.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QPushButton>

#include "drawn/widgets/Theme.h"
#include "virtualcockpit/bus/Drawn.h"

namespace tvx::vc {
namespace {

constexpr int kFrameMs = 40;
// So that the window keeps its width while they change.
constexpr const char* kWidestWords = "roll -100 %, pitch -100 %, unplugged, forces -100 / -100 % of 100 %";

}  // namespace

std::vector<std::unique_ptr<YokeLine>> MakeYokes(const ConfigModel& model, const std::string& folder,
                                                 const LineTraits& line, const YokeTraits& traits) {
  std::vector<std::unique_ptr<YokeLine>> yokes;
  const auto add = [&](int comNumber, const YokeRecord& record) {
    if (comNumber <= 0) return;
    const std::string link = folder.empty() ? folder : folder + "/comports/com" + std::to_string(comNumber);
    yokes.push_back(std::make_unique<YokeLine>(record.Address, link));
  };
  add(model.General.ComPortYoke1, model.Yoke1);
  add(model.General.ComPortYoke2, model.Yoke2);
  SetYokeTraits(yokes, line, traits);
  return yokes;
}

void SetYokeTraits(const std::vector<std::unique_ptr<YokeLine>>& yokes, const LineTraits& line,
                   const YokeTraits& traits) {
  LineTraits own = line;
  own.paced = traits.paced;
  for (const auto& yoke : yokes) {
    own.seed += 10;  // a chance of its own
    yoke->SetTraits(own);
    yoke->Device().SetTraits(traits);
  }
}

YokeWindow::YokeWindow(const std::vector<std::unique_ptr<YokeLine>>& yokes, QWidget* parent)
    : QWidget(parent) {
  setObjectName(QStringLiteral("virtualYokes"));
  setWindowTitle(QStringLiteral("Virtual cockpit: yokes"));
  setStyleSheet(theme::StyleSheet());
  QPalette dark = palette();
  dark.setColor(QPalette::Window, QColor(0x16, 0x17, 0x1b));
  setPalette(dark);
  setAutoFillBackground(true);
  auto* row = new QHBoxLayout(this);
  row->setSpacing(12);
  int number = 0;
  for (const auto& yoke : yokes) row->addWidget(MakeSide(*yoke, ++number), 1);
  timer_.setInterval(kFrameMs);
  connect(&timer_, &QTimer::timeout, this, [this] { Frame(); });
  timer_.start();
  Frame();
}

QWidget* YokeWindow::MakeSide(YokeLine& line, int number) {
  auto* side = new QWidget(this);
  auto* column = new QVBoxLayout(side);
  column->setContentsMargins(0, 0, 0, 0);
  auto* picture = new YokeWidget(line.Device(), number, side);
  auto* words = new QLabel(side);
  words->setObjectName(QStringLiteral("labelYoke%1").arg(number));
  words->ensurePolished();
  words->setMinimumWidth(words->fontMetrics().horizontalAdvance(QString::fromLatin1(kWidestWords)));
  auto* stop = new QPushButton(QStringLiteral("S&top button"), side);
  stop->setObjectName(QStringLiteral("cmdStop%1").arg(number));
  stop->setCheckable(true);
  auto* adapter = new QPushButton(side);
  adapter->setObjectName(QStringLiteral("cmdAdapter%1").arg(number));
  auto* fault = new QComboBox(side);
  fault->setObjectName(QStringLiteral("comboFault%1").arg(number));
  for (const YokeFault each : kYokeFaults) {
    const std::string_view text = FaultText(each);
    fault->addItem(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())),
                   static_cast<int>(each));
  }
  connect(stop, &QPushButton::toggled, this, [&line](bool down) { line.Device().SetStopButton(down); });
  connect(adapter, &QPushButton::clicked, this, [&line] {
    if (line.Plugged()) {
      line.Unplug();
    } else {
      line.Plug();
    }
  });
  connect(fault, &QComboBox::currentIndexChanged, this,
          [&line, fault] { line.Device().SetFault(static_cast<YokeFault>(fault->currentData().toInt())); });
  auto* controls = new QHBoxLayout;
  controls->addWidget(stop);
  controls->addWidget(adapter);
  controls->addWidget(fault, 1);
  column->addWidget(picture, 1);
  column->addWidget(words);
  column->addLayout(controls);
  sides_.push_back({&line, picture, words, adapter});
  return side;
}

QString YokeWindow::WordsOf(const YokeLine& line) {
  const YokeDevice& device = line.Device();
  const auto percent = [](double share) { return QString::number(std::lround(100 * share)); };
  QString state = !line.Plugged()  ? QStringLiteral("unplugged")
                  : device.Slack() ? QStringLiteral("slack")
                  : device.Servo() ? QStringLiteral("servo")
                                   : QStringLiteral("spring");
  return QStringLiteral("roll %1 %, pitch %2 %, %3, forces %4 / %5 % of %6 %")
      .arg(percent(device.Position(0)), percent(device.Position(1)), state, percent(device.Force(0)),
           percent(device.Force(1)), percent(device.Limit()));
}

QString YokeWindow::Words() const {
  QStringList words;
  for (std::size_t i = 0; i < sides_.size(); ++i) {
    words << QStringLiteral("yoke %1: %2").arg(i + 1).arg(WordsOf(*sides_[i].line));
  }
  return words.join(QStringLiteral("; "));
}

void YokeWindow::Frame() {
  for (const Side& side : sides_) {
    side.picture->Advance();
    const QString words = WordsOf(*side.line);
    if (side.words->text() != words) side.words->setText(words);
    const QString adapter = side.line->Plugged() ? QStringLiteral("&Unplug") : QStringLiteral("Pl&ug in");
    if (side.adapter->text() != adapter) side.adapter->setText(adapter);
  }
}

}  // namespace tvx::vc
