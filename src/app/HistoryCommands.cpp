#include "Commands.h"

#include "HistoryExport.h"
#include "HistoryFile.h"
#include "HistoryManager.h"
#include "HistorySearch.h"
#include "Services.h"

#include <QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

tl::unexpected<Failure> failed(const QString &description)
{
    return tl::unexpected(
        Failure{.domain = u"CommandLine"_s, .code = int(ExitCode::Failed), .description = description});
}

/// The running program replaces the file whole, so that it can be read at any time.
Result<QList<HistoryItem>> matchingItems(const Invocation &invocation, Services &services)
{
    auto content = readHistoryFile(HistoryManager::userFilePath());
    if (!content)
        return failed(services.texts().formatted(u"無法讀取翻譯紀錄：%@"_s, content.error().description));
    QList<HistoryItem> items = std::move(content->items);
    const HistorySearch search(invocation.search);
    items.removeIf([&](const HistoryItem &item) { return !search.matches(item); });
    return items;
}

} // namespace

Result<CommandOutput> exportCommand(const Invocation &invocation, Services &services)
{
    const auto items = matchingItems(invocation, services);
    if (!items)
        return tl::unexpected(items.error());
    const QString name = invocation.format.value_or(QFileInfo(invocation.argument).suffix());
    const auto written = exportHistory(*items, exportFormat(name).value_or(ExportFormat::Csv), invocation.argument);
    if (!written)
        return failed(services.texts().formatted(u"無法匯出：%@"_s, written.error().description));
    return CommandOutput{};
}

Result<CommandOutput> entriesCommand(const Invocation &invocation, Services &services)
{
    const auto items = matchingItems(invocation, services);
    if (!items)
        return tl::unexpected(items.error());
    QString answer =
        QString::fromUtf8(exportedHistory(*items, invocation.json ? ExportFormat::Json : ExportFormat::Lines));
    if (answer.endsWith(u'\n'))
        answer.chop(1);
    return CommandOutput{.answer = answer};
}

} // namespace lucentra
