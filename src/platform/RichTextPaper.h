#pragma once

class QTextCharFormat;

// For the Qt side of the platform layer only.
namespace larder {

// The format of a word of a web page for our paper. Such pages name the ground of every word,
// though it is clear or white, and were perhaps written for a dark one: a ground that is no mark
// goes, and so does the colour of text that would not be seen without it.
QTextCharFormat OnPaper(const QTextCharFormat& native);

}  // namespace larder
