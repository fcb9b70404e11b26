#pragma once

#include "Result.h"

#include <QString>

#include <exception>
#include <functional>

namespace lucentra {

class LocalizationManager;

/// The exceptions of the translation clients. Thrown and caught on the same worker; the manager converts them to a
/// `Failure` by `failureOfCurrentException`. They never contain a key, a URL or captured text.
class TranslationError : public std::exception
{
public:
    using Sentence = std::function<QString(const LocalizationManager &texts)>;

    TranslationError(const QString &domain, int code, Sentence sentence);
    /// The sentence is a text key.
    TranslationError(const QString &domain, int code, const QString &sentence);

    /// The error as a value, with its sentence in the interface language.
    Failure failure(const LocalizationManager &texts) const;
    /// For debugging only.
    const char *what() const noexcept override { return "translation failed"; }

private:
    QString m_domain;
    int m_code;
    Sentence m_sentence;
};

// The common errors of the remote services. Their domain is "TranslationProviderError", their code the HTTP status, or
// 0 if no request failed.

/// The settings don't allow a request. The message is a text key.
TranslationError invalidConfiguration(const QString &message);
/// The URL of a request can't be built.
TranslationError invalidUrl(const QString &provider);
/// The service refused with this HTTP status; see `providerErrorMessage` for the message.
TranslationError requestFailed(const QString &provider, int status, const QString &message);
/// The service's answer has an unexpected form.
TranslationError invalidResponse(const QString &provider);

/// A failed translation of typed text with its own answer, in place of the general one. The answer is in the interface
/// language and begins with "❌ ".
class TypedTextError : public TranslationError
{
public:
    explicit TypedTextError(const QString &answer);
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

    explicit TransportError(Kind kind);

    Kind kind() const { return m_kind; }

private:
    Kind m_kind;
};

/// Converts the exception that is being handled to a failure; to be called in a catch block only. Other exceptions get
/// the sentence for unknown errors.
Failure failureOfCurrentException(const LocalizationManager &texts);

} // namespace lucentra
