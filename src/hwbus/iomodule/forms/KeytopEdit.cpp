#include "hwbus/iomodule/forms/KeytopEdit.h"

#include <QHBoxLayout>

#include "simlink/keys/Keystroke.h"
#include "ui/Look.h"
#include "ui/Widgets.h"

namespace tvx {
namespace {

constexpr int kCharacter = static_cast<int>(NamedKey::Character);

}  // namespace

KeytopEdit::KeytopEdit(const QString& name)
    : key_(new QComboBox),
      character_(new QLineEdit),
      ctrl_(new QCheckBox(QStringLiteral("Ctrl"))),
      shift_(new QCheckBox(QStringLiteral("Shift"))) {
  key_->setObjectName(name);
  character_->setObjectName(name + "Char");
  ctrl_->setObjectName(name + "Ctrl");
  shift_->setObjectName(name + "Shift");
  for (const std::string_view keyName : KeyNames) key_->addItem(ToText(keyName));
  character_->setMaxLength(1);
  character_->setMaximumWidth(look::Margin() * 3);
  character_->setToolTip(tr("The character to type"));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(ctrl_);
  row->addWidget(shift_);
  row->addWidget(key_, 1);
  row->addWidget(character_);
  const auto tell = [this] {
    ShowCharacter();
    if (changed_) changed_();
  };
  connect(key_, &QComboBox::currentIndexChanged, this, tell);
  connect(character_, &QLineEdit::textChanged, this, tell);
  connect(ctrl_, &QCheckBox::toggled, this, tell);
  connect(shift_, &QCheckBox::toggled, this, tell);
  ShowCharacter();
}

void KeytopEdit::ShowCharacter() {
  character_->setVisible(key_->currentIndex() == kCharacter);
}

void KeytopEdit::SetCode(std::int16_t code) {
  const KeystrokeCode parts = SplitKeystroke(code);
  key_->setCurrentIndex(parts.KeyName < kNamedKeys ? parts.KeyName : 0);
  character_->setText(parts.KeyName == kCharacter ? QString(QChar(parts.Character)) : QString());
  ctrl_->setChecked(parts.Ctrl);
  shift_->setChecked(parts.Shift);
}

std::int16_t KeytopEdit::Code() const {
  KeystrokeCode parts{ctrl_->isChecked(), shift_->isChecked(), key_->currentIndex(), 0};
  if (parts.KeyName <= 0) return 0;
  if (parts.KeyName == kCharacter) {
    if (character_->text().isEmpty() || character_->text().front().unicode() > 0xFF) return 0;
    parts.Character = static_cast<unsigned char>(character_->text().front().unicode());
  }
  return JoinKeystroke(parts);
}

}  // namespace tvx
