// A needle gauge's face: one or two scales made from its Plates, and a digit display where it has one.
#pragma once

#include "config/Model.h"
#include "drawn/devices/NeedleDevice.h"
#include "drawn/faces/dials/FaceStyle.h"
#include "drawn/faces/dials/Scale.h"
#include "drawn/widgets/InstrumentWidget.h"

namespace tvx::drawn {

class NeedleFace : public InstrumentWidget {
  Q_OBJECT
 public:
  NeedleFace(NeedleDevice& device, const ConfigModel& model, QWidget* parent);
  bool Large() const override;
  QString Words() const override;

 protected:
  void DrawDial(QPainter& painter) override;
  void DrawMoving(QPainter& painter) override;
  void DrawFront(QPainter& painter) override;
  QRectF Move(double seconds, bool told) override;

 private:
  static constexpr double kVisible = 0.4;  // needle positions
  // One needle with all that belongs to it.
  struct Hand {
    bool used = false;
    Scale scale;
    FaceStyle style;
    QString name;
    Needle needle{kVisible};
    double length = 0;  // of the needle, drawing units
    QRectF area;        // where it was last
    bool told = false;  // the bus has put it somewhere
  };
  enum class Layout { Single, Beside, Concentric };

  void Prepare(Hand& hand, int function, int plate, const ConfigModel& model);
  void DrawScale(QPainter& painter, const Hand& hand, double radius, double size) const;
  void DrawArcs(QPainter& painter, const Hand& hand, double radius, double width) const;
  void DrawLegend(QPainter& painter, const Hand& hand, QPointF at, double height, double widest,
                  const QColor& colour) const;
  void DrawLegends(QPainter& painter) const;
  void DrawNeedle(QPainter& painter, const Hand& hand, const QColor& colour, bool slim) const;
  void DrawDisplay(QPainter& painter) const;
  static QRectF AreaOf(const Hand& hand);
  QRectF MoveHand(Hand& hand, const std::optional<int>& target, double seconds);
  QString HandWords(const Hand& hand) const;

  NeedleDevice& gauge_;
  Hand first_, second_;
  Layout layout_ = Layout::Single;
  std::uint64_t heard_ = 0;
  double silence_ = 0;  // s, of an engine cluster
};

}  // namespace tvx::drawn
