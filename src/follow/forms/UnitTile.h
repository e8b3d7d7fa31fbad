// The engine cluster, an IO module or a yoke on the drawn panel. A click on a part of it, a dial, a switch,
// an axis, a lamp or a force's bar, follows that one's value.
#pragma once

#include <functional>

#include "config/Model.h"
#include "drawn/faces/units/UnitFace.h"
#include "follow/UnitMirror.h"
#include "follow/forms/CockpitTile.h"

namespace tvx {

class UnitTile : public CockpitTile {
  Q_OBJECT
 public:
  // The mirror outlives it.
  UnitTile(const UnitMirror& mirror, const UnitName& unit, const ConfigModel& model);

  const UnitName& Unit() const { return unit_; }
  bool Holds(const Subject& subject) const override;
  QSize SizeFor(int dial) const override;
  void Advance(double) override { drawn_.show(); }

 protected:
  std::optional<Subject> SubjectAt(const QPointF& at) const override;
  QString FaceWords() const override { return drawn_.face->Words(); }
  bool event(QEvent* event) override;

 private:
  struct Drawn {
    drawn::UnitFace* face;
    std::function<void()> show;  // what the mirror says now
  };
  UnitTile(Drawn drawn, const UnitName& unit);
  static Drawn Make(const UnitMirror& mirror, const UnitName& unit, const ConfigModel& model);

  Drawn drawn_;
  UnitName unit_;
};

}  // namespace tvx
