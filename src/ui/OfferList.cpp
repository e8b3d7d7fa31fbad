#include "ui/OfferList.h"

#include <algorithm>

namespace tvx {

OfferList::OfferList(const char* name, const QString& takeText, const QString& takenText,
                     const QString& toolTip)
    : takeText_(takeText), takenText_(takenText), toolTip_(toolTip), grid_(new QGridLayout(this)) {
  setObjectName(name);
  grid_->setContentsMargins(0, 0, 0, 0);
  grid_->setSpacing(look::Gap());
  grid_->setColumnStretch(0, 1);
}

void OfferList::AddRow() {
  const std::size_t number = rows_.size();
  const auto name = [&](const char* part) {
    return (objectName() + QLatin1String(part) + QString::number(number)).toUtf8();
  };
  const Row row{MakeLabel(name("Line")), MakeButton(name("Take"), takeText_, toolTip_),
                MakeLabel(name("Taken"), takenText_, "caption")};
  row.text->setWordWrap(true);
  connect(row.take, &QPushButton::clicked, this, [this, number] {
    if (take_) take_(number);
  });
  const int line = static_cast<int>(number);
  grid_->addWidget(row.text, line, 0);
  grid_->addWidget(row.take, line, 1);
  grid_->addWidget(row.taken, line, 1);
  row.take->ensurePolished();
  row.take->setMinimumHeight(row.take->sizeHint().height());
  rows_.push_back(row);
}

// The rows stay: a button may be the one that is just being pressed, or have the focus.
void OfferList::SetLines(const std::vector<Line>& lines) {
  while (rows_.size() < lines.size()) AddRow();
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const Row& row = rows_[i];
    const bool used = i < lines.size();
    if (used) SetTextIfChanged(row.text, lines[i].text);
    row.text->setVisible(used);
    row.take->setVisible(used && !lines[i].taken);
    row.taken->setVisible(used && lines[i].taken);
  }
  setVisible(!lines.empty());
  KeepTextsWhole();
}

// Layouts within layouts take a text that wraps for smaller than it is, and would cut it.
void OfferList::KeepTextsWhole() {
  for (const Row& row : rows_) {
    const int beside =
        std::max(row.take->sizeHint().width(), row.taken->sizeHint().width()) + grid_->spacing();
    row.text->setMinimumHeight(std::max(row.text->heightForWidth(std::max(width() - beside, 1)), 0));
  }
}

void OfferList::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  KeepTextsWhole();
}

}  // namespace tvx
