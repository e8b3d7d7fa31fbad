// The drawn IO module: 48 switches, 8 axes, 32 lamps.
#pragma once

#include "drawn/faces/units/UnitFace.h"
#include "drawn/faces/units/UnitLegends.h"
#include "drawn/units/IOModuleState.h"

namespace tvx::drawn {

class ModuleFace : public UnitFace {
  Q_OBJECT
 public:
  ModuleFace(IOModuleLegend legend, int module, QWidget* parent);
  // Repaints what is otherwise than before.
  void Show(const IOModuleState& now);
  QString Words() const override;
  // As a definition counts its inputs within the module: from 0 a switch, from 100 an axis, from 200 a lamp.
  int PartAt(const QPointF& at) const override;
  QString TipAt(const QPointF& at) const override;

 protected:
  void Draw(QPainter& painter, const QRegion& within) override;
  QRectF AxisAt(int axis) const;
  int SwitchUnder(const QPointF& at) const;  // -1: none
  int AxisUnder(const QPointF& at) const;    // -1: none
  const IOModuleLegend& Legend() const { return legend_; }

 private:
  QRectF SwitchAt(int index) const;
  QRectF LampAt(int index) const;
  int LampUnder(const QPointF& at) const;
  static QString SwitchName(int index);
  void DrawSwitch(QPainter& painter, int index) const;
  void DrawAxis(QPainter& painter, int axis) const;
  void DrawLamp(QPainter& painter, int index) const;

  IOModuleLegend legend_;
  IOModuleState shown_;
};

}  // namespace tvx::drawn
