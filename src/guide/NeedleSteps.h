// The needles, one after the other: one moves, the user says which face that was, and two or three of its
// points are put right with the live needle.
#pragma once

#include <string>
#include <vector>

#include "config/faces/ReadyFaces.h"
#include "guide/GuideHardware.h"

namespace tvx {

// No Plate that was there before is changed: a needle that is put right gets a Plate of its own.
class NeedleSteps {
 public:
  NeedleSteps(ConfigModel& model, GuideHardware& hardware) : model_(model), hardware_(hardware) {}

  // The needles and the ready faces as they are now; the chosen needle stays chosen.
  void Refresh();
  const std::vector<CalibrationTarget>& Needles() const { return needles_; }
  const std::vector<ReadyFace>& Faces() const { return faces_; }
  // "Airspeed 40-200 kt", or what the needle lacks.
  std::string StateOf(std::size_t needle) const;
  bool NeedsWork(std::size_t needle) const;
  int LeftToDo() const;

  int Current() const { return current_; }  // -1: none
  void Select(int needle);
  // The next one that needs work, from the chosen one on; none where all is done.
  void SelectNext();

  // --- which face ---
  // The face that moved: the needle gets its Function and a Plate with its points. Empty on success,
  // otherwise why it cannot be.
  std::string TakeFace(std::size_t face);

  // --- its points ---
  // The value at which the needle should stand now; false while a face is to be chosen.
  bool Tuning() const { return tuning_; }
  std::string Question() const;  // "Which face moved?", "Does it stand at 100?"
  int Position() const { return position_; }
  void MoveTo(int position);  // cut to 0..1079
  // It stands there: takes the position, and goes on to the next point or, after the last, the next needle.
  void Yes();
  // The points are good as they are.
  void SkipTuning();

  // About every 20 ms, while the needles are the step: moves the needle that is asked for.
  void Tick();

 private:
  void ShowPoint();
  void StoreTuned();
  std::string Assign(const ReadyFace& face);
  void Put(int function, int plate);
  bool UsedElsewhere(int plate) const;
  void NoteGiven();

  ConfigModel& model_;
  GuideHardware& hardware_;
  std::vector<CalibrationTarget> needles_;
  std::vector<ReadyFace> faces_;
  int current_ = -1;
  bool tuning_ = false;
  std::vector<FaceMark> marks_;      // as the face has them
  std::vector<std::size_t> points_;  // those that are asked about
  std::size_t point_ = 0;
  std::vector<int> offsets_;  // of the points asked about so far
  int position_ = 0;
  int ownPlate_ = -1;                        // that was made for the needle
  int givenFunction_ = 0, givenPlate_ = -1;  // what the needle was given; otherwise it was undone
  int ticks_ = 0;
};

}  // namespace tvx
