#pragma once

#include "read/LineReader.h"

namespace lucentra {

/// An engine of Tesseract for a language, with its word lists if `usesLanguageCorrection`. Null where its model isn't
/// installed or is broken. Takes some ten milliseconds. Any thread.
std::unique_ptr<tesseract::TessBaseAPI> makeEngine(ReadingLanguage language, bool usesLanguageCorrection);

/// Whether English is read with this program's net, which takes a strip as it is. False if another model is installed.
bool hasOwnEnglishNet();

} // namespace lucentra
