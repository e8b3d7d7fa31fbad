// The drawn IO module: 48 switches, 8 axes, 32 lamps.
#pragma once

#include <array>

#include "virtualcockpit/lines/IOModuleUnit.h"
#include "virtualcockpit/panel/UnitWidget.h"

namespace tvx::vc {

// Click a switch to throw it; turn the wheel over an encoder or an axis, or drag an axis.
class IOModuleWidget : public UnitWidget {
  Q_OBJECT
 public:
  IOModuleWidget(UnitLine& line, IOModuleUnit& unit, const ConfigModel& model, int module, QWidget* parent);
  QSize sizeHint() const override { return {470, 210}; }

 protected:
  void Draw(QPainter& painter, const QRectF& within) override;
  QRegion TakeChanges() override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  bool event(QEvent* event) override;

 private:
  // What was drawn of the unit.
  struct Shown {
    std::array<bool, IOModuleUnit::kSwitches> switches{};
    std::array<int, IOModuleUnit::kAxes> axes{};
    std::array<bool, IOModuleUnit::kLamps> lamps{};
    int brightness = 0;
  };
  QRectF SwitchAt(int index) const;
  QRectF AxisAt(int axis) const;
  QRectF LampAt(int index) const;
  int SwitchUnder(const QPointF& at) const;  // -1: none
  int AxisUnder(const QPointF& at) const;    // -1: none
  void DrawSwitch(QPainter& painter, int index) const;
  void DrawAxis(QPainter& painter, int axis) const;
  void DrawLamp(QPainter& painter, int index) const;
  void PullAxis(const QPointF& at);

  IOModuleUnit& unit_;
  std::array<int, IOModuleUnit::kSwitches> encoder_{};  // 0 no encoder; otherwise 1 + its first half
  std::array<QString, IOModuleUnit::kSwitches> legend_;
  std::array<QString, IOModuleUnit::kAxes> axisLegend_;
  std::array<QString, IOModuleUnit::kLamps> lampLegend_;
  int pulled_ = -1;  // the axis that the mouse drags; -1 none
  Shown shown_;
};

}  // namespace tvx::vc
