#pragma once

#include "Files.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

namespace lucentra {

/// A random translation model of a few thousand numbers, in the layout of published ones.
struct TinyModel
{
    static constexpr int width = 8;
    static constexpr int inner = 12;
    static constexpr int heads = 2;
    static constexpr int depth = 2; ///< of encoder and decoder
    static constexpr int words = 40;

    struct Parameter
    {
        int inputs = 1;  ///< rows, as the header says
        int outputs = 1; ///< columns
        bool isInt8 = false;
        bool isTransposed = false;   ///< in the file
        std::vector<float> numbers; ///< inputs times outputs, as the network has them
        float multiplier = 1;
    };
    QMap<QByteArray, Parameter> parameters;
    QByteArray settings;

    /// `endBias` makes the end of the sentence more likely, or less.
    explicit TinyModel(unsigned seed = 1, bool isShared = true, bool hasActivations = true, float endBias = 0.3F)
    {
        std::minstd_rand generator(seed); // the same numbers with every library
        const auto random = [&generator] { return float(generator() % 20001) / 10000.F - 1; };
        const auto add = [&](const QByteArray &name, int inputs, int outputs, bool isInt8) {
            Parameter parameter{.inputs = inputs, .outputs = outputs, .isInt8 = isInt8};
            parameter.isTransposed = isInt8 && !name.contains("Wemb");
            parameter.multiplier = isInt8 ? 127 : 1;
            for (int i = 0; i < inputs * outputs; ++i)
                parameter.numbers.push_back(isInt8 ? std::round(random() * 127) / 127 : random() / 4);
            if (name.endsWith("_scale")) {
                for (float &number : parameter.numbers)
                    number += 1;
            }
            parameters.insert(name, parameter);
            if (isInt8 && hasActivations && name != "encoder_Wemb")
                parameters.insert(name + "_QuantMultA", {.isInt8 = name.contains("Wemb"), .numbers = {127 / 3.F},
                                                         .multiplier = 127 / (127 / 3.F)});
        };
        const auto norm = [&](const QByteArray &name) {
            add(name + "_ln_scale", 1, width, false);
            add(name + "_ln_bias", 1, width, false);
        };
        const auto attention = [&](const QByteArray &name) {
            for (const char letter : {'q', 'k', 'v', 'o'}) {
                add(name + "_W" + letter, width, width, true);
                add(name + "_b" + letter, 1, width, false);
            }
            norm(name + "_Wo");
        };
        const auto feedForward = [&](const QByteArray &name) {
            add(name + "_W1", width, inner, true);
            add(name + "_b1", 1, inner, false);
            add(name + "_W2", inner, width, true);
            add(name + "_b2", 1, width, false);
            norm(name + "_ffn");
        };
        for (const char *name : {isShared ? "Wemb" : "encoder_Wemb", isShared ? "Wemb" : "decoder_Wemb"}) {
            if (!parameters.contains(name))
                add(name, words, width, true);
        }
        for (int i = 1; i <= depth; ++i) {
            const QByteArray number = QByteArray::number(i);
            attention("encoder_l" + number + "_self");
            feedForward("encoder_l" + number + "_ffn");
            const QByteArray cell = "decoder_l" + number + "_rnn";
            add(cell + "_W", width, width, true);
            add(cell + "_Wf", width, width, true);
            add(cell + "_bf", 1, width, false);
            norm(cell + "_ffn");
            attention("decoder_l" + number + "_context");
            feedForward("decoder_l" + number + "_ffn");
        }
        add("decoder_ff_logit_out_b", 1, words, false);
        parameters["decoder_ff_logit_out_b"].numbers[0] = endBias;
        settings = "type: transformer\ndec-cell: ssru\ntransformer-decoder-autoreg: rnn\ntransformer-preprocess: \"\"\n"
                   "transformer-postprocess: dan\ntransformer-ffn-activation: relu\ntransformer-tied-layers:\n  []\n"
                   "dim-vocabs:\n  - 40\n  - 40\ndim-emb: 8\ntransformer-heads: 2\nenc-depth: 2\ndec-depth: 2\n";
        settings += isShared ? "tied-embeddings-all: true" : "tied-embeddings-all: false";
    }

