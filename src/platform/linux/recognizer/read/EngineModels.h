#pragma once

#include "read/LineReader.h"

namespace lucentra {

/// An engine of Tesseract.
struct LoadedEngine
{
    std::unique_ptr<tesseract::TessBaseAPI> api; ///< null where the model isn't installed or is broken
    bool hasOwnNet = false;                      ///< reads with a net of this program, which takes a strip as it is
};

/// Loads the engine for a language, with its word lists if `usesLanguageCorrection`. Takes some ten milliseconds. Any
/// thread.
LoadedEngine makeEngine(ReadingLanguage language, bool usesLanguageCorrection);

} // namespace lucentra
