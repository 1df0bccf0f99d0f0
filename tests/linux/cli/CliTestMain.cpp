// Runs the command line's tests inside a QApplication, offscreen, as "quorvane card" draws.
#include <QApplication>
#include <gtest/gtest.h>

#include <clocale>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    // CTest lists the tests by running this binary without the test's
    // environment, so the platform is chosen here as well.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    return RUN_ALL_TESTS();
}
