#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/NumberedFiles.h"
#include "store/DataPaths.h"

namespace larder {

// The words that are in no index and dropped from queries, each with a blank on both sides.
extern const std::string strStopWords;
// Whether the word, exactly as written, is one of them.
bool IsStopWord(const std::string& word);

// The word index of the stock recipes, read-only: "Search.ydb" holds two lines a word, the word
// and the numbers of its recipes, sorted by the bytes of the words; the length of "Search.ind"
// divided by 4 is the number of words, at most 32,767.
//
// Nothing of the index is kept in memory. A look-up reads the file from its top to the first word
// that is not below the one sought. The words of a query share one such walk, which on a slow disc
// is most of what a search costs.
class WordIndex {
  public:
    // Both outlive the index.
    WordIndex(NumberedFiles& files, const DataPaths& paths);

    // The number line of the word, empty when the index lacks it; the word is lower case
    // afterwards. Failures: those of opening and reading the files (numbers 33 and 34), 6 for too
    // many words, 62 when "Search.ydb" has fewer words than "Search.ind" says. After a failure
    // both numbers stay open, and the next look-up fails with 55.
    std::string LookUpWord(std::string& strWord);

    // What LookUpWord gives for one word after another, up to the first that fails: there may be
    // fewer lines than words, because every later one would fail too.
    std::vector<std::string> LookUpWords(const std::vector<std::string>& words);

  private:
    class Walk;
    std::int16_t OpenAndCount();
    void ReadAndClose(Walk& walk);

    NumberedFiles& files_;
    const DataPaths& paths_;
};

}  // namespace larder
