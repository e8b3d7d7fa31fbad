// The manual, as formatted text within the program: no browser and no network is needed.
#pragma once

#include <QTextBrowser>
#include <functional>

#include "ui/Form.h"

namespace tvx {

class HelpForm : public Form {
  Q_OBJECT
 public:
  // `manual`: the manual's file. `openInBrowser` shows a file in the system's browser.
  HelpForm(const QString& manual, std::function<void(const QString& file)> openInBrowser);
  // Shows the chapter with this headline, of the manual or of another text beside it ("io-modules.md");
  // empty: the beginning.
  void Open(const QString& file, const QString& headline);
  // Where the manual tells of a form of this name: text and headline.
  static std::pair<QString, QString> PlaceOf(const QString& form);
  // The text that is shown, and the headline at its top; empty: its beginning.
  QString File() const { return file_; }
  QString Headline() const { return headline_; }

 private:
  void Follow(const QUrl& link);
  bool Load(const QString& file);

  const QString folder_, manual_;
  QString file_, headline_;
  QTextBrowser* Text;
};

}  // namespace tvx
