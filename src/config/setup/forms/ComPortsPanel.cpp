#include "config/setup/forms/ComPortsPanel.h"

#include <QAbstractItemView>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>

#include "platform/SerialDevices.h"
#include "ui/FieldGrid.h"
#include "ui/Look.h"

namespace tvx {
namespace {

constexpr int kOfferedPorts = 16;  // always offered; higher ones where they lead to something

struct ComRow {
  const char *caption, *current, *choice, *button;
  std::int16_t GeneralRecord::*field;
};
constexpr ComRow kRows[] = {
    {"&Gauge bus", "BoxCurrentComGS", "ComboComGS", "cmdSetCommport", &GeneralRecord::ComPortGS},
    {"&Engine cluster", "BoxCurrentComEC", "ComboComEC", "cmdSetCommportEC", &GeneralRecord::ComPortEC},
    {"IO module &1", "BoxCurrentComIOM", "ComboCOMIOM", "cmdSetCommportIOM", &GeneralRecord::ComPortIOM1},
    {"IO module &2", "BoxCurrentComIOM2", "ComboComiOM2", "cmdSetCommportIOM2", &GeneralRecord::ComPortIOM2},
    {"&Yoke 1", "boxCurrentComYoke1", "ComboComYoke1", "cmdSetCommportYoke1", &GeneralRecord::ComPortYoke1},
    {"Y&oke 2", "boxCurrentComYoke2", "ComboComYoke2", "cmdSetCommportYoke2", &GeneralRecord::ComPortYoke2},
};

QString PortText(int number) {
  return number > 0 ? "COM " + QString::number(number) : ComPortsPanel::tr("not used");
}

// What is plugged in comes first, then the computer's own ports, then the numbers that lead nowhere yet.
int RankOf(const std::pair<int, QString>& offered) {
  const auto& [number, device] = offered;
  if (number == 0) return 0;
  if (device.isEmpty()) return 3;
  return device.contains("/dev/ttyS") ? 2 : 1;
}

// Looks what is plugged in before its list drops down, and makes the list as wide as its texts.
class PortCombo : public QComboBox {
 public:
  explicit PortCombo(std::function<void()> opening) : opening_(std::move(opening)) {
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(18);
    setMaxVisibleItems(kOfferedPorts + 1);
  }

 protected:
  void showPopup() override {
    opening_();
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + 2 * look::Margin());
    QComboBox::showPopup();
  }
  // A wheel that passes by must not choose another port.
  void wheelEvent(QWheelEvent* event) override { event->ignore(); }

 private:
  std::function<void()> opening_;
};

}  // namespace

ComPortsPanel::ComPortsPanel(ConfigModel& model, PortAccess& ports) : model_(model), ports_(ports) {
  setObjectName("PanelCom");
  look::SetRole(this, "panel");
  QGridLayout* grid = MakeTitledGrid(this, tr("Serial port of each hardware group"), "LabelCom");
  int row = 1;
  for (const ComRow& com : kRows) {
    auto* choice = new PortCombo([this] {
      ports_.LookAgain();
      ShowModel();
    });
    choice->setObjectName(QString::fromLatin1(com.choice));
    QPushButton* set = MakeButton(com.button, tr("Set"), tr("Takes the chosen port into the configuration"));
    look::SetRole(set, "small");
    lines_.push_back({com.field, tr(com.caption).remove('&'), MakeLabel(com.current), choice, set});
    const std::size_t line = lines_.size() - 1;
    connect(set, &QPushButton::clicked, this, [this, line] { SetPort(line); });
    connect(choice, &QComboBox::currentIndexChanged, this, [this, line] { OfferSet(lines_[line]); });
    grid->addWidget(MakeCaption(choice, tr(com.caption)), row, 0);
    grid->addWidget(lines_.back().current, row, 1);
    grid->addWidget(choice, row, 2);
    grid->addWidget(set, row++, 3);
  }
  grid->setColumnStretch(2, 1);
  LabelComAdvice = MakeLabel("LabelComAdvice");
  LabelComAdvice->setWordWrap(true);
  LabelComAdvice->setTextInteractionFlags(Qt::TextSelectableByMouse);  // it may hold a command to be copied
  QPushButton* adapters = MakeButton("cmdAdapters", tr("A&dapters..."),
                                     tr("Which adapters are plugged in, and their COM numbers"));
  connect(adapters, &QPushButton::clicked, this, &ComPortsPanel::AdaptersAsked);
  auto* below = new QHBoxLayout;
  below->setSpacing(look::Gap());
  below->addWidget(LabelComAdvice, 1);
  below->addWidget(adapters, 0, Qt::AlignRight | Qt::AlignTop);
  grid->addLayout(below, row, 0, 1, -1);
  ShowModel();
}

