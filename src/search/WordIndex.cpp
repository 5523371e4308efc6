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
    std::string word;
    std::string numbers;
    for (std::int16_t i = 0; i < words; ++i) {
        files_.ReadLineInto(filenumber::SearchYDB, word);
        if (word >= strWord) {
            numbers = files_.ReadLine(filenumber::SearchYDB);
            break;
        }
        files_.SkipLine(filenumber::SearchYDB);
    }
    files_.Close(filenumber::SearchYDB);
    files_.Close(filenumber::SearchIND);
    return words > 0 && word == strWord ? numbers : std::string();
}

}  // namespace larder
