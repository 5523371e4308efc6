#include "search/SearchText.h"

namespace larder {

const std::string_view delimiters = "\t\n\r.,- :;()[]{}\"'/\\=+`!~@#$%^&*<>?|";

void ReplaceDelimiters(std::string& strText) {
    for (char& c : strText) {
        if (delimiters.find(c) != std::string_view::npos) c = ' ';
    }
}

}  // namespace larder
