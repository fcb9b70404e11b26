#include "HttpUrl.h"

#include "Owned.h"

#include <curl/curl.h>

#include <algorithm>

namespace lucentra {

namespace {

using ParsedUrl = Owned<CURLU, curl_url_cleanup>;

ParsedUrl parse(const QByteArray &url)
{
    ParsedUrl parsed(curl_url());
    if (curl_url_set(parsed.get(), CURLUPART_URL, url.constData(), CURLU_PATH_AS_IS) != CURLUE_OK)
        return nullptr;
    return parsed;
}

QByteArray part(const ParsedUrl &url, CURLUPart which)
{
    char *text = nullptr;
    if (curl_url_get(url.get(), which, &text, CURLU_DEFAULT_PORT) != CURLUE_OK)
        return {};
    QByteArray copy(text);
    curl_free(text);
    return copy;
}

bool isSameOrigin(const QByteArray &one, const QByteArray &other)
{
    const ParsedUrl first = parse(one);
    const ParsedUrl second = parse(other);
    return first && second && part(first, CURLUPART_SCHEME) == part(second, CURLUPART_SCHEME) &&
           part(first, CURLUPART_HOST).toLower() == part(second, CURLUPART_HOST).toLower() &&
           part(first, CURLUPART_PORT) == part(second, CURLUPART_PORT);
}

bool isUrlCharacter(char c)
{
    static const QByteArray punctuation("-._~:/?#[]@!$&'()*+,;=%");
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || punctuation.contains(c);
}

} // namespace

std::optional<QByteArray> wireUrl(const QByteArray &url)
{
    if (!std::all_of(url.begin(), url.end(), isUrlCharacter))
        return std::nullopt;
    if (url.sliced(std::max<qsizetype>(url.indexOf("://"), 0)).startsWith(":///"))
        return std::nullopt; // libcurl would use the first part of the path as the host
    const ParsedUrl parsed = parse(url);
    if (!parsed || part(parsed, CURLUPART_HOST).isEmpty())
        return std::nullopt;
    const QByteArray scheme = part(parsed, CURLUPART_SCHEME);
    if (scheme != "http" && scheme != "https")
        return std::nullopt;
    return url;
}

bool isProtected(const QUrl &url)
{
    const QString host = url.host(); // in lower case, like the scheme
    if (url.scheme() == u"https")
        return !host.isEmpty();
    return url.scheme() == u"http" && (host == u"localhost" || host == u"127.0.0.1" || host == u"::1");
}

bool mayRedirect(const QByteArray &from, const QByteArray &to, bool mayChangeHost)
{
    if (!wireUrl(to))
        return false;
    const QUrl target = QUrl::fromEncoded(to, QUrl::StrictMode);
    const bool isAsProtected = isProtected(target) && (target.scheme() == u"https" || from.startsWith("http:"));
    return isSameOrigin(from, to) || (mayChangeHost && isAsProtected);
}

} // namespace lucentra
