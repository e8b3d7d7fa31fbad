#include "ui/windows/HelpForm.h"

#include <QFile>
#include <QFileInfo>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <QUrl>

#include "ui/FieldGrid.h"

namespace tvx {
namespace {

constexpr int kLetters = 62;

struct Place {
  const char *form, *file, *headline;
};
constexpr Place kPlaces[] = {
    {"frmMain", "manual.md", "The start form"},
    {"frmStatus", "manual.md", "The status form"},
    {"frmPorts", "manual.md", "The status form"},
    {"frmCockpit", "manual.md", "Where is my value?"},
    {"frmFollow", "manual.md", "Where is my value?"},
    {"frmAircraft", "manual.md", "A configuration for each aircraft"},
    {"frmGuide", "manual.md", "Set up with the guide"},
    {"frmMessages", "manual.md", "Messages"},
    {"frmHelp", "manual.md", ""},
    {"FrmMainConfigure", "manual.md", "Set up from nothing, step by step"},
    {"SaveConfig", "manual.md", "10. Save, and make it the start-up configuration"},
    {"frmAdapters", "manual.md", "2. Assign the adapters"},
    {"frmInstrument", "manual.md", "7. Set up a gauge"},
    {"frmCalibrate", "manual.md", "8. Calibrate its face"},
    {"frmTestGauges", "manual.md", "4. Find the gauges"},
    {"frmFunctionEditor", "manual.md", "5. Define a Function"},
    {"frmListFunctions", "functions.md", "The editor"},
    {"frmTestFunction", "functions.md", "The test of one Function"},
    {"frmTestXplaneInterface", "functions.md", "The test console"},
    {"frmStatusIOM", "io-modules.md", ""},
    {"frmstatusIOM2", "io-modules.md", ""},
    {"ConfigIOM", "io-modules.md", "The set-up"},
    {"ConfigSwitch", "io-modules.md", "A definition"},
    {"ConfigAnalogue", "io-modules.md", "A definition"},
    {"ConfigLamp", "io-modules.md", "A definition"},
    {"frmStatusEC", "engine-cluster.md", ""},
    {"frmTestEC", "engine-cluster.md", ""},
    {"frmConfigEC", "engine-cluster.md", "Set-up"},
    {"frmStatusFFB", "force-feedback.md", "What the forms show"},
    {"frmConfigY1", "force-feedback.md", "Settings"},
    {"frmConfigY2", "force-feedback.md", "Settings"},
};

// Pictures no wider than the text.
class Browser : public QTextBrowser {
 protected:
  QVariant loadResource(int type, const QUrl& name) override {
    const QVariant loaded = QTextBrowser::loadResource(type, name);
    if (type != QTextDocument::ImageResource || loaded.isNull()) return loaded;
    QImage image = loaded.canConvert<QImage>() && !loaded.value<QImage>().isNull()
                       ? loaded.value<QImage>()
                       : QImage::fromData(loaded.toByteArray());
    const int room = look::Margin() * (kLetters - 8);
    if (image.width() > room) image = image.scaledToWidth(room, Qt::SmoothTransformation);
    return image;
  }
};

// "10. Save, and make it ..." in a link is "10-save-and-make-it-...".
QString AnchorOf(const QString& headline) {
  QString anchor;
  for (const QChar letter : headline.toLower()) {
    if (letter.isLetterOrNumber()) anchor += letter;
    if (letter == ' ' || letter == '-') anchor += '-';
  }
  return anchor;
}

}  // namespace

HelpForm::HelpForm(const QString& manual, std::function<void(const QString& file)> openInBrowser)
    : Form("frmHelp"),
      folder_(QFileInfo(manual).absolutePath() + '/'),
      manual_(QFileInfo(manual).fileName()),
      Text(new Browser) {
  setWindowTitle(tr("Help"));
  Text->setObjectName("HelpText");
  Text->setAccessibleName(tr("Manual"));
  Text->setSearchPaths({folder_});
  Text->setOpenLinks(false);
  connect(Text, &QTextBrowser::anchorClicked, this, &HelpForm::Follow);
  QPushButton* begin = MakeButton("cmdBegin", tr("&Beginning"), tr("The manual from its beginning"));
  QPushButton* browser = MakeButton("cmdBrowser", tr("Open in another p&rogram"),
                                    tr("Opens the same file with what the desktop has for it"));
  QPushButton* close = MakeButton("CmdClose", tr("&Close"), tr("Closes the help (Escape)"));
  connect(begin, &QPushButton::clicked, this, [this] { Open(manual_, {}); });
  connect(browser, &QPushButton::clicked, this,
          [this, open = std::move(openInBrowser)] { open(folder_ + (file_.isEmpty() ? manual_ : file_)); });
  connect(close, &QPushButton::clicked, this, &HelpForm::CloseAsked);
  auto* row = new QHBoxLayout;
  row->addWidget(begin);
  row->addWidget(browser);
  row->addStretch(1);
  row->addWidget(close);
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addWidget(Text, 1);
  column->addLayout(row);
  Text->setMinimumSize(look::Margin() * 20, look::Margin() * 12);
  resize(look::Margin() * kLetters, look::Margin() * 48);
  Text->setFocus();
}

std::pair<QString, QString> HelpForm::PlaceOf(const QString& form) {
  for (const Place& place : kPlaces) {
    if (form == QLatin1String(place.form)) return {place.file, place.headline};
  }
  return {};
}

bool HelpForm::Load(const QString& file) {
  if (file == file_) return true;
  QFile text(folder_ + file);
  if (!text.open(QFile::ReadOnly)) return false;
  file_ = file;
  Text->setMarkdown(QString::fromUtf8(text.readAll()));
  return true;
}

void HelpForm::Open(const QString& file, const QString& headline) {
  if (!Load(file.isEmpty() ? manual_ : file) && !Load(manual_)) return;
  headline_.clear();
  Text->verticalScrollBar()->setValue(0);
  if (headline.isEmpty()) return;
  for (QTextBlock block = Text->document()->begin(); block.isValid(); block = block.next()) {
    const bool found = block.blockFormat().headingLevel() > 0 &&
                       (block.text() == headline || AnchorOf(block.text()) == headline);
    if (!found) continue;
    headline_ = block.text();
    QTextCursor cursor(block);
    Text->moveCursor(QTextCursor::End);  // so that the headline comes to the top
    Text->setTextCursor(cursor);
    return;
  }
}

// To a place in this text or in one beside it; what lies on the network is left alone.
void HelpForm::Follow(const QUrl& link) {
  if (!link.scheme().isEmpty()) return;
  Open(link.path().isEmpty() ? file_ : link.path(), link.fragment());
}

}  // namespace tvx
