// The yokes of a configuration: their lines, and the window that shows them.
#pragma once

#include <QLabel>
#include <QTimer>
#include <QWidget>
#include <array>
#include <memory>
#include <vector>

#include "config/Model.h"
#include "virtualcockpit/yokes/YokeLine.h"
#include "virtualcockpit/yokes/YokeWidget.h"

namespace tvx::vc {

// Lines for the yokes that the configuration names, unplugged; with `folder` empty they get no links.
std::vector<std::unique_ptr<YokeLine>> MakeYokes(const ConfigModel& model, const std::string& folder,
                                                 const LineTraits& line, const YokeTraits& traits);

void SetYokeTraits(const std::vector<std::unique_ptr<YokeLine>>& yokes, const LineTraits& line,
                   const YokeTraits& traits);

class YokeWindow : public QWidget {
  Q_OBJECT
 public:
  explicit YokeWindow(const std::vector<std::unique_ptr<YokeLine>>& yokes, QWidget* parent = nullptr);
  // One line: where each yoke is and what it gives.
  QString Words() const;

 private:
  struct Side {
    YokeLine* line;
    YokeWidget* picture;
    QLabel* words;
    class QPushButton* adapter;
  };
  QWidget* MakeSide(YokeLine& line, int number);
  void Frame();
  static QString WordsOf(const YokeLine& line);

  std::vector<Side> sides_;
  QTimer timer_;
};

}  // namespace tvx::vc
