// Faces of the radios: active and standby digits, a transfer button, a double knob.
#pragma once

#include "config/Model.h"
#include "drawn/devices/RadioDevice.h"
#include "drawn/faces/radios/WideFace.h"

namespace tvx::drawn {

// Rows of frequencies; each has its digits, its button and its knobs.
class RadioStackFace : public WideFace {
  Q_OBJECT
 public:
  using WideFace::WideFace;

 protected:
  // The row's controls, its print and its digits; `y` is the middle of the row.
  void AddRow(double y, std::function<void()> swap, std::function<void(int)> coarse,
              std::function<void(int)> fine);
  void DrawRow(QPainter& painter, double y, const QString& name) const;
  void DrawRowDigits(QPainter& painter, double y, const FrequencyPair& pair) const;
};

class RadioFace : public RadioStackFace {
  Q_OBJECT
 public:
  RadioFace(RadioDevice& device, const ConfigModel& model, QWidget* parent);
  QString Words() const override;

 protected:
  void DrawDial(QPainter& painter) override;
  void DrawMoving(QPainter& painter) override;

 private:
  RadioDevice& gauge_;
};

class ComNavFace : public RadioStackFace {
  Q_OBJECT
 public:
  ComNavFace(ComNavDevice& device, const ConfigModel& model, QWidget* parent);
  QString Words() const override;

 protected:
  void DrawDial(QPainter& painter) override;
  void DrawMoving(QPainter& painter) override;

 private:
  ComNavDevice& gauge_;
};

// "118.50", "362": as radios show a frequency.
QString FrequencyText(Band band, int frequency);

}  // namespace tvx::drawn
