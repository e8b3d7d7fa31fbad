// The Function editor without its window: one Function's fields, checked, saved, and filled from the
// simulator's lists.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "config/Model.h"
#include "platform/Host.h"
#include "simlink/functions/FunctionDraft.h"

namespace tvx {

class FunctionPresenter {
 public:
  FunctionPresenter(ConfigModel& model, MessageBoxes& boxes);

  int Number() const { return number_; }
  const FunctionDraft& Draft() const { return draft_; }
  void Set(std::string_view field, std::string_view text) { draft_.At(field) = text; }
  // The standard Functions and those above 269 can be looked at only.
  bool Editable() const { return IsConfigurable(number_); }
  bool Changed() const { return draft_ != loaded_; }
  // True where nothing is unsaved, or the user says that it may be lost.
  bool MayLeave();
  // Goes to another Function, 1..300, if MayLeave. False where it stays.
  bool Choose(int number);
  // Takes the Function anew from the model, unless something is unsaved.
  void Refresh();

  // The data type as the draft has it; that of no list where its text is no number.
  Byte DataTypeCode() const;
  // The field that keeps from saving, if one does.
  std::optional<FunctionProblem> Problem() const;
  // What would be saved and hardly does what is meant, in words.
  std::string Advice() const;

  // Puts the Function into the model. What keeps from it is shown, and given back.
  std::optional<FunctionProblem> Save();
  // Appends a path of the simulator's list to the description, an array's element with the number `element`.
  // The times per second of its source become 10 where they were 0. False, with a message, where it cannot
  // be.
  bool CopyEntry(std::optional<std::string_view> path, int element);

  // A line of the editor's list: number in three digits, setting in two, short name.
  std::string Line(int number) const;

 private:
  void Load(int number);

  ConfigModel& model_;
  MessageBoxes& boxes_;
  int number_ = 0;
  FunctionDraft loaded_, draft_;
};

}  // namespace tvx
