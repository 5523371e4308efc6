#include "search/WordIndex.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "platform/Failure.h"
#include "platform/Text.h"
#include "store/FileNumbers.h"

namespace larder {

const std::string strStopWords = " and  or  a  the  of  for ";

bool IsStopWord(const std::string& word) {
    return strStopWords.find(" " + word + " ") != std::string::npos;
}

WordIndex::WordIndex(NumberedFiles& files, const DataPaths& paths) : files_(files), paths_(paths) {}

// A walk from the top of the words. One that is below the least word still sought is below all of
// them: there is one comparison a line, however many words are sought, and each ends where it
// would end alone.
class WordIndex::Walk {
  public:
    // `count` is that of the words in the file.
    Walk(const std::vector<std::string>& words, std::int16_t count)
        : sought_(words.size()), left_(count) {
        for (std::size_t i = 0; i < words.size(); ++i) {
            sought_[i].Word = LowerCase(words[i]);
            sorted_.push_back(&sought_[i]);
        }
        std::ranges::sort(sorted_, {}, &Sought::Word);
        next_ = done_ = sorted_.begin();
    }
    Walk(const Walk&) = delete;  // it points into itself
    Walk& operator=(const Walk&) = delete;

    bool AnyWords() const { return left_ > 0; }
    NumberedFiles::AfterLine Take(std::string_view line) {
        return numbersFollow_ ? TakeNumbers(line) : TakeWord(line);
    }
    // Whatever has not been reached is not in the file.
    void Complete() {
        for (; done_ != sorted_.end(); ++done_)
            (*done_)->Done = true;
    }
    // The number lines of the words as they were given, up to the first that the walk was too
    // short for.
    std::vector<std::string> TakeLines() {
        std::vector<std::string> lines;
        for (Sought& word : sought_) {
            if (!word.Done) break;
            lines.push_back(std::move(word.Numbers));
        }
        return lines;
    }

  private:
    struct Sought {
        std::string Word;
        std::string Numbers;
        bool Found = false;
        bool Done = false;
    };

    NumberedFiles::AfterLine TakeWord(std::string_view line) {
        --left_;
        for (; next_ != sorted_.end() && line >= (*next_)->Word; ++next_)
            (*next_)->Found = line == (*next_)->Word;
        numbersFollow_ = next_ != done_ || left_ == 0;
        return numbersFollow_ ? NumberedFiles::AfterLine::Next : NumberedFiles::AfterLine::SkipOne;
    }
    NumberedFiles::AfterLine TakeNumbers(std::string_view line) {
        for (; done_ != next_; ++done_) {
            if ((*done_)->Found) (*done_)->Numbers = line;
            (*done_)->Done = true;
        }
        numbersFollow_ = false;
        const bool end = next_ == sorted_.end() || left_ == 0;
        return end ? NumberedFiles::AfterLine::End : NumberedFiles::AfterLine::Next;
    }

    std::vector<Sought> sought_;
    std::vector<Sought*> sorted_;
    std::vector<Sought*>::iterator done_;  // the least word whose numbers are not read
    std::vector<Sought*>::iterator next_;  // the least word that no line has reached
    std::int16_t left_;                    // words of the file
    bool numbersFollow_ = false;
};

std::int16_t WordIndex::OpenAndCount() {
    files_.Open(filenumber::SearchYDB, paths_.strSearchYDBFileName, FileMode::Input);
    files_.Open(filenumber::SearchIND, paths_.strSearchINDFileName, FileMode::Random, 4);
    return RoundToInteger(static_cast<double>(files_.Length(filenumber::SearchIND)) / 4);
}

void WordIndex::ReadAndClose(Walk& walk) {
    if (walk.AnyWords()) {
        files_.WalkLines(filenumber::SearchYDB,
                         [&walk](std::string_view line) { return walk.Take(line); });
    }
    walk.Complete();
    files_.Close(filenumber::SearchYDB);
    files_.Close(filenumber::SearchIND);
}

std::string WordIndex::LookUpWord(std::string& strWord) {
    const std::int16_t count = OpenAndCount();
    strWord = LowerCase(strWord);
    Walk walk({strWord}, count);
    ReadAndClose(walk);
    return std::move(walk.TakeLines().front());
}

std::vector<std::string> WordIndex::LookUpWords(const std::vector<std::string>& words) {
    if (words.empty()) return {};
    std::vector<std::string> lines;
    Ignoring([&] {
        Walk walk(words, OpenAndCount());
        Ignoring([&] { ReadAndClose(walk); });
        lines = walk.TakeLines();
    });
    return lines;
}

}  // namespace larder
