#pragma once

#include <QByteArrayView>

#include <memory>

namespace sentencepiece {
class SentencePieceProcessor;
} // namespace sentencepiece

namespace lucentra {

/// Loads a SentencePiece vocabulary. Returns null if the bytes aren't one that ends sentences, or if a table in it leads
/// out of the bytes: the library doesn't check that.
std::unique_ptr<sentencepiece::SentencePieceProcessor> loadVocabulary(QByteArrayView bytes);

} // namespace lucentra
