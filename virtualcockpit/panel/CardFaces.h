// Faces with a compass card: heading indicator, ADF, radio magnetic indicator.
#pragma once

#include "virtualcockpit/devices/DiscDevices.h"
#include "virtualcockpit/panel/InstrumentWidget.h"

namespace tvx::vc {

class CardFace : public InstrumentWidget {
  Q_OBJECT
 public:
  using InstrumentWidget::InstrumentWidget;
  bool Large() const override { return true; }

 protected:
  void DrawDial(QPainter&) override {}  // the card turns
  // The card with the heading (degrees) under the index at the top.
  void DrawCard(QPainter& painter, double heading) const;
  void DrawIndex(QPainter& painter) const;
  // Small marks on the case at every 45 degrees.
  void DrawCaseMarks(QPainter& painter) const;
  // A pointer over the whole dial; `wide` is the double-barred one.
  void DrawPointer(QPainter& painter, double degrees, const QColor& colour, bool wide) const;
};

class HeadingFace : public CardFace {
  Q_OBJECT
 public:
  HeadingFace(HeadingDevice& device, QWidget* parent);
  QString Words() const override;

 protected:
  void DrawMoving(QPainter& painter) override;
  bool Move(double seconds) override;

 private:
  HeadingDevice& gauge_;
  Needle disc_, bug_;
};

class AdfFace : public CardFace {
  Q_OBJECT
 public:
  AdfFace(AdfDevice& device, QWidget* parent);
  QString Words() const override;

 protected:
  void DrawMoving(QPainter& painter) override;
  bool Move(double seconds) override;

 private:
  AdfDevice& gauge_;
  Needle pointer_, card_;
};

class RmiFace : public CardFace {
  Q_OBJECT
 public:
  RmiFace(RmiDevice& device, QWidget* parent);
  QString Words() const override;

 protected:
  void DrawMoving(QPainter& painter) override;
  bool Move(double seconds) override;

 private:
  // Where a pointer stands on the case: its bearing less the card's heading; parked at the side.
  double OnCase(int pointer) const;
  RmiDevice& gauge_;
  Needle card_, pointer1_, pointer2_;
};

}  // namespace tvx::vc
