// The stand-ins wait for their sockets in Qt's event loop, and the panel draws: both need an application.
#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
