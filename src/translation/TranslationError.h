#pragma once

#include "Result.h"

#include <QString>

#include <exception>

namespace lucentra {

class LocalizationManager;

/// The exceptions of the translation clients. Thrown and caught on the same worker; the manager converts them to a
/// `Failure` by `failureOfCurrentException`. They never contain a key, a URL or captured text.
class TranslationError : public std::exception
{
public:
    /// The error as a value, with a sentence in the interface language.
    virtual Failure failure(const LocalizationManager &texts) const = 0;
    /// For debugging only.
    const char *what() const noexcept override { return "translation failed"; }
};

/// The common error of the remote services. The failure's domain is "TranslationProviderError", its code the HTTP
/// status, or 0 if no request failed.
class TranslationProviderError : public TranslationError
{
public:
    enum class Kind { invalidConfiguration, requestFailed, invalidResponse };

    /// The settings don't allow a request. The message is a text key.
    static TranslationProviderError invalidConfiguration(const QString &message);
    /// The service refused with this HTTP status; see `providerErrorMessage` for the message.
    static TranslationProviderError requestFailed(const QString &provider, int status, const QString &message);
    /// The service's answer has an unexpected form.
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

/// An error with its own domain and code. The description is a text key.
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

/// A failed translation of typed text with its own answer, in place of the general one.
class TypedTextError : public TranslationError
{
public:
    /// The answer is in the interface language and begins with "❌ ".
    explicit TypedTextError(QString answer);

    Failure failure(const LocalizationManager &texts) const override;

private:
    QString m_answer;
};

/// Why a request has no answer. The failure's domain is "HttpSession", its code the kind.
class TransportError : public TranslationError
{
public:
    enum class Kind {
        timedOut = 1,
        hostUnknown,
        cannotConnect,
        connectionLost,
        certificate, ///< the server's certificate isn't valid
        secureConnection,
        proxy,
        notHttp,
        answerTooLarge,
        invalidRequest, ///< the request can't be sent: a line break in a header, a malformed URL
        cancelled,
        other,
    };

    explicit TransportError(Kind kind)
        : m_kind(kind)
    {
    }

    Kind kind() const { return m_kind; }
    Failure failure(const LocalizationManager &texts) const override;

private:
    Kind m_kind;
};

/// Converts the exception that is being handled to a failure; to be called in a catch block only. Other exceptions get
/// the sentence for unknown errors.
Failure failureOfCurrentException(const LocalizationManager &texts);

} // namespace lucentra
