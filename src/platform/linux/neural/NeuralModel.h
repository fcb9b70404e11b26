#pragma once

#include "NetworkFile.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace lucentra {

/// A translation model of one direction, with its vocabularies. Any thread, concurrently.
class NeuralModel
{
public:
    /// Opens the model in a folder with the files as they are published: model.*.bin, lex.*.bin (may be missing), and
    /// either vocab.*.spm or srcvocab.*.spm with trgvocab.*.spm. The files are mapped, not read.
    static tl::expected<std::shared_ptr<const NeuralModel>, NeuralModelError> open(const QString &folder);
    virtual ~NeuralModel() = default;

    struct Options
    {
        double lengthFactor = 2; ///< longest translation per word of the source
        int leastLength = 0;     ///< in words, whatever the factor says
        int threads = 0;         ///< 0: one per processor
        std::function<bool()> isWanted; ///< asked on several threads; null means always
    };
    struct Translation
    {
        QString text;
        bool isComplete = false; ///< false if it became too long and was cut, or isn't wanted any more
    };
    /// Translates sentences, in the order given. An empty one has an empty translation.
    virtual QList<Translation> translate(const QStringList &sentences, const Options &options) const = 0;
};

} // namespace lucentra
