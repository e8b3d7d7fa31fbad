// The program's forms, and what a user does to get to each.
#pragma once

#include <QStringList>
#include <algorithm>
#include <vector>

namespace tvx::monkey {

// A form, and the control of another one that opens it.
struct Way {
  const char* form;
  const char* from;     // the form on which the control stands; empty: the program opens it by itself
  const char* control;  // a button; or a list whose line is double-clicked
  // Before that a line of this list has to be chosen, from..to; nullptr: no list.
  const char* list = nullptr;
  int first = 0, last = 0;
};
const std::vector<Way>& Ways();
// Every name of Ways(), once.
const QStringList& FormNames();

// The ways that lead nearer to `goal`, given what can be used now: the shortest first. Empty where there is
// none.
template <typename Usable>
std::vector<Way> WaysTowards(const QString& goal, Usable&& usable) {
  std::vector<QString> wanted{goal};
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    std::vector<Way> open;
    for (const Way& way : Ways()) {
      if (wanted[i] != way.form || *way.from == '\0') continue;
      if (usable(way)) open.push_back(way);
      const QString from = QString::fromLatin1(way.from);
      if (std::find(wanted.begin(), wanted.end(), from) == wanted.end()) wanted.push_back(from);
    }
    if (!open.empty()) return open;
  }
  return {};
}

}  // namespace tvx::monkey
