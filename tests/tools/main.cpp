#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/Application.h"

// Drawing the pictures needs an application, and no screen.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const larder::Application application(argc, argv);
    return RUN_ALL_TESTS();
}
