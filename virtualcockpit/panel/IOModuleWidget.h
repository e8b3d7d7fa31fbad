// The drawn IO module, to be used with the mouse.
#pragma once

#include "drawn/faces/units/ModuleFace.h"
#include "virtualcockpit/lines/IOModuleUnit.h"

namespace tvx::vc {

// Click a switch to throw it; turn the wheel over an encoder or an axis, or drag an axis.
class IOModuleWidget : public drawn::ModuleFace {
  Q_OBJECT
 public:
  IOModuleWidget(IOModuleUnit& unit, const ConfigModel& model, int module, QWidget* parent);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  bool event(QEvent* event) override;

 private:
  // 0 for no encoder; otherwise 1 + its first half.
  int EncoderOf(int index) const { return Legend().encoder[static_cast<std::size_t>(index)]; }
  void PullAxis(const QPointF& at);

  IOModuleUnit& unit_;
  int pulled_ = -1;  // the axis that the mouse drags; -1 none
};

}  // namespace tvx::vc
