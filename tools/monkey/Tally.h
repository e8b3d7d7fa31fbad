// What many lives came to.
#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <map>

namespace tvx::monkey {

class Tally {
 public:
  struct Life {
    std::uint64_t seed;
    int status;      // of the process
    bool killed;     // it had to be
    QString folder;  // with its journal, and in kOutput what the process said
  };
  static constexpr const char* kOutput = "output.txt";

  // Counts a life; one with a fault is printed, the first of its kind with all that is known of it. True
  // where it had none.
  bool Add(const Life& life);
  // Prints the sums, the forms that were never opened, and what else was seen.
  void Print(double seconds) const;
  int Faults() const { return faultyLives_; }

 private:
  struct Story {
    QString fault;       // what the life says of itself
    QStringList doings;  // with what happened meanwhile
  };
  Story ReadJournal(const Life& life);
  void Read(const QString& kind, const QString& rest, Story& story);
  void PrintFault(const Life& life, const Story& story, const QStringList& output) const;

  int lives_ = 0, faultyLives_ = 0, steps_ = 0, longestEnd_ = 0;
  std::uint64_t firstSeed_ = 0, lastSeed_ = 0;
  std::map<QString, int> faults_, forms_, endings_;
  QStringList stalls_, warnings_;
};

}  // namespace tvx::monkey
