// Faces with a compass card: heading indicator, ADF, radio magnetic indicator.
#pragma once

#include "drawn/devices/DiscDevices.h"
#include "drawn/widgets/InstrumentWidget.h"
#include "drawn/widgets/Texture.h"

namespace tvx::drawn {

class CardFace : public InstrumentWidget {
  Q_OBJECT
 public:
  using InstrumentWidget::InstrumentWidget;
  bool Large() const override { return true; }

 protected:
  static constexpr double kVisibleSteps = 1.6;  // of 4320: an eighth of a degree

  void DrawDial(QPainter&) override {}  // the card turns
  void Prepare(double pixelsPerUnit) override;
  // The card with the heading (degrees) under the index at the top.
  void PaintCard(QPainter& painter, double heading) const;
  void DrawIndex(QPainter& painter) const;
  // Small marks on the case at every 45 degrees.
  void DrawCaseMarks(QPainter& painter) const;
  // A pointer over the whole dial; `wide` is the double-barred one.
  void DrawPointer(QPainter& painter, double degrees, const QColor& colour, bool wide) const;

 private:
  void DrawCard(QPainter& painter) const;
  Texture card_;
};

class HeadingFace : public CardFace {
  Q_OBJECT
 public:
  HeadingFace(HeadingDevice& device, QWidget* parent);
  QString Words() const override;

 protected:
  void DrawMoving(QPainter& painter) override;
  void DrawFront(QPainter& painter) override;
  QRectF Move(double seconds, bool told) override;

 private:
  HeadingDevice& gauge_;
  Needle disc_{kVisibleSteps}, bug_{kVisibleSteps};
};

class AdfFace : public CardFace {
  Q_OBJECT
 public:
  AdfFace(AdfDevice& device, QWidget* parent);
  QString Words() const override;

 protected:
  void DrawMoving(QPainter& painter) override;
  void DrawFront(QPainter& painter) override;
  QRectF Move(double seconds, bool told) override;

 private:
  AdfDevice& gauge_;
  Needle pointer_{kVisibleSteps}, disc_{kVisibleSteps};
};

class RmiFace : public CardFace {
  Q_OBJECT
 public:
  RmiFace(RmiDevice& device, QWidget* parent);
  QString Words() const override;

 protected:
  void DrawMoving(QPainter& painter) override;
  void DrawFront(QPainter& painter) override;
  QRectF Move(double seconds, bool told) override;

 private:
  // Where a pointer stands on the case: its bearing less the card's heading; parked at the side.
  double OnCase(int pointer) const;
  RmiDevice& gauge_;
  Needle disc_{kVisibleSteps}, pointer1_{kVisibleSteps}, pointer2_{kVisibleSteps};
};

}  // namespace tvx::drawn
