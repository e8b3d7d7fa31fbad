// The set-up guide's form: the steps at the left, the chosen one beside them.
#pragma once

#include <QListWidget>
#include <QProgressBar>
#include <QSlider>
#include <QStackedWidget>
#include <vector>

#include "guide/Guide.h"
#include "ui/Form.h"
#include "ui/PlatePictures.h"
#include "ui/Widgets.h"

namespace tvx {

class GuideForm : public Form {
  Q_OBJECT
 public:
  GuideForm(Guide& guide, MessageBoxes& boxes, QWidget* parent);
  void ConfigurationReplaced() override { guide_.Refresh(); }
  void Go(GuideStep step);

 protected:
  void AtEnd() override { guide_.End(); }

 private:
  QWidget* MakeFindPage();
  QWidget* MakeRadiosPage();
  QWidget* MakeNeedlesPage();
  QWidget* MakeSwitchesPage();
  QWidget* MakeFlightPage();
  QLayout* MakeTuningRow();
  QLayout* MakeFoot();
  void ShowAll();
  void ShowSteps();
  void ShowFind();
  void ShowRadios();
  std::string RadioWords() const;
  void ShowNeedles();
  void ShowFaces();
  void ShowSwitches();
  void ShowFlight();
  void TakeFace(const QListWidgetItem* item);
  void TakeUse(const QListWidgetItem* item);
  void cmdSaveStart_Click();

  Guide& guide_;
  MessageBoxes& boxes_;
  QListWidget *ListSteps, *ListRadios = nullptr, *ListNeedles = nullptr, *ListFaces = nullptr,
                          *ListUses = nullptr;
  QStackedWidget* Pages;
  QLabel *LabelFound = nullptr, *LabelFixed = nullptr, *LabelTouched = nullptr, *LabelQuestion = nullptr,
         *LabelMoved = nullptr, *LabelFlight = nullptr, *LabelAfterFlight = nullptr, *LabelSaved = nullptr;
  QProgressBar *ProgressFind = nullptr, *ProgressFlight = nullptr;
  QPushButton *cmdFind = nullptr, *cmdYes = nullptr, *cmdAsItIs = nullptr, *cmdFly = nullptr;
  QWidget* Tuning = nullptr;
  QSlider* SliderNeedle = nullptr;
  PlateFace* Face = nullptr;
  std::vector<QPushButton*> roles_;
  std::vector<std::string> shownFaces_;
  std::vector<std::size_t> shownUses_;
};

}  // namespace tvx
