#include "CommandLine.h"

#include "HistoryExport.h"
#include "LocalizationManager.h"
#include "TranslationEngine.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

struct OptionRow
{
    QStringView name;    ///< without the dashes
    QStringView value;   ///< name of the value on the help page; empty for a switch
    QStringView summary; ///< key of the text
};

struct CommandRow
{
    QStringView name;
    QStringView argument;       ///< name of the positional argument on the help page; empty if there is none
    QStringView options;        ///< names, separated by blanks
    QStringView requiredOption; ///< the option that must be given; empty if there is none
    QStringView summary;        ///< key of the text
    bool startsProgram = false; ///< a remote command that starts the program if it doesn't run
};

constexpr std::array optionRows{
    OptionRow{u"engine", u"N", u"使用第 N 個翻譯引擎（0 至 7），不改變設定"},
    OptionRow{u"target", u"CODE", u"翻譯成 CODE 語言（例如 zh-Hant、en、ja），不改變設定"},
    OptionRow{u"output", u"OUT.png", u"將圖片寫入 OUT.png"},
    OptionRow{u"format", u"csv|json|tsv", u"匯出的格式；未指定時依 FILE 的副檔名，否則為 csv"},
    OptionRow{u"search", u"TEXT", u"只包含原文或譯文中有 TEXT 的紀錄"},
    OptionRow{u"max-length-factor", u"X", u"譯文最多為原文的 X 倍長，以模型的單位計；預設為 2.0"},
    OptionRow{u"paragraphs", u"", u"將屬於同一段落的各行合併"},
    OptionRow{u"json", u"", u"同時輸出每一行的譯文與位置"},
    OptionRow{u"timing", u"", u"同時輸出各階段所需的毫秒數"},
};

constexpr double largestLengthFactor = 10;

constexpr std::array commandRows{
    CommandRow{u"recognize", u"IMAGE", u"paragraphs timing", u"", u"辨識圖片中的文字，逐行輸出為 JSON"},
    CommandRow{u"image", u"IMAGE", u"output engine target paragraphs json timing", u"output",
               u"翻譯圖片中的文字，將譯文畫在原文之上"},
    CommandRow{u"text", u"TEXT", u"engine target timing", u"",
               u"翻譯一段文字；含漢字的文字一律譯成英文。TEXT 為 - 時讀取標準輸入"},
    CommandRow{u"test-connection", u"", u"engine", u"", u"測試翻譯引擎的連線"},
    CommandRow{u"languages", u"", u"json", u"", u"列出在這部電腦上翻譯的服務與語言"},
    CommandRow{u"models", u"", u"", u"", u"列出這部電腦上與伺服器提供的翻譯模型"},
    CommandRow{u"models install", u"PAIR", u"", u"", u"下載翻譯 PAIR（例如 en-ja）所需的模型；必要時經由英文"},
    CommandRow{u"models remove", u"PAIR", u"", u"", u"移除 PAIR 的模型"},
    CommandRow{u"models run", u"FOLDER", u"max-length-factor", u"", u"只用 FOLDER 中的模型逐句翻譯標準輸入，每行一句"},
    CommandRow{u"doctor", u"", u"", u"", u"列出這部電腦上的環境、有什麼不對、如何改善；不含密鑰與擷取的文字"},
    CommandRow{u"export", u"FILE", u"format search", u"", u"將歷史紀錄匯出到 FILE；只讀取，不改變紀錄"},
    CommandRow{u"entries", u"", u"json search", u"", u"列出歷史紀錄"},
    CommandRow{u"toggle", u"", u"", u"", u"顯示或隱藏翻譯板", true},
    CommandRow{u"show", u"", u"", u"", u"顯示翻譯板", true},
    CommandRow{u"hide", u"", u"", u"", u"隱藏翻譯板"},
    CommandRow{u"translate", u"", u"", u"", u"翻譯目前區域；翻譯板隱藏時先顯示", true},
    CommandRow{u"live on", u"", u"", u"", u"讓譯文即時跟隨翻譯板下的畫面", true},
    CommandRow{u"live off", u"", u"", u"", u"停止即時翻譯"},
    CommandRow{u"live toggle", u"", u"", u"", u"開啟或停止即時翻譯", true},
    CommandRow{u"settings", u"", u"", u"", u"開啟設定視窗", true},
    CommandRow{u"history", u"", u"", u"", u"開啟翻譯歷史紀錄視窗", true},
    CommandRow{u"quit", u"", u"", u"", u"結束執行中的 Lucentra"},
};

