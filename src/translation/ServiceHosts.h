#pragma once

#include <QByteArray>

namespace lucentra {

/// The addresses of the translation services: scheme, host and, if needed, port. The defaults are the documented hosts.
/// The URL of the compatible endpoint is a setting.
struct ServiceHosts
{
    QByteArray googleFree = "https://translate.googleapis.com";
    QByteArray googleCloud = "https://translation.googleapis.com";
    QByteArray deepL = "https://api.deepl.com";
    QByteArray deepLFree = "https://api-free.deepl.com"; ///< for keys of DeepL's free plan
    QByteArray microsoft = "https://api.cognitive.microsofttranslator.com";
    QByteArray openAI = "https://api.openai.com";
    QByteArray anthropic = "https://api.anthropic.com";
    QByteArray gemini = "https://generativelanguage.googleapis.com";
};

} // namespace lucentra
