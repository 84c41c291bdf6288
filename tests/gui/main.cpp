#include <QApplication>

#include <gtest/gtest.h>

// The widget tests need an application object. They run on the offscreen
// platform unless told otherwise, also when the build lists the tests.
int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