const CommandRow *findCommand(QStringView name)
{
    const auto row = std::find_if(commandRows.begin(), commandRows.end(),
                                  [name](const CommandRow &each) { return each.name == name; });
    return row == commandRows.end() ? nullptr : &*row;
}

Failure wrongUsage(const QString &description)
{
    return {.domain = u"CommandLine"_s, .code = static_cast<int>(ExitCode::WrongUsage), .description = description};
}

QString dashed(QStringView option)
{
    return u"--"_s + option.toString();
}

const OptionRow *findOption(const CommandRow &command, QStringView name)
{
    for (const QStringView allowed : command.options.split(u' ')) {
        if (allowed != name)
            continue;
        for (const OptionRow &row : optionRows) {
            if (row.name == name)
                return &row;
        }
    }
    return nullptr;
}

/// Stores an option's value. Returns false if the value isn't valid.
bool take(Invocation &invocation, QStringView option, const QString &value)
{
    if (option == u"json") {
        invocation.json = true;
    } else if (option == u"timing") {
        invocation.timing = true;
    } else if (option == u"paragraphs") {
        invocation.paragraphs = true;
    } else if (option == u"output") {
        invocation.output = value;
        return !value.isEmpty();
    } else if (option == u"target") {
        invocation.target = value;
        static const QRegularExpression languageTag(u"^[A-Za-z0-9]{1,8}([-_][A-Za-z0-9]{1,8}){0,5}\\z"_s);
        return languageTag.match(value).hasMatch();
    } else if (option == u"search") {
        invocation.search = value;
    } else if (option == u"format") {
        invocation.format = value;
        return exportFormat(value).has_value();
    } else if (option == u"max-length-factor") {
        bool isNumber = false;
        invocation.maxLengthFactor = value.toDouble(&isNumber);
        return isNumber && invocation.maxLengthFactor > 0 && invocation.maxLengthFactor <= largestLengthFactor;
    } else if (option == u"engine") {
        bool isNumber = false;
        const int number = value.toInt(&isNumber);
        invocation.engine = number;
        return isNumber && value == QString::number(number) && translationEngine(number).has_value();
    }
    return true;
}

