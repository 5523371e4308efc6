#include "LargeFolder.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>

namespace larder::bench {

namespace {

namespace fs = std::filesystem;

constexpr std::array<const char*, 24> Words = {
    "salmon",  "butter", "lemon",  "fillet", "simmer", "onion",   "parsley", "stock",
    "skillet", "garlic", "cream",  "shrimp", "pepper", "minutes", "gently",  "warm",
    "dill",    "wine",   "tomato", "serve",  "thick",  "golden",  "baste",   "shell"};

class Writer {
  public:
    Writer(const fs::path& text, const fs::path& index)
        : text_(text, std::ios::binary), index_(index, std::ios::binary) {}

    void Add(const std::string& title, const std::string& body) {
        const auto position = static_cast<std::uint32_t>(length_ + 1);
        for (int i = 0; i < 4; ++i)
            index_.put(static_cast<char>((position >> (8 * i)) & 0xFF));
        const std::string record = title + "\r\n" + body + "\r\n";
        text_ << record;
        length_ += record.size();
    }

    void Close() {
        text_.close();
        index_.close();
        if (!text_ || !index_) throw std::runtime_error("the large folder cannot be written");
    }

  private:
    std::ofstream text_;
    std::ofstream index_;
    std::size_t length_ = 0;
};

std::string Sentence(std::mt19937& random, int words) {
    std::string text;
    for (int i = 0; i < words; ++i) {
        if (i > 0) text += ' ';
        text += Words[random() % Words.size()];
    }
    return text;
}

std::string Body(std::mt19937& random, const std::string& title, int bytes) {
    std::string rtf =
        "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl{\\f0\\froman\\fcharset0 Times "
        "New Roman;}}{\\colortbl ;\\red40\\green75\\blue113;}\r\n\\viewkind4\\uc1\\pard\\b\\fs30 " +
        title + "\\b0\\fs24\\par\r\n";
    while (static_cast<int>(rtf.size()) < bytes) {
        rtf += "\\pard\\li300 " + Sentence(random, 12) + " \\i " + Sentence(random, 2) + "\\i0  " +
               Sentence(random, 6) + ".\\par\r\n";
    }
    return rtf + "}";
}

void WriteRecipes(const fs::path& data, const std::string& name, int count, int first,
                  const Size& size) {
    Writer writer(data / (name + ".ydb"), data / (name + " Index.ind"));
    std::mt19937 random(20260101);
    for (int i = 0; i < count; ++i) {
        const std::string title = "Recipe " + std::to_string(first + i) + " " + Sentence(random, 3);
        writer.Add(title, Body(random, title, size.BodyBytes));
    }
    writer.Close();
}

std::string Numbers(int count) {
    std::string text = " ";
    for (int i = 1; i <= count; ++i)
        text += std::to_string(i) + " ";
    return text;
}

void WriteCategories(const fs::path& data, const Size& size) {
    std::ofstream out(data / "Categories.ctg", std::ios::binary);
    const auto entry = [&](const std::string& name, const std::string& numbers) {
        out << name << "\r\n" << numbers << "\r\n";
    };
    out << ' ' << size.Stock << " \r\n";
    entry("MY FAVORITES", " ");
    entry("BUYING AND PREPARATION TIPS", "");
    entry("VIDEO", "");
    entry("KNOTS", "");
    entry("ALL RECIPES WITH PICTURES", " 1 ");
    entry("ALL RECIPES", "*");
    entry("HUNDREDS", Numbers(std::min(200, size.Stock)));
    entry("THOUSANDS", Numbers(std::min(2000, size.Stock)));
}

}  // namespace

void WriteLargeFolder(const fs::path& folder, const Size& size) {
    const fs::path data = folder / "Data";
    fs::create_directories(data);
    WriteRecipes(data, "Recipes", size.Stock, 1, size);
    if (size.Own > 0) WriteRecipes(data, "Custom Recipes", size.Own, size.Stock + 1, size);
    WriteCategories(data, size);
    Writer(data / "CategyD.ydb", data / "CategyD Index.ind").Close();
}

}  // namespace larder::bench
