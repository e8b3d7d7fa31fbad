// Lines of which each can be taken by a button beside it.
#pragma once

#include <QGridLayout>
#include <functional>
#include <vector>

#include "ui/Widgets.h"

namespace tvx {

// Line n has a label "<name>Line<n>" and a button "<name>Take<n>", from 0 on.
class OfferList : public QWidget {
 public:
  struct Line {
    QString text;
    bool taken = false;  // it is what is in use already: says so in place of the button
  };
  OfferList(const char* name, const QString& takeText, const QString& takenText, const QString& toolTip);

  void SetLines(const std::vector<Line>& lines);
  // Called with the number of a line whose button is pressed.
  void SetTake(std::function<void(std::size_t)> take) { take_ = std::move(take); }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  struct Row {
    QLabel* text;
    QPushButton* take;
    QLabel* taken;
  };
  void AddRow();
  void KeepTextsWhole();

  QString takeText_, takenText_, toolTip_;
  std::function<void(std::size_t)> take_;
  QGridLayout* grid_;
  std::vector<Row> rows_;  // those without a line are hidden
};

}  // namespace tvx
