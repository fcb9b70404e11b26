#pragma once

#include <QByteArray>

namespace lucentra {

/// Where the translation services live: scheme, host and, where it isn't the scheme's own, port. The defaults are the
/// hosts that the services document. The compatible endpoint isn't among them; its URL is a setting.
struct ServiceHosts
{
    QByteArray googleFree = "https://translate.googleapis.com";
    QByteArray googleCloud = "https://translation.googleapis.com";
    QByteArray deepL = "https://api.deepl.com";
    QByteArray deepLFree = "https://api-free.deepl.com"; ///< for the keys of DeepL's free plan
    QByteArray microsoft = "https://api.cognitive.microsofttranslator.com";
    QByteArray openAI = "https://api.openai.com";
    QByteArray anthropic = "https://api.anthropic.com";
    QByteArray gemini = "https://generativelanguage.googleapis.com";
};

} // namespace lucentra
