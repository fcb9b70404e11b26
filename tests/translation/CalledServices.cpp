#include "CalledServices.h"

#include "TranslationError.h"

namespace lucentra {

using namespace Qt::StringLiterals;

namespace {

const QString failurePrefix = u"failure: "_s;

} // namespace

QString labelOf(Service service)
{
    return std::array{u"Google 免費翻譯"_s, u"Google Cloud"_s, u"DeepL"_s, u"Microsoft Translator"_s}[size_t(service)];
}

void CalledServices::begin()
{
    m_server.reset();
    m_server.respondWith({});
}

QStringList CalledServices::translate(Service service, const QStringList &texts, const QString &target,
                                      const QString &key) const
try {
    switch (service) {
    case Service::GoogleFree:
        return m_clients.googleFree({}, blocksOf(texts), target);
    case Service::GoogleCloud:
        return m_clients.googleCloud({}, blocksOf(texts), target, key);
    case Service::DeepL:
        return m_clients.deepL({}, blocksOf(texts), key, target);
    case Service::Microsoft:
        break;
    }
    return m_clients.microsoft({}, blocksOf(texts), key, u""_s, target);
} catch (...) {
    return {failurePrefix + failureOfCurrentException(m_texts.manager).description};
}

QString CalledServices::failureOf(Service service, const QStringList &texts, const QString &target,
                                  const QString &key) const
{
    const QString outcome = translate(service, texts, target, key).join(u'|');
    return outcome.startsWith(failurePrefix) ? outcome.sliced(failurePrefix.size()) : u"no failure: "_s + outcome;
}

} // namespace lucentra
