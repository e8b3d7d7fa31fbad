// One instrument of the drawn panel: its face, whose it is, what it shows or why it does not.
#pragma once

#include <QAbstractButton>
#include <QLabel>

#include "config/Model.h"
#include "drawn/widgets/InstrumentWidget.h"

namespace tvx {

class InstrumentTile : public QAbstractButton {
  Q_OBJECT
 public:
  // Both outlive it.
  InstrumentTile(drawn::Device& device, const ConfigModel& model, const QString& caption);

  int GaugeID() const { return face_->Gauge().Id().gaugeID; }
  // `known` false: the instrument was told nothing, and what the face shows means nothing. `trouble`: why its
  // value stops; empty where it does not.
  void SetState(bool known, const QString& trouble);
  // Moves the needles on by the time that has passed.
  void Advance(double seconds);
  // How large it is where a round dial is so many pixels wide.
  QSize SizeFor(int dial) const;

 protected:
  void resizeEvent(QResizeEvent*) override;
  void paintEvent(QPaintEvent*) override;

 private:
  void ShowWords();
  int CaptionHeight() const;

  drawn::InstrumentWidget* face_;
  QLabel* veil_;
  QString caption_, trouble_, words_;
  bool known_ = false;
};

}  // namespace tvx
