#pragma once

class QTextDocument;

namespace larder {

// From now on a picture that is wider than the room between the margins of its paragraph is shown
// scaled into it; the text keeps its size. For the Qt side of the platform layer only.
void FitPicturesInto(QTextDocument& document);

}  // namespace larder
