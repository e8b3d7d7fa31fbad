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
  // True when no change is unsaved, or the user says that the changes may be lost.
  bool MayLeave();
  // Goes to another Function, 1..300, if MayLeave. False where it stays.
  bool Choose(int number);
  // Takes the Function anew from the model, unless something is unsaved.
  void Refresh();

  // The data type as the draft has it; that of no list where its text is no number.
  Byte DataTypeCode() const;
  // The first field that cannot be saved as it is, if there is one.
  std::optional<FunctionProblem> Problem() const;
  // Advice on what would be saved and will hardly do what is meant.
  std::string Advice() const;

  // Puts the Function into the model. A problem that prevents this is shown, and returned.
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
