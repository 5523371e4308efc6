#include "platform/Sound.h"

#include <gtest/gtest.h>

#include "platform/Application.h"
#include "support/TempFolder.h"

namespace larder {
namespace {

TEST(ASound, ThatCannotBePlayedIsNoFailure) {
    test::TempFolder folder;
    folder.Write("noise.wav", "this is no sound");
    Sound sound;
    EXPECT_NO_THROW(sound.Play("/nonexistent/Click.wav"));
    EXPECT_NO_THROW(sound.Play(""));
    EXPECT_NO_THROW(sound.Play(folder.Native("noise.wav")));
    Application::DoEvents();
    EXPECT_NO_THROW(sound.Play(folder.Native("noise.wav")));
}

}  // namespace
}  // namespace larder
