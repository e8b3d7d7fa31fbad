// What forms with fields to fill in are put together from: titled panels, labelled edits, and edits that show
// when what was typed into them is wrong.
#pragma once

#include <QGridLayout>
#include <QLineEdit>
#include <QVBoxLayout>
#include <functional>
#include <string>

#include "ui/NumberBox.h"
#include "ui/Widgets.h"

namespace tvx {

// A grid in a framed group under a small headline, whose label is named after the panel unless it has a name
// of its own.
QGridLayout* MakeTitledGrid(QFrame* panel, const QString& title, const char* labelName = nullptr);
// A column, alike.
QVBoxLayout* MakeTitledColumn(QFrame* panel, const QString& title, const char* labelName);
// A label for a control that has the control's name and "Caption".
QLabel* MakeCaption(QWidget* control, const QString& text);
// A labelled edit in a grid: label at (row, column), edit beside it.
QLineEdit* AddEdit(QGridLayout* grid, int row, int column, const char* name, const QString& caption,
                   const QString& toolTip);

// Frames an edit as wrong for as long as it holds something that `problem` objects to, and tells `said` what
// that is, with the edit's caption before it; empty once it is right. What it returns checks again, for when
// `problem` thinks otherwise.
std::function<void()> CheckAsTyped(QLineEdit* edit, std::function<std::string(const std::string&)> problem,
                                   std::function<void(const std::string&)> said);

// Keeps a form as wide as all its texts need. To be called once it is laid out.
void KeepWide(QWidget* form);
// Opens it wider still, for long lists: so many letters wide, as far as the screen has room.
void OpenWide(QWidget* form, int letters);

}  // namespace tvx
