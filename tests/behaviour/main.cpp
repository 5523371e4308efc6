#include <gtest/gtest.h>

#include <cstdlib>

#include "behaviour/support/MainWindowFixture.h"
#include "platform/Application.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    larder::Application application(argc, argv);
    larder::test::MainWindowFixture::application = &application;
    return RUN_ALL_TESTS();
}
