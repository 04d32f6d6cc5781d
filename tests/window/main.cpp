#include <gtest/gtest.h>

#include <QApplication>
#include <QStandardPaths>
#include <clocale>

// One application for all tests, without a display: two runs draw the same pixels.
int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("LC_ALL", "C.UTF-8");
  qputenv("QT_LOGGING_RULES", "qt.qpa*=false;*.info=false");
  QStandardPaths::setTestModeEnabled(true);
  testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  QApplication::setStyle(QStringLiteral("Fusion"));
  return RUN_ALL_TESTS();
}
