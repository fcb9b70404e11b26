#pragma once

#include <QString>

#include <variant>

namespace lucentra {

/// The language model that translates, and its settings. Gemini has its own client.
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
    QString baseUrl; ///< as entered by the user, not validated

    bool operator==(const CompatibleProvider &) const = default;
};

using LanguageModelProvider = std::variant<OpenAIProvider, AnthropicProvider, CompatibleProvider>;

} // namespace lucentra