// Numbers that a user may want: the first ones, those in use, and those that lead to something.
std::vector<int> ComPortsPanel::OfferedNumbers() const {
  std::vector<int> numbers;
  for (const Line& line : lines_) numbers.push_back(InUse(line));
  for (int number = 0; number <= kHighestComNumber; ++number) {
    if (number <= kOfferedPorts || !ports_.DeviceOf(number).empty()) numbers.push_back(number);
  }
  std::sort(numbers.begin(), numbers.end());
  numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
  return numbers;
}

void ComPortsPanel::ShowModel() {
  std::vector<std::pair<int, QString>> offered;
  for (const int number : OfferedNumbers()) {
    offered.emplace_back(number, number > 0 ? ToText(ports_.DeviceOf(number)) : QString());
  }
  std::stable_sort(offered.begin(), offered.end(),
                   [](const auto& a, const auto& b) { return RankOf(a) < RankOf(b); });
  for (Line& line : lines_) Fill(line, offered);
  ShowAdvice();
}

void ComPortsPanel::Fill(Line& line, const std::vector<std::pair<int, QString>>& offered) {
  const int inUse = InUse(line), chosen = Chosen(line);
  const bool keep = line.shown == inUse && chosen >= 0;
  {
    const QSignalBlocker quiet(line.choice);
    line.choice->clear();
    for (const auto& [number, device] : offered) {
      QStringList words(device);
      for (const Line& other : lines_) {
        if (number > 0 && &other != &line && InUse(other) == number) words << tr("given to: ") + other.group;
      }
      words.removeAll(QString());
      line.choice->addItem(PortText(number) + (words.empty() ? QString() : "  (" + words.join("; ") + ")"),
                           number);
    }
    line.choice->setCurrentIndex(line.choice->findData(keep ? chosen : inUse));
  }
  line.shown = inUse;
  SetTextIfChanged(line.current, PortText(inUse));
  OfferSet(line);
}

int ComPortsPanel::Chosen(const Line& line) const {
  return line.choice->currentIndex() < 0 ? -1 : line.choice->currentData().toInt();
}

bool ComPortsPanel::Pending() const {
  return std::any_of(lines_.begin(), lines_.end(),
                     [this](const Line& line) { return Chosen(line) != InUse(line); });
}

// "Set" can be pressed only where that would change something.
void ComPortsPanel::OfferSet(const Line& line) {
  line.set->setEnabled(Chosen(line) >= 0 && Chosen(line) != InUse(line));
  line.choice->setToolTip(tr("COM number of: %1. Chosen: %2").arg(line.group, line.choice->currentText()));
}

void ComPortsPanel::SetPort(std::size_t index) {
  const Line& line = lines_[index];
  const auto number = static_cast<std::int16_t>(Chosen(line));
  ports_.KeepAdapter(number);
  ports_.WithPortsClosed([this, &line, number] { model_.General.*line.field = number; });
  model_.ConfigChanged = true;
  ports_.LookAgain();
  ShowModel();
  emit PortSet();
}

// Says which groups cannot use their port, and why.
void ComPortsPanel::ShowAdvice() {
  QStringList advice;
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    const int number = InUse(lines_[i]);
    const auto sharing = std::find_if(lines_.begin(), lines_.begin() + static_cast<std::ptrdiff_t>(i),
                                      [&](const Line& line) { return InUse(line) == number; });
    QString words = ToText(ports_.TroubleOf(static_cast<int>(i)));
    if (number > 0 && &*sharing != &lines_[i])
      words = tr("%1 is given to: %2 as well; only one can have it").arg(PortText(number), sharing->group);
    if (!words.isEmpty()) advice << lines_[i].group + ": " + words;
  }
  SetTextIfChanged(LabelComAdvice, advice.join('\n'));
  LabelComAdvice->setVisible(!advice.isEmpty());
}

}  // namespace tvx
