#include "search/SearchText.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace larder {
namespace {

TEST(SearchText, DelimitersBecomeBlanksAndTheLengthStays) {
    std::string text = "pan-fried, (fresh) [cod]";
    ReplaceDelimiters(text);
    EXPECT_EQ(text, "pan fried   fresh   cod ");
}

TEST(SearchText, ATextWithoutDelimitersComesBackUnchanged) {
    for (std::string text : {"", "cod", "half_shell42", "cr\xE8me"}) {
        const std::string before = text;
        ReplaceDelimiters(text);
        EXPECT_EQ(text, before);
    }
}

TEST(SearchText, ThirtyFiveCharactersAreDelimitersAndNoOtherByteIs) {
    int blanks = 0;
    for (int byte = 0; byte < 256; ++byte) {
        std::string text(1, static_cast<char>(byte));
        ReplaceDelimiters(text);
        if (text == " ")
            ++blanks;
        else
            EXPECT_EQ(static_cast<unsigned char>(text[0]), byte);
    }
    EXPECT_EQ(blanks, 35);
    std::string wanted = "\t\n\r.,- :;()[]{}\"'/\\=+`!~@#$%^&*<>?|";
    ReplaceDelimiters(wanted);
    EXPECT_EQ(wanted, std::string(35, ' '));
}

TEST(SearchText, MinOfAndMaxOfTakeAnyComparableKind) {
    EXPECT_EQ(MinOf(2, 3), 2);
    EXPECT_EQ(MinOf(3, 2), 2);
    EXPECT_EQ(MaxOf(2, 3), 3);
    EXPECT_EQ(MaxOf(3, 2), 3);
    EXPECT_EQ(MinOf(1.5, -1.5), -1.5);
    EXPECT_EQ(MaxOf(std::string("cod"), std::string("eel")), "eel");
}

}  // namespace
}  // namespace larder
