#pragma once

#include <QString>

#include <variant>

namespace lucentra {

/// Which language model translates, and with what. Gemini isn't among them; its client is a different one.
struct OpenAIProvider
{
    QString apiKey;
    QString model;

    bool operator==(const OpenAIProvider &) const = default;
};

struct AnthropicProvider
{
    QString apiKey;
    QString model;

    bool operator==(const AnthropicProvider &) const = default;
};

struct CompatibleProvider
{
    QString apiKey;
    QString model;
    QString baseUrl; ///< as the user typed it, not yet checked

    bool operator==(const CompatibleProvider &) const = default;
};

using LanguageModelProvider = std::variant<OpenAIProvider, AnthropicProvider, CompatibleProvider>;

} // namespace lucentra
