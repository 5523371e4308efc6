#include "tools/ClickSound.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace larder {
namespace {

constexpr std::size_t HeadBytes = 44;

std::uint32_t NumberAt(const std::string& bytes, std::size_t offset, int count) {
    std::uint32_t value = 0;
    for (int i = 0; i < count; ++i) {
        value |= std::uint32_t{static_cast<unsigned char>(bytes.at(offset + i))} << (8 * i);
    }
    return value;
}

int SampleAt(const std::string& bytes, std::size_t index) {
    return static_cast<std::int16_t>(NumberAt(bytes, HeadBytes + 2 * index, 2));
}

TEST(ClickSound, IsAWaveFileWhoseLengthsAgree) {
    const std::string wave = ClickSound();
    ASSERT_GT(wave.size(), HeadBytes);
    EXPECT_EQ(wave.substr(0, 4), "RIFF");
    EXPECT_EQ(wave.substr(8, 8), "WAVEfmt ");
    EXPECT_EQ(wave.substr(36, 4), "data");
    EXPECT_EQ(NumberAt(wave, 4, 4), wave.size() - 8);
    EXPECT_EQ(NumberAt(wave, 40, 4), wave.size() - HeadBytes);
}

TEST(ClickSound, HasOneChannelOf16BitsAt22050SamplesASecond) {
    const std::string wave = ClickSound();
    EXPECT_EQ(NumberAt(wave, 20, 2), 1U);  // plain samples
    EXPECT_EQ(NumberAt(wave, 22, 2), 1U);
    EXPECT_EQ(NumberAt(wave, 24, 4), 22050U);
    EXPECT_EQ(NumberAt(wave, 28, 4), 44100U);
    EXPECT_EQ(NumberAt(wave, 32, 2), 2U);
    EXPECT_EQ(NumberAt(wave, 34, 2), 16U);
}

TEST(ClickSound, Lasts40Milliseconds) {
    EXPECT_EQ((ClickSound().size() - HeadBytes) / 2, 22050U * 40 / 1000);
}

TEST(ClickSound, IsHeardAndDiesAway) {
    const std::string wave = ClickSound();
    const std::size_t samples = (wave.size() - HeadBytes) / 2;
    int loudest = 0;
    int atTheEnd = 0;
    for (std::size_t i = 0; i < samples; ++i) {
        const int loudness = std::abs(SampleAt(wave, i));
        loudest = std::max(loudest, loudness);
        if (i + 50 >= samples) atTheEnd = std::max(atTheEnd, loudness);
    }
    EXPECT_GT(loudest, 4000);
    EXPECT_LT(loudest, 20000);
    EXPECT_LT(atTheEnd, loudest / 50);
}

}  // namespace
}  // namespace larder