Result<Invocation> parseArguments(const CommandRow &row, const QStringList &arguments, const LocalizationManager &texts)
{
    Invocation invocation{.command = row.name};
    QStringList positional;
    QStringList given;
    bool onlyPositional = false;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments[i];
        if (onlyPositional || !argument.startsWith("--"_L1)) {
            positional.append(argument);
            continue;
        }
        if (argument == "--"_L1) {
            onlyPositional = true;
            continue;
        }
        if (argument == "--help"_L1)
            return Invocation{};
        const qsizetype equals = argument.indexOf(u'=');
        const QString name = argument.sliced(2, (equals < 0 ? argument.size() : equals) - 2);
        const OptionRow *option = findOption(row, name);
        if (!option)
            return tl::unexpected(wrongUsage(texts.formatted(u"未知的選項：%@"_s, dashed(name))));
        const bool isSwitch = option->value.isEmpty();
        // What looks like the next option is no value, unless it is given as `--option=--value`.
        const bool hasNoValue = equals < 0 && (i + 1 == arguments.size() || arguments[i + 1].startsWith("--"_L1));
        if (isSwitch ? equals >= 0 : hasNoValue)
            return tl::unexpected(
                wrongUsage(texts.formatted(isSwitch ? u"選項 %@ 不接受值"_s : u"選項 %@ 需要一個值"_s, dashed(name))));
        const QString value = isSwitch ? QString() : equals >= 0 ? argument.sliced(equals + 1) : arguments[++i];
        if (!take(invocation, name, value))
            return tl::unexpected(wrongUsage(texts.formatted(u"選項 %@ 的值無效：%@"_s, dashed(name), value)));
        given.append(name);
    }
    const qsizetype expected = row.argument.isEmpty() ? 0 : 1;
    if (positional.size() > expected)
        return tl::unexpected(wrongUsage(texts.formatted(u"多餘的參數：%@"_s, positional[expected])));
    if (positional.size() < expected)
        return tl::unexpected(wrongUsage(texts.formatted(u"缺少參數：%@"_s, row.argument.toString())));
    if (!row.requiredOption.isEmpty() && !given.contains(row.requiredOption))
        return tl::unexpected(wrongUsage(texts.formatted(u"缺少參數：%@"_s, dashed(row.requiredOption))));
    invocation.argument = positional.value(0);
    return invocation;
}

} // namespace

Result<Invocation> parseCommandLine(const QStringList &arguments, const LocalizationManager &texts)
{
    if (arguments.isEmpty())
        return tl::unexpected(wrongUsage(texts.localized(u"缺少指令"_s)));
    const QString &name = arguments.first();
    if (name == "--help"_L1 || name == "-h"_L1 || name == "help"_L1)
        return Invocation{};
    if (name == "--version"_L1)
        return Invocation{.command = u"version"};
    for (const qsizetype words : {2, 1}) { // the longer names first
        const QString typed = arguments.first(std::min(words, arguments.size())).join(u' ');
        if (const CommandRow *row = findCommand(typed))
            return parseArguments(*row, arguments.sliced(std::min(words, arguments.size())), texts);
    }
    QStringList endings; // of commands with two words
    for (const CommandRow &row : commandRows) {
        if (row.name.startsWith(name + u' '))
            endings.append(row.name.sliced(name.size() + 1).toString());
    }
    if (!endings.isEmpty() && arguments.value(1) == "--help"_L1)
        return Invocation{};
    if (!endings.isEmpty() && arguments.size() == 1)
        return tl::unexpected(wrongUsage(texts.formatted(u"缺少參數：%@"_s, endings.join(u'|'))));
    return tl::unexpected(
        wrongUsage(texts.formatted(u"未知的指令：%@"_s, endings.isEmpty() ? name : name + u' ' + arguments[1])));
}

bool startsProgram(QStringView command)
{
    const CommandRow *row = findCommand(command);
    return row && row->startsProgram;
}

QString helpPage(const LocalizationManager &texts)
{
    const auto usage = [](const OptionRow &option) {
        return option.value.isEmpty() ? dashed(option.name) : dashed(option.name) + u' ' + option.value.toString();
    };
    QStringList lines{texts.localized(u"Lucentra：翻譯螢幕上的文字"_s), QString()};
    for (const CommandRow &row : commandRows) {
        QString line = u"  lucentra "_s + row.name.toString();
        if (!row.argument.isEmpty())
            line += u' ' + row.argument.toString();
        for (const QStringView name : row.options.split(u' ', Qt::SkipEmptyParts)) {
            const QString option = usage(*findOption(row, name));
            line += name == row.requiredOption ? u' ' + option : u" ["_s + option + u']';
        }
        lines << line << u"      "_s + texts.localized(row.summary.toString());
    }
    lines << QString();
    for (const OptionRow &row : optionRows)
        lines << u"  "_s + usage(row) << u"      "_s + texts.localized(row.summary.toString());
    return lines.join(u'\n') + u'\n';
}

} // namespace lucentra
