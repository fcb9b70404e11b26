#include "Commands.h"

#include "HistoryExport.h"
#include "HistoryFile.h"
#include "HistoryManager.h"
#include "HistorySearch.h"
#include "Services.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Can be called at any time, since the running program replaces the file atomically.
Result<HistoryFileContent> matchingContent(const Invocation &invocation, Services &services)
{
    auto content = readHistoryFile(HistoryManager::userFilePath());
    if (!content)
        return commandFailed(services.texts().formatted(u"無法讀取翻譯紀錄：%@"_s, content.error().description));
    const HistorySearch search(invocation.search);
    content->items.removeIf([&](const HistoryItem &item) { return !search.matches(item); });
    return content;
}

/// The message besides the answer.
QString noteOn(const HistoryFileContent &content, const LocalizationManager &texts)
{
    return content.isWhole ? QString() : texts.localized(u"翻譯紀錄檔案過大，只讀取了開頭的部分。"_s);
}

} // namespace

Result<CommandOutput> exportCommand(const Invocation &invocation, Services &services)
{
    const auto content = matchingContent(invocation, services);
    if (!content)
        return tl::unexpected(content.error());
    const QString name = invocation.format.value_or(QFileInfo(invocation.argument).suffix());
    const auto written =
        exportHistory(content->items, exportFormat(name).value_or(ExportFormat::Csv), invocation.argument);
    if (!written)
        return commandFailed(services.texts().formatted(u"無法匯出：%@"_s, written.error().description));
    return CommandOutput{.message = noteOn(*content, services.texts())};
}

Result<CommandOutput> entriesCommand(const Invocation &invocation, Services &services)
{
    const auto content = matchingContent(invocation, services);
    if (!content)
        return tl::unexpected(content.error());
    QString answer =
        QString::fromUtf8(exportedHistory(content->items, invocation.json ? ExportFormat::Json : ExportFormat::Lines));
    if (answer.endsWith(u'\n'))
        answer.chop(1);
    return CommandOutput{.answer = answer, .message = noteOn(*content, services.texts())};
}

} // namespace lucentra
