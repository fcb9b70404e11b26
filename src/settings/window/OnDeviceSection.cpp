#include "OnDeviceSection.h"

#include "Language.h"
#include "LocalizationManager.h"
#include "MainQueue.h"
#include "SettingsForm.h"

#include <QLabel>
#include <QMap>
#include <QPointer>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr std::chrono::seconds lookInterval{3};

/// One line per source language: "English → 日本語, 한국어".
QStringList pairLines(const QList<LanguagePair> &pairs)
{
    QMap<QString, QStringList> targets;
    for (const LanguagePair &pair : pairs)
        targets[pair.source].append(ownLanguageName(pair.target));
    QStringList lines;
    for (auto it = targets.cbegin(); it != targets.cend(); ++it)
        lines.append(ownLanguageName(it.key()) + u" → "_s + it.value().join(u", "_s));
    return lines;
}

QString statusText(const QList<OnDeviceServiceStatus> &services, const LocalizationManager &texts)
{
    QList<LanguagePair> pairs;
    qint64 phrases = 0;
    QStringList packages;
    QString traditionalChineseBy;
    bool isStripped = false;
    bool isGettingReady = false;
    for (const OnDeviceServiceStatus &service : services) {
        for (const LanguagePair &pair : service.pairs) {
            if (!pairs.contains(pair))
                pairs.append(pair);
        }
        phrases += service.phraseCount;
        packages += service.addableBy;
        traditionalChineseBy += service.traditionalChineseBy;
        isStripped = isStripped || service.isStripped;
        isGettingReady = isGettingReady || service.isGettingReady;
    }
    QStringList lines;
    if (pairs.isEmpty() && isGettingReady)
        lines.append(texts.localized(u"正在收集這部電腦上的譯文，請稍後再試。"_s));
    else if (pairs.isEmpty())
        lines.append(texts.localized(u"沒有可用的語言"_s));
    else
        lines << texts.localized(u"這部電腦可以翻譯："_s) << pairLines(pairs);
    if (!traditionalChineseBy.isEmpty())
        lines.append(texts.formatted(u"繁體中文由 %@ 與簡體中文互相轉換。"_s, traditionalChineseBy));
    if (phrases > 0)
        lines.append(texts.formatted(u"%d 個詞句"_s, phrases));
    if (!packages.isEmpty())
        lines.append(texts.formatted(u"安裝這些套件也有幫助：%@"_s, packages.join(u' ')));
    if (isStripped)
        lines.append(texts.localized(u"這個系統的 dpkg 設定不會安裝譯文（path-exclude），請先更改設定。"_s));
    return lines.join(u'\n');
}

} // namespace

OnDeviceSection::OnDeviceSection(SettingsForm &form)
    : FormSection(form, u"Apple 內建翻譯"_s)
    , m_status(makeSmallPrint())
{
    m_worker.setMaxThreadCount(1);
    addParagraph([&form] { return form.text(u"您目前選用 Apple 內建引擎，支援無限量免費離線翻譯。"_s); });
    addWidget(m_status);
    form.keepText([this] { showStatus(); });
}

void OnDeviceSection::refresh()
{
    const SettingsServices &services = form().services();
    m_worker.start(
        [this, self = QPointer<QObject>(this), &mainQueue = services.mainQueue, status = services.onDeviceStatus] {
            mainQueue.post(self, [this, found = status()] { take(found); });
        });
}

void OnDeviceSection::take(const QList<OnDeviceServiceStatus> &services)
{
    m_services = services;
    m_isKnown = true;
    showStatus();
    m_nextLook.reset();
    const bool isEmpty = std::all_of(services.begin(), services.end(),
                                     [](const OnDeviceServiceStatus &service) { return service.pairs.isEmpty(); });
    if (isEmpty && !isHidden()) // the phrases may still be collected
        m_nextLook = form().services().scheduler.after(lookInterval, [this] { refresh(); });
}

void OnDeviceSection::showStatus()
{
    m_status->parentWidget()->setVisible(m_isKnown);
    if (m_isKnown)
        m_status->setText(statusText(m_services, form().services().texts));
}

} // namespace lucentra
