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

TEST(ASound, IsToldBeforeItIsLookedFor) {
    Sound sound;
    std::string played;
    sound.OnPlay = [&](const std::string& path) { played = path; };
    sound.Play("/nonexistent/Click.wav");
    EXPECT_EQ(played, "/nonexistent/Click.wav");
}

}  // namespace
}  // namespace larder
