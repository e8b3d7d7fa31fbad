// One life: a user in front of the program, from its start to its end.
#pragma once

#include <QObject>
#include <QSet>
#include <cstdint>
#include <string>

#include "app/Program.h"
#include "tools/monkey/Dice.h"
#include "tools/monkey/Forms.h"
#include "tools/monkey/Hands.h"
#include "tools/monkey/Journal.h"
#include "tools/monkey/Watchdog.h"
#include "tools/monkey/World.h"

namespace tvx::monkey {

// Acts on timers, whatever event loop runs. Everything that it does is in the journal before it is done.
class Life : public QObject {
 public:
  struct Surroundings {
    Program& program;
    World& world;
    Journal& journal;
    Watchdog& watchdog;
  };
  Life(std::uint64_t seed, Surroundings surroundings);
  // The event loop was left.
  void Ended(int status);

 private:
  enum class Ending { Exit, Window, Signal };

  void Step();
  void Do(const std::string& words, const std::function<void()>& act);
  void Look();
  void LookForFaults(int usable, int visible);
  [[noreturn]] void Fail(const std::string& words);

  void Live(const Dice& dice);
  bool StepTowardsGoal(const Dice& dice);
  void Go(const Way& way, const Dice& dice);
  void End(const Dice& dice);
  void EndByForm(QWidget& form);
  void ClearTheWay(const Dice& dice);
  int DelayMs(const Dice& dice) const;
  QString Goal() const;

  std::uint64_t seed_;
  Surroundings around_;
  Hands hands_;
  Ending ending_;
  int length_;          // steps until it wants to end
  int patience_;        // steps until it ends by a signal where nothing else works
  QString shownAtEnd_;  // the form on which a signal comes
  int step_ = 0;
  std::string last_;  // what was done last
  bool lastMayEnd_ = false;
  std::int64_t due_ = 0, operable_ = 0;  // by CountedMs: the next step; when a window last took input
  QSet<QString> seen_;
};

}  // namespace tvx::monkey
