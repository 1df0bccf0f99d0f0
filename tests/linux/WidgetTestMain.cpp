// Runs the widget and command-line tests inside a QApplication, offscreen unless a display is asked for.
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
    // As the program does once Qt has set the C locale to the user's: numbers keep a period.
    std::setlocale(LC_NUMERIC, "C");
    return RUN_ALL_TESTS();
}
