// SIGTERM and SIGINT, brought into the event loop.
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace tvx::vc {

// Calls back, from the event loop, when the program is asked to end. One object in a program.
class EndSignals : public QObject {
 public:
  // Must be called before any thread is started, also those that the windowing system starts by itself: a
  // thread that does not hold the signals back would end the program at once.
  static void HoldBack();
  explicit EndSignals(std::function<void()> onEnd);
  ~EndSignals() override;

 private:
  int handle_ = -1;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tvx::vc
