#include "ScreenShares.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// A monitor's place and size as a key: "x,y,width,height".
QString keyOf(const QRect &frame)
{
    return u"%1,%2,%3,%4"_s.arg(frame.x()).arg(frame.y()).arg(frame.width()).arg(frame.height());
}

QRect frameOf(const QString &key)
{
    const QStringList numbers = key.split(u',');
    if (numbers.size() != 4)
        return {};
    return monitorFrame(numbers[0].toInt(), numbers[1].toInt(), numbers[2].toInt(), numbers[3].toInt());
}

/// In characters. Desktops use 36 of them.
constexpr int longestToken = 4096;

} // namespace

QRect monitorFrame(int x, int y, int width, int height)
{
    constexpr int farthest = 1 << 20;
    constexpr int largest = 1 << 15;
    const auto isNear = [](int number) { return number >= -farthest && number <= farthest; };
    const auto isSide = [](int number) { return number > 0 && number <= largest; };
    return isNear(x) && isNear(y) && isSide(width) && isSide(height) ? QRect(x, y, width, height) : QRect();
}

bool isSameMonitor(const SharedMonitor &shared, const QRect &native)
{
    const QRect &frame = shared.frame;
    if (frame.isEmpty() || frame == native)
        return true;
    const double scale = double(native.width()) / frame.width();
    constexpr double rounding = 2; // pixels
    return std::abs(frame.height() * scale - native.height()) <= rounding &&
           std::abs(frame.x() * scale - native.x()) <= rounding && std::abs(frame.y() * scale - native.y()) <= rounding;
}

ScreenShares::ScreenShares(ScreenShareStore store)
    : m_store(std::move(store))
{
}

QHash<QString, QString> ScreenShares::read() const
{
    QHash<QString, QString> tokens;
    const QJsonObject stored = QJsonDocument::fromJson(m_store.read().toUtf8()).object();
    for (auto entry = stored.begin(); entry != stored.end(); ++entry) {
        if (const QString token = entry->toString(); !token.isEmpty())
            tokens.insert(entry.key(), token);
    }
    return tokens;
}

QString ScreenShares::tokenFor(const QRect &native, const QList<QRect> &others) const
{
    const QHash<QString, QString> tokens = read();
    const auto find = [&](auto isWanted) {
        const auto found = std::find_if(tokens.keyBegin(), tokens.keyEnd(),
                                        [&](const QString &key) { return isWanted(frameOf(key)); });
        return found == tokens.keyEnd() ? QString() : *found.base();
    };
    const auto isAt = [](const QRect &frame) {
        return [frame](const QRect &shared) { return isSameMonitor({.frame = shared}, frame); };
    };
    const auto isOther = [&](const QRect &shared) {
        return std::any_of(others.begin(), others.end(), [&](const QRect &other) { return isAt(other)(shared); });
    };
    const auto hasMovedHere = [&](const QRect &shared) {
        return !isOther(shared) && isAt({QPoint(), native.size()})({QPoint(), shared.size()});
    };
    QString token = find(isAt(native));
    if (token.isEmpty())
        token = find(hasMovedHere);
    if (token.isEmpty() && others.isEmpty())
        token = tokens.values().value(0);
    return token;
}

void ScreenShares::replace(const QString &used, const QString &next, const QList<SharedMonitor> &monitors)
{
    QHash<QString, QString> tokens = read();
    tokens.removeIf([&](const auto &entry) { return *entry == used; });
    for (const SharedMonitor &monitor : monitors) {
        if (!next.isEmpty() && next.size() <= longestToken)
            tokens.insert(keyOf(monitor.frame), next);
    }
    QJsonObject stored;
    for (auto entry = tokens.begin(); entry != tokens.end(); ++entry)
        stored.insert(entry.key(), *entry);
    m_store.write(QString::fromUtf8(QJsonDocument(stored).toJson(QJsonDocument::Compact)));
}

} // namespace lucentra
