#include "tools/RecipeSource.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <sstream>

#include "platform/Text.h"

namespace larder {

namespace {

std::string Trimmed(const std::string& text) {
    return std::string(TrimBlanks(text));
}

std::vector<std::string> SplitAtCommas(const std::string& text) {
    std::vector<std::string> parts;
    std::istringstream in(text);
    for (std::string part; std::getline(in, part, ',');) {
        if (!Trimmed(part).empty()) parts.push_back(Trimmed(part));
    }
    return parts;
}

std::string ReadWhole(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) throw SourceError(file, "cannot be read");
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void CheckCharacters(const std::filesystem::path& file, const std::string& utf8,
                     const std::string& forbidden) {
    // What the code page lacks becomes a '?', so the way back gives another text.
    if (ToUtf8(FromUtf8(utf8)) != utf8) {
        throw SourceError(file, "holds a character that Windows-1252 lacks, or is not UTF-8");
    }
    if (utf8.find_first_of(forbidden) != std::string::npos) {
        throw SourceError(file, "holds one of the marker characters " + forbidden);
    }
}

// Takes one line of the head ("serves: 4").
void TakeHeadLine(SourceText& source, const std::string& line) {
    const std::size_t colon = line.find(':');
    const std::string name = line.substr(0, colon);
    const std::string value = colon == std::string::npos ? "" : Trimmed(line.substr(colon + 1));
    if (value.empty()) throw SourceError(source.File, "head line without a value: " + line);
    if (name == "title") {
        source.Title = value;
    } else if (name == "categories") {
        source.Categories = SplitAtCommas(value);
    } else if (name == "serves") {
        source.Serves = value;
    } else if (name == "time") {
        source.Time = value;
    } else {
        throw SourceError(source.File, "unknown head line: " + line);
    }
}

int NumberOf(const std::filesystem::path& file) {
    const std::string name = file.filename().string();
    int number = 0;
    std::from_chars(name.data(), name.data() + name.size(), number);
    return number;
}

SourceText ReadSource(const std::filesystem::path& file, const std::string& forbidden) {
    SourceText source;
    source.File = file;
    source.Number = NumberOf(file);
    const std::string text = ReadWhole(file);
    CheckCharacters(file, text, forbidden);
    std::istringstream in(text);
    bool head = true;
    bool begun = false;
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (Trimmed(line).empty()) {
            head = head && !begun;
        } else if (head) {
            begun = true;
            TakeHeadLine(source, line);
        } else {
            source.Lines.push_back(Trimmed(line));
        }
    }
    if (source.Title.empty()) throw SourceError(file, "has no title");
    if (source.Lines.empty()) throw SourceError(file, "has no text");
    return source;
}

}  // namespace

std::vector<SourceText> ReadSources(const std::filesystem::path& folder,
                                    const std::string& forbidden) {
    if (!std::filesystem::is_directory(folder)) throw SourceError(folder, "is not a folder");
    std::vector<SourceText> sources;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".txt") continue;
        sources.push_back(ReadSource(entry.path(), forbidden));
    }
    std::ranges::sort(sources, {}, &SourceText::Number);
    for (std::size_t i = 0; i < sources.size(); ++i) {
        if (sources[i].Number != static_cast<int>(i) + 1) {
            throw SourceError(sources[i].File,
                              "the numbers of the files have a gap or a double before this one");
        }
    }
    return sources;
}

}  // namespace larder