    /// The model's file.
    QByteArray bytes() const
    {
        struct Block
        {
            QByteArray name;
            quint64 type;
            QList<qint32> shape;
            QByteArray data;
        };
        QList<Block> blocks;
        for (auto it = parameters.cbegin(); it != parameters.cend(); ++it) {
            const Parameter &p = *it;
            QByteArray data;
            for (int i = 0; p.isInt8 && i < p.inputs * p.outputs; ++i) {
                const int from = p.isTransposed ? (i % p.inputs) * p.outputs + i / p.inputs : i;
                data += char(std::lround(p.numbers[std::size_t(from)] * p.multiplier));
            }
            if (p.isInt8)
                append(data, p.multiplier);
            for (std::size_t i = 0; !p.isInt8 && i < p.numbers.size(); ++i)
                append(data, p.numbers[i]);
            data += QByteArray((256 - data.size() % 256) % 256, '\xA5'); // what published files are padded with isn't zero
            blocks.append({it.key(), quint64(p.isInt8 ? 0x4101 : 0x0404), {p.inputs, p.outputs}, data});
        }
        blocks.append({"special:model.yml", 0x0101, {qint32(settings.size() + 1)}, settings + '\0'});
        QByteArray file;
        append(file, quint64(1));
        append(file, quint64(blocks.size()));
        for (const Block &block : blocks) {
            for (const quint64 field : {quint64(block.name.size() + 1), block.type, quint64(block.shape.size()),
                                        quint64(block.data.size())})
                append(file, field);
        }
        for (const Block &block : blocks)
            file += block.name + '\0';
        for (const Block &block : blocks) {
            for (const qint32 dimension : block.shape)
                append(file, dimension);
        }
        append(file, quint64(3));
        file += "gap";
        for (const Block &block : blocks)
            file += block.data;
        return file;
    }

    /// A shortlist with `perWord` words for each word of the source.
    static QByteArray shortlist(int perWord = 6, int first = 10)
    {
        QByteArray file;
        for (const quint64 number : {quint64(0xF11A48D5013417F5U), quint64(0), quint64(first), quint64(first),
                                     quint64(words + 1), quint64(words * perWord)})
            append(file, number);
        for (int word = 0; word <= words; ++word)
            append(file, quint64(word * perWord));
        for (int i = 0; i < words * perWord; ++i)
            append(file, quint32((i * 7 + i / perWord) % words));
        return withChecksum(file);
    }

    static QByteArray withChecksum(QByteArray shortlist)
    {
        quint64 sum = 0;
        for (qsizetype at = 16; at + 8 <= shortlist.size(); at += 8) {
            quint64 number = 0;
            std::memcpy(&number, shortlist.constData() + at, 8);
            sum ^= number + 0x9E3779B9U + (sum << 6U) + (sum >> 2U);
        }
        std::memcpy(shortlist.data() + 8, &sum, 8);
        return shortlist;
    }

    /// A map of characters that makes "A" an "a": a trie of 256 units, and the text that its value points to.
    static QByteArray characterMap()
    {
        std::vector<quint32> units(256);
        units[0] = 1U << 10U;                      // what follows is at 1 ^ the character
        units[1 ^ 'A'] = 'A' | 1U << 8U | 2U << 10U; // has a value, at its own place ^ 2
        units[1 ^ 'A' ^ 2] = 1U << 31U;            // the text at 0
        QByteArray map;
        append(map, quint32(units.size() * 4));
        for (const quint32 unit : units)
            append(map, unit);
        return map + QByteArray("a\0", 2);
    }

    /// A SentencePiece model: end, unknown, the space, letters and a few words.
    static QByteArray vocabulary(const QByteArray &map = characterMap())
    {
        QByteArray file;
        for (int i = 0; i < words; ++i) {
            const QByteArray piece = i == 0 ? "</s>" : i == 1 ? "<unk>" : i == 2 ? "\u2581" : i < 29 ? QByteArray(1, char('a' + i - 3)) : "\u2581w" + QByteArray::number(i);
            QByteArray message = '\x0A' + QByteArray(1, char(piece.size())) + piece + '\x15';
            append(message, -float(i));
            message += '\x18';
            message += char(i == 0 ? 3 : i == 1 ? 2 : 1); // control, unknown, normal
            file += '\x0A' + QByteArray(1, char(message.size())) + message;
        }
        // The trainer's settings: unigram, the numbers of unknown (40), begin (41, none), end (42) and padding (43, none).
        const QByteArray none = "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x01";
        const QByteArray trainer = QByteArray("\x18\x01\xC0\x02\x01\xC8\x02") + none + QByteArray("\xD0\x02\x00\xD8\x02", 5) + none;
        file += '\x12' + QByteArray(1, char(trainer.size())) + trainer;
        const auto field = [](char key, const QByteArray &bytes) {
            const auto size = bytes.size();
            return QByteArray(1, key) + char((size & 0x7F) | 0x80) + char(size >> 7) + bytes;
        };
        return file + field('\x1A', field('\x12', map));
    }

    void writeTo(const QString &folder) const
    {
        writeFile(folder + QStringLiteral("/model.xxyy.intgemm.alphas.bin"), bytes());
        writeFile(folder + QStringLiteral("/lex.50.50.xxyy.s2t.bin"), shortlist());
        writeFile(folder + QStringLiteral("/vocab.xxyy.spm"), vocabulary());
    }

    template <typename Number>
    static void append(QByteArray &bytes, Number number)
    {
        bytes.append(reinterpret_cast<const char *>(&number), sizeof number);
    }
};

} // namespace lucentra
