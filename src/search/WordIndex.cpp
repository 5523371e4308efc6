#include "search/WordIndex.h"

#include "platform/Text.h"
#include "store/FileNumbers.h"

namespace larder {

const std::string strStopWords = " and  or  a  the  of  for ";

bool IsStopWord(const std::string& word) {
    return strStopWords.find(" " + word + " ") != std::string::npos;
}

WordIndex::WordIndex(NumberedFiles& files, const DataPaths& paths) : files_(files), paths_(paths) {}

std::int16_t WordIndex::OpenAndCount() {
    files_.Open(filenumber::SearchYDB, paths_.strSearchYDBFileName, FileMode::Input);
    files_.Open(filenumber::SearchIND, paths_.strSearchINDFileName, FileMode::Random, 4);
    return RoundToInteger(static_cast<double>(files_.Length(filenumber::SearchIND)) / 4);
}

std::string WordIndex::LookUpWord(std::string& strWord) {
    const std::int16_t words = OpenAndCount();
    strWord = LowerCase(strWord);
    std::string numbers;
    std::int16_t i = 0;
    bool reached = false;  // a word that is not below the one sought
    bool found = false;
    const auto take = [&](std::string_view line) {
        if (reached || i == words) {  // the numbers of that word, or of the last one
            if (found) numbers = line;
            return NumberedFiles::AfterLine::End;
        }
        ++i;
        reached = line >= strWord;
        found = line == strWord;
        return reached || i == words ? NumberedFiles::AfterLine::Next
                                     : NumberedFiles::AfterLine::SkipOne;
    };
    if (words > 0) files_.WalkLines(filenumber::SearchYDB, take);
    files_.Close(filenumber::SearchYDB);
    files_.Close(filenumber::SearchIND);
    return numbers;
}

}  // namespace larder
