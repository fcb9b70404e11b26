#pragma once

#include "read/LineReader.h"

namespace lucentra {

/// An engine of Tesseract for a language, with its word lists if `usesLanguageCorrection`. Null where its model isn't
/// installed or is broken. Takes some ten milliseconds. Any thread.
std::unique_ptr<tesseract::TessBaseAPI> makeEngine(ReadingLanguage language, bool usesLanguageCorrection);

} // namespace lucentra
