// The drawn IO modules and engine cluster, to be used with the mouse; a row of them below the instruments.
#pragma once

#include <QWidget>
#include <array>
#include <vector>

#include "config/Model.h"
#include "virtualcockpit/Cockpit.h"

namespace tvx::vc {

// What they have in common: a plate with a name, a fault by the menu, and unplugging.
class UnitWidget : public QWidget {
  Q_OBJECT
 public:
  UnitWidget(UnitLine& line, QString caption, QWidget* parent);
  // Repaints if something is to be seen.
  void Advance();

 protected:
  static constexpr int kHead = 22;  // the height of the name's line
  virtual void Draw(QPainter& painter) = 0;
  void paintEvent(QPaintEvent*) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  UnitLine& line_;
  QString caption_;
  std::uint64_t seen_ = ~0ull;
  bool plugged_ = false;
};

// Click a switch to throw it; turn the wheel over an encoder or an axis.
class IoBoardWidget : public UnitWidget {
  Q_OBJECT
 public:
  IoBoardWidget(UnitLine& line, IoBoard& board, const ConfigModel& model, int module, QWidget* parent);
  QSize sizeHint() const override { return {470, 210}; }

 protected:
  void Draw(QPainter& painter) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  bool event(QEvent* event) override;

 private:
  QRectF SwitchAt(int index) const;
  QRectF AxisAt(int axis) const;
  QRectF LampAt(int index) const;
  int SwitchUnder(const QPointF& at) const;  // -1: none
  int AxisUnder(const QPointF& at) const;
  void PullAxis(const QPointF& at);

  IoBoard& board_;
  std::array<int, IoBoard::kSwitches> encoder_{};  // 0 no encoder; otherwise 1 + its first half
  std::array<QString, IoBoard::kSwitches> legend_;
  std::array<QString, IoBoard::kAxes> axisLegend_;
  std::array<QString, IoBoard::kLamps> lampLegend_;
  int pulled_ = -1;
};

class ClusterWidget : public UnitWidget {
  Q_OBJECT
 public:
  ClusterWidget(UnitLine& line, ClusterUnit& cluster, const ConfigModel& model, QWidget* parent);
  QSize sizeHint() const override { return {420, 210}; }

 protected:
  void Draw(QPainter& painter) override;

 private:
  ClusterUnit& cluster_;
  struct Dial {
    QString caption;
    int needle;
  };
  std::vector<Dial> dials_;
};

// The row; hidden where the configuration names no such hardware.
class UnitShelf : public QWidget {
  Q_OBJECT
 public:
  UnitShelf(Cockpit& cockpit, QWidget* parent);
  void Advance();

 private:
  std::vector<UnitWidget*> widgets_;
};

}  // namespace tvx::vc
