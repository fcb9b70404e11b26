#pragma once

#include <QByteArrayView>
#include <QString>

#include <functional>

namespace lucentra {

/// A longer message is a page of help, not a phrase of an interface.
inline constexpr qsizetype longestMessage = 2000;

/// Called for each message of a catalogue: its source text, as bytes that should be UTF-8, and its translation, both
/// unchanged, with mnemonics and placeholders. Of a message with plural forms, each form that has a source
/// text of its own is a message.
using MessageVisitor = std::function<void(QByteArrayView source, const QString &translation)>;

// Both are safe for arbitrary bytes: what points outside, overlaps or isn't valid text is left out, and the
// work is limited by the number of bytes. They return false if the bytes aren't a catalogue of this kind.

/// GNU gettext's `.mo`, of either byte order, in UTF-8. Contexts are left out.
bool readMoCatalogue(QByteArrayView bytes, const MessageVisitor &visit);

/// Qt's `.qm`, if it contains the source texts.
bool readQmCatalogue(QByteArrayView bytes, const MessageVisitor &visit);

} // namespace lucentra
