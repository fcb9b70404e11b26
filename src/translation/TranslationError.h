#pragma once

#include "Result.h"

#include <QString>

#include <exception>

namespace lucentra {

class LocalizationManager;

/// What the clients of the translation services throw. Thrown and caught on the same worker; the manager turns it into
/// a `Failure` by `failureOfCurrentException`. None of them holds a key, a URL or captured text.
class TranslationError : public std::exception
{
public:
    /// The error as a value, its sentence in the interface language.
    virtual Failure failure(const LocalizationManager &texts) const = 0;
    /// For a debugger only; users see the failure's description.
    const char *what() const noexcept override { return "translation failed"; }
};

/// The error that all remote services have in common. Its failures have the domain "TranslationProviderError" and as
/// code the HTTP status, or 0 where no request failed.
class TranslationProviderError : public TranslationError
{
public:
    enum class Kind { invalidConfiguration, requestFailed, invalidResponse };

    /// The request can't be made from the settings. The message is a key of the string tables.
    static TranslationProviderError invalidConfiguration(const QString &message);
    /// The service refused: its HTTP status, and its reason as `providerErrorMessage` reads it.
    static TranslationProviderError requestFailed(const QString &provider, int status, const QString &message);
    /// The service's answer doesn't have the form that it should have.
    static TranslationProviderError invalidResponse(const QString &provider);

    Kind kind() const { return m_kind; }
    Failure failure(const LocalizationManager &texts) const override;

private:
    TranslationProviderError(Kind kind, QString provider, int status, QString message);

    Kind m_kind;
    QString m_provider;
    int m_status;
    QString m_message;
};

/// An error with a domain and a code of its own; the description is a key of the string tables.
class ProviderFailure : public TranslationError
{
public:
    ProviderFailure(QString domain, int code, QString descriptionKey);

    Failure failure(const LocalizationManager &texts) const override;

private:
    QString m_domain;
    int m_code;
    QString m_descriptionKey;
};

/// The failure of the exception that is being handled; to be called in a catch block only. An exception that is none
/// of ours gets the sentence for the unknown.
Failure failureOfCurrentException(const LocalizationManager &texts);

} // namespace lucentra
