#include "tools/monkey/Texts.h"

namespace tvx::monkey {
namespace {

constexpr const char* kNumbers[] = {
    "0",   "1",   "2",   "5",     "12",    "100",  "255",   "256",        "-1",         "1000", "1,5",  "1.5",
    "1e9", "007", " 7 ", "32768", "65536", "-0.0", "99999", "2147483648", "9999999999", "NaN",  "1e999"};
constexpr const char* kWords[] = {"",
                                  " ",
                                  "Airspeed",
                                  "altitude indicated",
                                  "a,b,c",
                                  "\"quoted\"",
                                  "\"",
                                  ",",
                                  "O'Neil; DROP",
                                  "ÄÖü ß €",
                                  "日本語",
                                  "%s%n%d",
                                  "<b>bold</b>",
                                  "&amp;",
                                  "#1:sim/flightmodel/position/elevation",
                                  "#1:sim/a[999]\n#2:sim/b\n#99:x",
                                  "one\r\ntwo\r\nthree",
                                  "1:2:3;4",
                                  "tab\there",
                                  "\\"};
// No name leads out of the folder.
constexpr const char* kFiles[] = {
    "Default.cfg",    "Other.cfg", "My cockpit.cfg",    "",           " ",   "a,b.cfg",
    "\"quoted\".cfg", "ÄÖü.cfg",   "no/such/place.cfg", "plain name", ".cfg"};
constexpr const char* kAddresses[] = {"127.0.0.1", "127.0.0.2",   "",   "localhost",
                                      "127.0.0.",  "127.0.0.256", "a,b"};
constexpr const char* kChoices[] = {"X-Plane",       "X-Plane", "X-Plane/Resources",
                                    "no/such/place", "log.txt", ""};

template <typename List>
QString OneOf(const List& list, const Dice& dice) {
  return QString::fromUtf8(dice.OneOf(list, "text"));
}

}  // namespace

QString TextFor(const QString& field, const Dice& dice) {
  if (field.contains("IP")) return OneOf(kAddresses, dice);
  const bool file = field == "FileName";
  const double kind = dice.Of("kind of text");
  if (kind < 0.05) return QString(file ? 300 : 5000, 'x');
  if (file) return OneOf(kFiles, dice);
  return kind < 0.6 ? OneOf(kNumbers, dice) : OneOf(kWords, dice);
}

QString FileChoice(const Dice& dice) {
  return OneOf(kChoices, dice);
}

QString RandomLetter(const Dice& dice) {
  return QString(QChar('a' + dice.Below(26, "letter")));
}

}  // namespace tvx::monkey
