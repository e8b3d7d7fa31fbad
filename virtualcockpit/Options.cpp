#include "virtualcockpit/Options.h"

#include <QCommandLineParser>
#include <charconv>

namespace tvx::vc {
namespace {

const QString kConfig = QStringLiteral("config"), kPort = QStringLiteral("port"),
              kSpeed = QStringLiteral("speed"), kPrint = QStringLiteral("print"),
              kSeconds = QStringLiteral("seconds"), kScreenshot = QStringLiteral("screenshot"),
              kFolder = QStringLiteral("folder"), kBehaviour = QStringLiteral("behaviour"),
              kNoSimulator = QStringLiteral("no-simulator"), kWithout = QStringLiteral("without"),
              kReplay = QStringLiteral("replay");
constexpr int kHighestPort = 65535, kMostSeconds = 1000000;
constexpr double kSlowest = 0.1, kFastest = 50;

// A number and no blank beside it.
template <typename Number>
bool ReadNumber(const QString& value, Number least, Number most, Number& number) {
  const std::string text = value.toStdString();
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && number >= least && number <= most;
}

void Describe(QCommandLineParser& parser) {
  // Words with one dash, as -platform, are Qt's: they are not a row of letters.
  parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
  parser.setApplicationDescription(QStringLiteral("A stand-in for the simulator and for the instruments."));
  parser.addHelpOption();
  parser.addVersionOption();
  parser.addOptions({
      {kConfig, QStringLiteral("The configuration whose cockpit is shown (else the start-up file's)."),
       QStringLiteral("FILE")},
      {kPort, QStringLiteral("Where the simulator listens, 0 for any free port (else the configuration's)."),
       QStringLiteral("N")},
      {kSpeed, QStringLiteral("Speed of the flight, 0.1 to 50."), QStringLiteral("X")},
      {kPrint, QStringLiteral("Prints once a second what simulator and instruments show.")},
      {kSeconds, QStringLiteral("Ends by itself after N seconds."), QStringLiteral("N")},
      {kScreenshot, QStringLiteral("Keeps a picture of the window, taken shortly before the end."),
       QStringLiteral("FILE")},
      {kBehaviour,
       QStringLiteral(
           "real: as slow and as strict as real hardware and the real simulator; easy: instant and "
           "forgiving."),
       QStringLiteral("real|easy")},
      {kReplay, QStringLiteral("Plays a trace that the control program has saved."), QStringLiteral("FILE")},
      {kNoSimulator, QStringLiteral("Leaves the simulator off: the instruments show what a real one says.")},
      {kWithout, QStringLiteral("Leaves parts of the windows out, with commas between them."),
       QStringLiteral("instruments,units,controls,yokes")},
      {kFolder, QStringLiteral("The working folder, where comports/ is."), QStringLiteral("DIR")},
  });
}

// False where a word is no part, or none would be left.
bool LeaveOut(const QString& parts, Options& options) {
  for (const QString& part : parts.split(QLatin1Char(','))) {
    if (part == QStringLiteral("instruments")) {
      options.withoutInstruments = true;
    } else if (part == QStringLiteral("units")) {
      options.withoutUnits = true;
    } else if (part == QStringLiteral("controls")) {
      options.withoutControls = true;
    } else if (part == QStringLiteral("yokes")) {
      options.withoutYokes = true;
    } else {
      return false;
    }
  }
  return !(options.withoutInstruments && options.withoutUnits && options.withoutControls);
}

// Reads the values; false with the name of the first option whose value is not possible.
bool TakeValues(const QCommandLineParser& parser, Options& options, QString& wrong) {
  const auto text = [&](const QString& name, auto& into) {
    if (!parser.isSet(name)) return true;
    into = parser.value(name).toStdString();
    wrong = name;
    return !parser.value(name).isEmpty();
  };
  const auto whole = [&](const QString& name, int least, int most, std::optional<int>& into) {
    if (!parser.isSet(name)) return true;
    wrong = name;
    return ReadNumber(parser.value(name), least, most, into.emplace());
  };
  if (!text(kConfig, options.config) || !text(kScreenshot, options.screenshot) ||
      !text(kFolder, options.folder) || !text(kReplay, options.replay) ||
      !whole(kPort, 0, kHighestPort, options.port) || !whole(kSeconds, 1, kMostSeconds, options.seconds)) {
    return false;
  }
  wrong = kWithout;
  if (parser.isSet(kWithout) && !LeaveOut(parser.value(kWithout), options)) return false;
  if (parser.isSet(kBehaviour)) {
    wrong = kBehaviour;
    const QString behaviour = parser.value(kBehaviour);
    if (behaviour != QStringLiteral("real") && behaviour != QStringLiteral("easy")) return false;
    options.traits = behaviour == QStringLiteral("real") ? Traits::Real() : Traits::Easy();
  }
  wrong = kSpeed;
  return !parser.isSet(kSpeed) || ReadNumber(parser.value(kSpeed), kSlowest, kFastest, options.speed);
}

}  // namespace

bool ParseOptions(const QStringList& arguments, Options& options, QString& error) {
  QCommandLineParser parser;
  Describe(parser);
  const bool known = parser.parse(arguments);
  options.help = parser.isSet(QStringLiteral("help"));
  options.version = parser.isSet(QStringLiteral("version"));
  options.print = parser.isSet(kPrint);
  options.simulator = !parser.isSet(kNoSimulator) && !parser.isSet(kReplay);
  if (!known) {
    error = parser.errorText();
    return false;
  }
  if (!parser.positionalArguments().isEmpty()) {
    error = QStringLiteral("\"%1\" is no option.").arg(parser.positionalArguments().first());
    return false;
  }
  QString wrong;
  if (TakeValues(parser, options, wrong)) return true;
  error = QStringLiteral("--%1: \"%2\" is not possible.").arg(wrong, parser.value(wrong));
  return false;
}

QString HelpText() {
  QCommandLineParser parser;
  Describe(parser);
  return parser.helpText();
}

}  // namespace tvx::vc
