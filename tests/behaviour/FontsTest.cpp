#include "platform/Fonts.h"

#include <gtest/gtest.h>

#include <QFont>
#include <QFontInfo>
#include <QStringList>

namespace larder {
namespace {

TEST(TheFonts, AreMeasuredInPixelsSoThatTheScreenDoesNotMatter) {
    EXPECT_EQ(NativeFont({Font::Family::Sans, 12}).pixelSize(), 16);
    EXPECT_EQ(NativeFont({Font::Family::Serif, 9}).pixelSize(), 12);
    EXPECT_EQ(NativeFont({Font::Family::Sans, 0}).pixelSize(), 1);
}

TEST(TheFonts, AreASerifForRecipesAndASansForLists) {
    EXPECT_EQ(NativeFont({Font::Family::Serif, 12}).families().first(),
              QStringLiteral("EB Garamond"));
    EXPECT_EQ(NativeFont({Font::Family::Sans, 12}).families().first(), QStringLiteral("Lato"));
    EXPECT_NE(QFontInfo(NativeFont({Font::Family::Serif, 12})).family(),
              QFontInfo(NativeFont({Font::Family::Sans, 12})).family());
}

TEST(TheFonts, CarryTheirStyles) {
    EXPECT_TRUE(NativeFont({Font::Family::Sans, 12, true}).bold());
    EXPECT_TRUE(NativeFont({Font::Family::Sans, 12, false, true}).italic());
    EXPECT_FALSE(NativeFont({Font::Family::Sans, 12}).bold());
}

}  // namespace
}  // namespace larder
