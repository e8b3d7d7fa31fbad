// Whether a user sees every control of a window whole, at whatever size the window has.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCoreApplication>
#include <QLabel>
#include <QLayout>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <string>
#include <utility>
#include <vector>

namespace tvx {

// A control by its name, or else its kind and its words.
inline std::string Called(const QWidget* control) {
  if (!control->objectName().isEmpty()) return control->objectName().toStdString();
  const auto* label = qobject_cast<const QLabel*>(control);
  return std::string(control->metaObject()->className()) +
         (label == nullptr ? std::string() : " \"" + label->text().toStdString() + '"');
}

// The least size at which all of it is seen; what its form says of it goes first. A frame around the focus
// makes some controls two pixels larger.
inline QSize LeastToSee(const QWidget* control) {
  QSize least = control->minimumSizeHint() - QSize(2, 2);
  if (control->minimumWidth() > 0) least.setWidth(control->minimumWidth());
  if (control->minimumHeight() > 0) least.setHeight(control->minimumHeight());
  if (control->layout() == nullptr && control->hasHeightForWidth())
    least.setHeight(control->heightForWidth(control->width()));
  if (control->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored) least.setWidth(0);
  if (control->sizePolicy().verticalPolicy() == QSizePolicy::Ignored) least.setHeight(0);
  return least.boundedTo(control->maximumSize());
}

// Every control that a layout has placed lies within what holds it, has the room that it needs, and shares it
// with no other; no tab is out of reach.
inline void ExpectWhole(QWidget* window) {
  std::vector<QWidget*> holders{window};
  for (QWidget* widget : window->findChildren<QWidget*>()) {
    if (widget->isVisible() && widget->window() == window) holders.push_back(widget);
  }
  for (const QWidget* holder : holders) {
    if (const auto* bar = qobject_cast<const QTabBar*>(holder); bar != nullptr && bar->count() > 0) {
      EXPECT_TRUE(bar->rect().contains(bar->tabRect(bar->count() - 1))) << "a tab is out of reach";
    }
    if (holder->layout() == nullptr) continue;
    std::vector<const QWidget*> seen;
    for (const QWidget* child : holder->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
      if (!child->isVisible() || child->isWindow()) continue;
      const QRect place = child->geometry();
      const QSize least = LeastToSee(child);
      EXPECT_TRUE(holder->rect().contains(place)) << Called(child) << " leaves " << Called(holder);
      EXPECT_GE(child->width(), least.width()) << Called(child) << " is too narrow";
      EXPECT_GE(child->height(), least.height()) << Called(child) << " is too low";
      for (const QWidget* other : seen) {
        EXPECT_FALSE(place.intersects(other->geometry())) << Called(child) << " lies over " << Called(other);
      }
      seen.push_back(child);
    }
  }
}

// Layouts within what scrolls within layouts: each waits for an event of its own.
inline void LayOut() {
  for (int turn = 0; turn < 3; ++turn) QCoreApplication::processEvents();
}

// To a size, as far as the window lets itself be made that small; its least height belongs to its width.
inline void ResizeTo(QWidget* window, const QSize& size) {
  for (int turn = 0; turn < 2; ++turn) {
    window->resize(size);
    LayOut();
  }
}

// At its smallest, and at its smallest in one direction alone.
inline void ExpectWholeAtAnySize(QWidget* window) {
  const QSize usual = window->size();
  for (const QSize& size : {usual, QSize(usual.width(), 1), QSize(1, usual.height()), QSize(1, 1)}) {
    SCOPED_TRACE("made " + std::to_string(size.width()) + " x " + std::to_string(size.height()));
    ResizeTo(window, size);
    ExpectWhole(window);
    const auto* area = window->findChild<QScrollArea*>("ScrollForm", Qt::FindDirectChildrenOnly);
    if (area == nullptr || area->horizontalScrollBar()->maximum() == 0) continue;
    EXPECT_GE(window->width(), window->screen()->availableGeometry().width()) << "it scrolls sideways";
  }
  ResizeTo(window, usual);
}

// Where its words grow by some lines, the window makes room for them and stays where it is, on the screen.
inline void ExpectRoomForMoreWords(QWidget* window) {
  const QRect before = window->geometry();
  for (QLabel* label : window->findChildren<QLabel*>()) {
    const bool toCome = label->isHidden() && label->text().isEmpty();
    if (!label->wordWrap() || label->window() != window || !(label->isVisible() || toCome)) continue;
    label->setText(label->text() +
                   "\nThe adapter is gone: plug it in.\nThe line carries other data\nand more.");
    label->show();
  }
  LayOut();
  SCOPED_TRACE("with more words");
  ExpectWhole(window);
  EXPECT_NEAR(window->x(), before.x(), 2);  // its frame
  EXPECT_LE(window->y(), before.y());
  EXPECT_GE(window->height(), before.height()) << "it has become lower";
  EXPECT_LE(window->height(), window->screen()->availableGeometry().height());
  EXPECT_TRUE(window->width() == before.width() || window->findChild<QScrollArea*>("ScrollForm") != nullptr);
  ExpectWholeAtAnySize(window);
}

}  // namespace tvx
