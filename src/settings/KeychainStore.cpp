#include "KeychainStore.h"

#include "SecretStorage.h"
#include "Text.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

QString reasonOf(const Failure &failure)
{
    return failure.description.isEmpty() ? u"OSStatus "_s + QString::number(failure.code) : failure.description;
}

} // namespace

QString KeychainStore::apiKeyService()
{
    return u"com.tarnby.lucentra.apiKeys"_s;
}

KeychainStore::KeychainStore(SecretStorage &storage, QString service, DiagnosticLine diagnostics)
    : m_storage(storage)
    , m_service(std::move(service))
    , m_diagnostics(std::move(diagnostics))
{
}

std::optional<QString> KeychainStore::readString(const QString &account) const
{
    return read(account).value_or(std::nullopt);
}

Result<std::optional<QString>> KeychainStore::read(const QString &account) const
{
    const auto secret = m_storage.lookup(m_service, account);
    if (!secret) {
        report(u"讀取"_s, account, reasonOf(secret.error()));
        return tl::unexpected(secret.error());
    }
    if (!*secret)
        return std::nullopt;
    auto value = decode(**secret, account);
    if (!value)
        return tl::unexpected(Failure{.domain = u"Keychain"_s, .code = int(SecretStorageProblem::NoSecret)});
    return value;
}

Result<QHash<QString, QString>> KeychainStore::readAll() const
{
    const auto secrets = m_storage.lookupAll(m_service);
    if (!secrets) {
        report(u"讀取"_s, m_service, reasonOf(secrets.error()));
        return tl::unexpected(secrets.error());
    }
    QHash<QString, QString> values;
    for (auto secret = secrets->begin(); secret != secrets->end(); ++secret) {
        if (const auto value = decode(secret.value(), secret.key()))
            values.insert(secret.key(), *value);
    }
    return values;
}

bool KeychainStore::saveString(const QString &value, const QString &account) const
{
    return save(value, account).has_value();
}

Result<void> KeychainStore::save(const QString &value, const QString &account) const
{
    if (value.isEmpty())
        return remove(account);
    const auto existing = m_storage.lookup(m_service, account);
    if (!existing) {
        report(u"更新"_s, account, reasonOf(existing.error()));
        return tl::unexpected(existing.error());
    }
    auto stored = m_storage.store(m_service, account, value.toUtf8());
    if (!stored)
        report(*existing ? u"更新"_s : u"新增"_s, account, reasonOf(stored.error()));
    return stored;
}

bool KeychainStore::deleteItem(const QString &account) const
{
    return remove(account).has_value();
}

Result<void> KeychainStore::remove(const QString &account) const
{
    auto removed = m_storage.remove(m_service, account);
    if (!removed)
        report(u"刪除"_s, account, reasonOf(removed.error()));
    return removed;
}

void KeychainStore::report(const QString &operation, const QString &account, const QString &reason) const
{
    m_diagnostics(u"Keychain "_s + operation + u"失敗 ["_s + account + u"]: "_s + reason);
}

std::optional<QString> KeychainStore::decode(const QByteArray &secret, const QString &account) const
{
    auto text = decodeUtf8(secret);
    if (!text)
        report(u"讀取"_s, account, u"the value is not UTF-8 text"_s);
    return text;
}

} // namespace lucentra
