#include <QApplication>
#include <cstdlib>
#include <gtest/gtest.h>

// Widget tests need one QApplication for the whole run; off screen unless the runner chose a
// display, so that listing and running the tests works on a machine without one.
int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
