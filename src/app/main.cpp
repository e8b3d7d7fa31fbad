#include <QApplication>

#include "app/Program.h"
#include "app/TerminationSignals.h"
#include "ui/Look.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  tvx::look::Apply(application, tvx::look::Theme::Dark);
  tvx::Program program;
  const tvx::TerminationSignals termination([&program] { program.Exit(); });
  program.Begin();
  return program.Ended() ? 0 : QApplication::exec();
}
