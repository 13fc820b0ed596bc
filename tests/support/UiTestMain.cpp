// Starts the tests that need windows, on the platform without a screen and without a sound server.
#include "base/SafeApplication.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("PULSE_SERVER", "unix:/nosuch/server");
    const quoril::SafeApplication Application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
