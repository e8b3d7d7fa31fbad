// One part of the drawn panel: its face, whose it is, what it shows or why it does not. A click follows its
// value.
#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <optional>

#include "base/Subject.h"

namespace tvx {

class CockpitTile : public QAbstractButton {
  Q_OBJECT
 public:
  // Whether the value of the subject is one of its own.
  virtual bool Holds(const Subject& subject) const = 0;
  // How large it is where a round dial is so many pixels wide.
  virtual QSize SizeFor(int dial) const = 0;
  // Moves the face to what has come since; `seconds` have passed. Its words wait for SetState: they would
  // change faster than they can be read.
  virtual void Advance(double seconds) = 0;
  // `known` false: it was told nothing, and what the face shows means nothing. `trouble`: why a value of it
  // stops; empty where none does. `main`: what is followed where no part of it is asked for.
  void SetState(bool known, const QString& trouble, const Subject& main);
  const Subject& Main() const { return main_; }

 signals:
  void FollowAsked(const tvx::Subject& subject);

 protected:
  // The face is taken over. `unknown` is said where it is not known.
  CockpitTile(QWidget* face, QString caption, const Subject& main, QString unknown = tr("Nothing sent yet"));
  // The value of the part of the face at a place in the face's pixels.
  virtual std::optional<Subject> SubjectAt(const QPointF&) const { return std::nullopt; }
  virtual QString FaceWords() const = 0;
  // What the face shows, in words, or why it shows nothing.
  void ShowWords();
  // How high it is with a face of so many pixels.
  int HeightWith(double face) const;

  void resizeEvent(QResizeEvent*) override;
  void paintEvent(QPaintEvent*) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  int CaptionHeight() const;

  QWidget* face_;
  QLabel* veil_;
  QString caption_, unknown_, trouble_, words_;
  bool known_ = false;
  Subject main_;
  std::optional<QPointF> pressed_;  // where the mouse was pressed; std::nullopt: a key did it
};

}  // namespace tvx
