#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace larder {

// A stock recipe or a description as the maintainers write it: a text file in UTF-8. The number at
// the front of the file's name ("012-salmon-with-dill.txt") is the recipe's number.
//
//   title: Salmon with Dill
//   categories: Salmon, Baked
//   serves: 4
//   time: 35 minutes
//   (empty line)
//   paragraphs, a line each; "Ingredients" and "Method" are headings, "- " begins an ingredient,
//   "1. " a step, "Note: " a tip; *asterisks* stand around words in italics
struct SourceText {
    int Number = 0;
    std::filesystem::path File;
    std::string Title;  // this and the rest in UTF-8
    std::vector<std::string> Categories;
    std::string Serves;
    std::string Time;
    std::vector<std::string> Lines;  // behind the head; empty ones left out
};

// A mistake in a source file; what() names the file and the line.
class SourceError : public std::exception {
  public:
    SourceError(const std::filesystem::path& file, const std::string& mistake)
        : text_(file.string() + ": " + mistake) {}
    const char* what() const noexcept override { return text_.c_str(); }

  private:
    std::string text_;
};

// All sources of a folder, in the order of their numbers, which run from 1 without gaps. Throws
// SourceError for a gap, a missing title, an unknown head line, a character outside Windows-1252,
// or one of `forbidden` (the markers of the composed document).
std::vector<SourceText> ReadSources(const std::filesystem::path& folder,
                                    const std::string& forbidden);

}  // namespace larder
