#pragma once

#include "read/LineReader.h"

#include <QByteArray>
#include <QtEndian>

#include <cstring>
#include <stdexcept>

namespace lucentra {

/// What is read of a file of Tesseract's.
struct ModelFile
{
    QByteArray net;
    QByteArray characters; ///< a count, then a line for each, which begins with the character
    QByteArray codes;      ///< of each character, in their order
    QByteArray words;
    bool isOwn = false; ///< the net is this program's version of it, trained on letters of screens
};

QString modelPath(ReadingLanguage language);

/// The parts of a language's model. Throws std::runtime_error where it can't be read or is no such file. Any thread.
ModelFile modelFile(ReadingLanguage language);

/// Takes numbers and bytes off the start of data. Numbers are little-endian. Throws std::runtime_error where there is
/// less.
class DataReader
{
public:
    explicit DataReader(QByteArrayView data)
        : m_data(data)
    {
    }

    QByteArrayView bytes(qsizetype count)
    {
        if (count < 0 || count > m_data.size())
            throw std::runtime_error("data ends too early");
        const QByteArrayView taken = m_data.first(count);
        m_data = m_data.sliced(count);
        return taken;
    }
    template <typename Number>
    Number take()
    {
        Number number;
        std::memcpy(&number, bytes(sizeof number).data(), sizeof number);
        return qFromLittleEndian(number);
    }

private:
    QByteArrayView m_data;
};

} // namespace lucentra
