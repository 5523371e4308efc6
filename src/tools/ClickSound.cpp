#include "tools/ClickSound.h"

#include <cmath>
#include <cstdint>
#include <numbers>

namespace larder {

namespace {

constexpr std::uint32_t SampleRate = 22050;
constexpr std::uint32_t Samples = SampleRate * 40 / 1000;

void Put(std::string& bytes, std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i)
        bytes += static_cast<char>((value >> (8 * i)) & 0xFF);
}

// Two damped tones: the body of the knock and its bright attack.
double Knock(double seconds) {
    const double body = std::sin(2 * std::numbers::pi * 620 * seconds) * std::exp(-seconds * 140);
    const double attack =
        std::sin(2 * std::numbers::pi * 2300 * seconds) * std::exp(-seconds * 420);
    return 0.5 * body + 0.3 * attack;
}

}  // namespace

std::string ClickSound() {
    constexpr std::uint32_t dataBytes = Samples * 2;
    std::string wave = "RIFF";
    Put(wave, 36 + dataBytes, 4);
    wave += "WAVEfmt ";
    Put(wave, 16, 4);  // length of the format
    Put(wave, 1, 2);   // plain samples
    Put(wave, 1, 2);   // channels
    Put(wave, SampleRate, 4);
    Put(wave, SampleRate * 2, 4);  // bytes a second
    Put(wave, 2, 2);               // bytes a sample
    Put(wave, 16, 2);              // bits a sample
    wave += "data";
    Put(wave, dataBytes, 4);
    for (std::uint32_t i = 0; i < Samples; ++i) {
        const double value = Knock(static_cast<double>(i) / SampleRate);
        Put(wave, static_cast<std::uint16_t>(static_cast<std::int16_t>(std::lround(value * 20000))),
            2);
    }
    return wave;
}

}  // namespace larder
