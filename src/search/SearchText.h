#pragma once

#include <string>
#include <string_view>

// Small text routines of the word search, used by the lists and the viewer too.
namespace larder {

// The characters that separate words: punctuation, brackets, quotation marks, signs, blank, tab
// and line ends. The underscore, digits and letters, accented ones too, belong to words.
extern const std::string_view delimiters;

// Every delimiter becomes a blank; the length stays.
void ReplaceDelimiters(std::string& strText);

template <typename Value>
Value MinOf(const Value& a, const Value& b) {
    return a > b ? b : a;
}

template <typename Value>
Value MaxOf(const Value& a, const Value& b) {
    return a < b ? b : a;
}

}  // namespace larder
