// Starts the tests that need an event loop and no window.
#include <QCoreApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    const QCoreApplication Application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
