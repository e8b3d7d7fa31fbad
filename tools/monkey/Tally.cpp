#include "tools/monkey/Tally.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <cstdio>

#include "tools/monkey/Forms.h"
#include "tools/monkey/Journal.h"

namespace tvx::monkey {
namespace {

constexpr int kDoingsShown = 25, kOutputShown = 40, kFramesOfAKind = 3;

QStringList Lines(const QString& file) {
  QFile from(file);
  if (!from.open(QFile::ReadOnly)) return {};
  return QString::fromUtf8(from.readAll()).split('\n', Qt::SkipEmptyParts);
}

void Say(const QString& line) {
  std::printf("%s\n", qPrintable(line));
  std::fflush(stdout);
}

// What a sanitizer says in one line, and where in the program that was: faults of one kind have it in common.
QString KindOf(const QStringList& output) {
  static const QRegularExpression frame("^ *#\\d+ 0x[0-9a-f]+ in (tvx::(?!monkey)[^(]+)");
  static const QRegularExpression report("ERROR: (\\w+Sanitizer: [\\w-]+)|runtime error: (.*)");
  QString kind;
  QStringList frames;
  for (const QString& line : output) {
    if (const auto found = report.match(line); kind.isEmpty() && found.hasMatch())
      kind = found.captured(found.lastCapturedIndex());
    if (const auto found = frame.match(line); found.hasMatch() && frames.size() < kFramesOfAKind)
      frames << found.captured(1);
  }
  return kind + (frames.isEmpty() ? QString() : " in " + frames.join(" < "));
}

// From the first line of a report on.
QStringList Report(const QStringList& output) {
  static const QRegularExpression begins("ERROR: |runtime error:|^ *#0 ");
  const auto from = output.indexOf(begins);
  return from < 0 ? output.mid(0, kOutputShown) : output.mid(from, kOutputShown);
}

}  // namespace

Tally::Story Tally::ReadJournal(const Life& life) {
  Story story;
  for (const QString& line : Lines(life.folder + '/' + Journal::kFile)) {
    const auto blank = line.indexOf(' ');
    Read(line.left(blank), line.mid(blank + 1), story);
  }
  return story;
}

void Tally::Read(const QString& kind, const QString& rest, Story& story) {
  if (kind == "do" || kind == "world" || kind == "ending" || kind == "stall" || kind == "back")
    story.doings << kind + ' ' + rest;
  if (kind == "do") ++steps_;
  if (kind == "form") ++forms_[rest];
  if (kind == "ending") ++endings_[rest.section(' ', 0, 0)];
  if (kind == "ended") longestEnd_ = std::max(longestEnd_, rest.toInt());
  if (kind == "stall") stalls_ << rest;
  if (kind == "fault" && story.fault.isEmpty()) story.fault = rest;
  if (kind == "qt" && !warnings_.contains(rest)) warnings_ << rest;
}

bool Tally::Add(const Life& life) {
  if (lives_++ == 0) firstSeed_ = life.seed;
  lastSeed_ = life.seed;
  const Story story = ReadJournal(life);
  if (life.status == 0 && !life.killed) return true;
  ++faultyLives_;
  const QStringList output = Lines(life.folder + '/' + kOutput);
  const QString reported = KindOf(output);
  QString kind = story.fault;
  if (kind.isEmpty())
    kind = life.killed ? "the process had to be killed" : "status " + QString::number(life.status);
  if (!reported.isEmpty()) kind += ": " + reported;
  const bool known = faults_[kind]++ > 0;
  Say(QString("FAULT with seed %1: %2").arg(life.seed).arg(kind));
  if (!known) PrintFault(life, story, output);
  return false;
}

void Tally::PrintFault(const Life& life, const Story& story, const QStringList& output) const {
  Say("  The last that was done:");
  for (const QString& line : story.doings.mid(std::max<qsizetype>(0, story.doings.size() - kDoingsShown)))
    Say("    " + line);
  if (!output.isEmpty()) Say("  What the process said:");
  for (const QString& line : Report(output)) Say("    " + line.left(200));
  Say(QString("  All of it is in %1.  Again: scripts/monkey --life %2").arg(life.folder).arg(life.seed));
}

void Tally::Print(double seconds) const {
  Say(QString("\n%1 lives (seeds %2 to %3), %4 actions, %5 s; the slowest end took %6 ms.")
          .arg(lives_)
          .arg(firstSeed_)
          .arg(lastSeed_)
          .arg(steps_)
          .arg(seconds, 0, 'f', 0)
          .arg(longestEnd_));
  QStringList never, opened, unlisted, ends;
  for (const QString& form : FormNames()) {
    const auto found = forms_.find(form);
    (found == forms_.end() ? never : opened)
        << (found == forms_.end() ? form : form + ' ' + QString::number(found->second));
  }
  for (const auto& [form, count] : forms_) {
    if (!FormNames().contains(form) && !form.startsWith("q", Qt::CaseInsensitive)) unlisted << form;
  }
  for (const auto& [ending, count] : endings_) ends << ending + ' ' + QString::number(count);
  Say("Ended by: " + ends.join(", "));
  Say("Opened, in so many lives: " + opened.join(", "));
  Say("Never opened: " + (never.isEmpty() ? "none" : never.join(", ")));
  if (!unlisted.isEmpty()) Say("Forms that tools/monkey/Forms.cpp does not know: " + unlisted.join(", "));
  if (!stalls_.isEmpty()) Say("No event was handled for:\n  " + stalls_.join("\n  "));
  if (!warnings_.isEmpty()) Say("Qt said:\n  " + warnings_.join("\n  "));
  for (const auto& [fault, count] : faults_) Say(QString("FAULT, %1 times: %2").arg(count).arg(fault));
  Say(faultyLives_ == 0 ? "No fault was found." : "Faults were found.");
}

}  // namespace tvx::monkey
