#include "AllocationCount.h"
#include "ApertiumTranslation.h"
#include "AppleTranslationBridge.h"
#include "CatalogueBytes.h"
#include "Columns.h"
#include "EngineClients.h"
#include "FakeSecretStorage.h"
#include "HistoryExport.h"
#include "HistoryFile.h"
#include "HistoryManager.h"
#include "HistoryMerge.h"
#include "HistorySearch.h"
#include "KeychainStore.h"
#include "MainQueue.h"
#include "MessageCatalogue.h"
#include "NulProcess.h"
#include "PhraseLookup.h"
#include "PhraseStore.h"
#include "PhraseTranslation.h"
#include "PictureFile.h"
#include "PropertyList.h"
#include "ScreenLanguageIdentifier.h"
#include "ServiceRequest.h"
#include "Settings.h"
#include "TestProgram.h"
#include "TestTexts.h"
#include "TranslatedPicture.h"
#include "TranslationError.h"
#include "TranslationManager.h"

#include <QApplication>
#include <QBuffer>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <memory>

using namespace lucentra;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

using Work = std::function<void()>;

/// Prepares input of a size, and returns what is done with it.
using Path = std::function<Work(qsizetype)>;

Work answered(const QByteArray &body, const std::function<void(const QByteArray &)> &read)
{
    return [body, read] {
        try {
            read(body);
        } catch (const TranslationError &) {
        }
    };
}

QByteArray quoted(const QString &text)
{
    return QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact).chopped(1).sliced(1);
}

QList<HistoryItem> entries(qsizetype characters)
{
    constexpr qsizetype each = 2000;
    QList<HistoryItem> items;
    for (qsizetype i = 0; i < characters / each; ++i)
        items.append(newHistoryItem(u"長い文 ß \x01"_s.repeated(each / 16), u"A long text. "_s.repeated(each / 26)));
    return items;
}

QList<TextBlock> blocks(qsizetype count)
{
    return QList<TextBlock>(count, {u"A line of text"_s, {0.1, 0.1, 0.5, 0.05}});
}

} // namespace

/// Ten times as much input costs about ten times as much, and not more memory than a multiple of its size: else some
/// text or file of a stranger's making could stop the program.
class GrowthTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const QString share = m_folder.filePath(u"share"_s);
        installCatalogue(share, u"de"_s, u"editor.mo"_s,
                         moBytes({{"abc", "ABC"}, {"Page %d of %d", "Seite %d von %d"}}));
        m_memory = phrasesIn({.dataFolders = {share}});
        QVERIFY(m_memory);
    }

    void costGrowsWithTheInput_data()
    {
        // size: ten times the smaller one; mebibytes: at once, at most
        const auto row = columns<qsizetype, int, Path>("size", "mebibytes", "path");
        constexpr qsizetype answer = 8 << 20;

        row("an answer of the service without a key", answer, 45, [](qsizetype size) {
            return answered("[[[" + quoted(u"長\\ "_s.repeated(size / 7)) + ",\"a\"]]]",
                            [](const QByteArray &body) { (void)googleFreeAnswer(body, 1); });
        });
        row("an answer with many texts", answer, 230, [](qsizetype size) {
            QByteArray body = "{\"translations\":[";
            const qsizetype count = size / 16;
            for (qsizetype i = 0; i < count; ++i)
                body += QByteArray(i > 0 ? "," : "") + R"({"text":"a\u00e9b"})";
            const QStringList sources(count, u"a"_s);
            return answered(body + "]}", [sources](const QByteArray &bytes) { (void)deepLAnswer(bytes, sources); });
        });
        row("an answer of arrays in arrays", answer, 10, [](qsizetype size) {
            return answered(QByteArray(size, '['), [](const QByteArray &body) { (void)microsoftAnswer(body, 1); });
        });
        row("a model's answer", answer, 25, [](qsizetype size) {
            return answered(R"({"choices":[{"message":{"content":)" + quoted(u"\x01é`"_s.repeated(size / 9)) + "}}]}",
                            [](const QByteArray &body) { (void)compatibleAnswer(body); });
        });
        row("a model's translations", answer, 150, [](qsizetype size) {
            QString output = u"```json\n{\"translations\":["_s;
            for (qsizetype i = 0; i < size / 64; ++i)
                output +=
                    u"%1{\"id\":%2,\"text\":\"%3\"}"_s.arg(i > 0 ? u","_s : QString()).arg(i).arg(u"é"_s.repeated(36));
            output += u"]}\n```"_s;
            const QStringList asked(1000, u"A line of text"_s);
            return Work([output, asked] { (void)parseBlockTranslations(output, asked); });
        });
        row("a model's request", 1 << 20, 50, [](qsizetype size) {
            const QStringList asked(size / 15, u"A line of text"_s);
            return Work([asked] { (void)blockBatchInput(asked); });
        });
        row("an error message in JSON", answer, 50, [this](qsizetype size) {
            const QByteArray body = R"({"error":{"message":)" + quoted(u"sk-0123 \\<b>"_s.repeated(size / 13)) + "}}";
            return Work(
                [this, body] { (void)providerErrorMessage(body, {u"sk-0123456789abcdef"_s}, m_texts.manager); });
        });
        row("an error message as text", answer, 35, [this](qsizetype size) {
            const QByteArray body = QByteArray("sk-0123 e\u0301\u0301\u0301").repeated(size / 15);
            return Work(
                [this, body] { (void)providerErrorMessage(body, {u"sk-0123456789abcdef"_s}, m_texts.manager); });
        });
        row("a translation drawn over its line", 1 << 17, 12, [](qsizetype size) {
            const QString translation = u"漢字かな交じり "_s.repeated(size / 8);
            return Work([translation] {
                QImage picture(800, 600, QImage::Format_ARGB32_Premultiplied);
                picture.fill(Qt::white);
                TranslatedPicture(picture.size(), blocks(1), {translation}, u"ja"_s, {}).paintOver(picture, 0.75);
            });
        });

        for (const QString &word : {u"abc "_s, u"Il1O0"_s, u"(\"%d\": "_s, u"文"_s}) {
            for (const bool isOneLine : {true, false}) {
                const QString kind = isOneLine ? u"a line of \"%1\""_s : u"lines of \"%1\""_s;
                row(qPrintable(kind.arg(word)), isOneLine ? 1 << 20 : 1 << 16, 5,
                    [this, word, isOneLine](qsizetype size) {
                        constexpr qsizetype lineLength = 150;
                        const QString text = word.repeated((isOneLine ? size : lineLength) / word.size());
                        return Work([memory = m_memory, lines = QStringList(isOneLine ? 1 : size / lineLength, text)] {
                            const auto lookup = PhraseLookup::between(*memory, {u"en"_s, u"de"_s});
                            for (const QString &line : lines)
                                (void)(lookup && lookup->translate(line));
                            (void)ScreenLanguageIdentifier([memory] { return memory; }).identify(lines);
                        });
                    });
            }
        }

        for (const auto engine : {TranslationEngine::apple, TranslationEngine::compatible})
            row(engine == TranslationEngine::apple ? "typed text on this computer" : "typed text for a model", 1 << 20,
                40, [this, engine](qsizetype size) {
                    return Work(
                        [this, engine, text = u"Page 1 of 2, abc\n"_s.repeated(size / 17)] { type(text, engine); });
                });
        row("Apertium's question and answer", 1'000'000, 8, [](qsizetype size) {
            const QString text = u"*[a] \\ é "_s.repeated(size / 16);
            return Work([text] {
                NulProcess process({u"/bin/cat"_s});
                const auto echo = process.ask(apertiumQuestion(text), 60s);
                (void)apertiumOutcome(echo.value(), text);
            });
        });

        row("the history is read", 40 << 20, 220, [this](qsizetype size) {
            const QString path = fileWith(encodeHistory(entries(size / 2)));
            return Work([path] { (void)readHistoryFile(path); });
        });
        row("the history is written", 20 << 20, 75, [this](qsizetype size) {
            const QString path = m_folder.filePath(u"written"_s);
            return Work([path, items = entries(size / 2)] { (void)writeHistoryFile(path, items); });
        });
        row("two programs' histories", 20 << 20, 8, [](qsizetype size) {
            return Work([own = entries(size / 4), others = entries(size / 4)] {
                QList<HistoryItem> merged = mergedHistory(own, {}, own + others);
                (void)trimHistory(merged);
            });
        });
        row("entries are recorded", 4 << 20, 12, [this](qsizetype size) {
            const QString text(size / 10, u'x');
            return Work([this, text] {
                MainQueue queue;
                HistoryManager manager(m_folder.filePath(u"recorded-%1.json"_s.arg(++m_files)), queue, {});
                for (int i = 0; i < 10; ++i)
                    manager.add(QString::number(i), text);
                manager.finish();
            });
        });
        row("the history is searched", 20 << 20, 5, [](qsizetype size) {
            return Work([items = entries(size / 2), search = HistorySearch(u"straße"_s)] {
                for (const HistoryItem &item : items)
                    (void)search.matches(item);
            });
        });
        row("a text's matches are marked", 1 << 20, 80, [](qsizetype size) {
            return Work(
                [text = u"aé"_s.repeated(size / 2), search = HistorySearch(u"A"_s)] { (void)search.rangesIn(text); });
        });
        for (const ExportFormat format : {ExportFormat::Csv, ExportFormat::Json, ExportFormat::Tsv})
            row(qPrintable(u"the history is exported as "_s + exportSuffix(format)), 20 << 20, 105,
                [format](qsizetype size) {
                    return Work([format, items = entries(size / 2)] { (void)exportedHistory(items, format); });
                });

        row("settings", answer, 80, [this](qsizetype size) {
            QByteArray content = "{";
            for (qsizetype i = 0; i < size / 24; ++i)
                content += (i > 0 ? ",\"" : "\"") + QByteArray::number(i).rightJustified(9, '0') + "\":\"abcdefghi\"";
            const QString path = fileWith(content + "}");
            return Work([path] { (void)SettingsStore(path).contains(u"a"_s); });
        });
        row("settings of a wrong kind", answer, 25, [this](qsizetype size) {
            const QByteArray content = "{\"a\":[" + QByteArray("[0],").repeated(size / 4) + "0]}";
            return Work([this, content] { (void)SettingsStore(fileWith(content)).contains(u"a"_s); });
        });
        row("a property list as XML", 1 << 20, 5, [](qsizetype size) {
            const QByteArray content = R"(<?xml version="1.0"?><plist version="1.0"><dict>)" +
                                       QByteArray("<key>a</key><string>&lt;b</string>").repeated(size / 35) +
                                       "</dict></plist>";
            return Work([content] { (void)readPropertyList(content); });
        });
        for (const bool isMo : {true, false})
            row(isMo ? "a catalogue of gettext's" : "a catalogue of Qt's", 4 << 20, 5, [isMo](qsizetype size) {
                Messages messages;
                for (qsizetype i = 0; i < size / 60; ++i)
                    messages.append(
                        {"Message number " + QByteArray::number(i), "Nachricht Nummer " + QByteArray::number(i)});
                const QByteArray bytes = isMo ? moBytes(messages) : qmBytes(messages);
                return Work(
                    [bytes, isMo] { (void)(isMo ? readMoCatalogue : readQmCatalogue)(bytes, [](const auto &...) {}); });
            });
        row("a picture", 20 << 20, 60, [this](qsizetype size) {
            QImage picture(1000, int(size / 4000), QImage::Format_ARGB32);
            picture.fill(qRgba(10, 20, 30, 40));
            QByteArray png;
            QBuffer buffer(&png);
            picture.save(&buffer, "PNG");
            const QString path = fileWith(png);
            return Work([this, path] { (void)onOpaqueGround(readPicture(path, m_texts.manager).value_or(QImage())); });
        });
    }

    void costGrowsWithTheInput()
    {
        const auto [size, mebibytes, path] = fetched<qsizetype, int, Path>();
        const Work less = path(size / 10);
        const Work more = path(size);
        less(); // what is loaded or kept at the first time doesn't count
        const AllocationCount small = allocationsOf(less);
        const AllocationCount large = allocationsOf(more);
        qInfo("%.1f MiB: %.1f times the bytes, %.1f times the allocations, %.0f MiB at once", double(size) / (1 << 20),
              double(large.bytes) / double(small.bytes), double(large.count) / double(small.count),
              double(large.mostBytes) / (1 << 20));
        constexpr qint64 most = 13; // buffers grow by doubling, so that ten times may cost a little more
        constexpr qint64 noise = 1 << 20;
        constexpr qint64 fewAllocations = 10'000;
        QVERIFY(large.bytes <= most * small.bytes + noise);
        QVERIFY(large.count <= most * small.count + fewAllocations);
        QVERIFY(large.mostBytes <= qint64(mebibytes) << 20);
    }

private:
    QString fileWith(const QByteArray &content)
    {
        const QString path = m_folder.filePath(QString::number(++m_files));
        writeFile(path, content);
        return path;
    }

    /// What happens while a text is typed and each pause asks for its translation: later ones supersede earlier ones.
    void type(const QString &text, TranslationEngine engine)
    {
        m_texts.settings.overrideForThisProcess(settings::translationEngine, qint64(engine));
        m_texts.settings.overrideForThisProcess(settings::consentKey(qint64(engine)), true);
        m_texts.settings.overrideForThisProcess(settings::targetLanguageCode, u"de"_s);
        const auto store =
            std::make_shared<PhraseStore>(CatalogueFolders{.dataFolders = {m_folder.filePath(u"share"_s)}},
                                          m_folder.filePath(u"phrases"_s), BuildPatience{60s});
        ScreenLanguageIdentifier identifier([&store] { return store->file(); });
        PhraseTranslation phrases(store);
        MainQueue queue;
        AppleTranslationBridge bridge(identifier, phrases);
        bridge.setParentView(this);
        FakeSecretStorage secrets;
        const KeychainStore keychain(secrets, u"keys"_s, {});
        TranslationClients clients;
        clients.onDevice = [&bridge](const EngineRequest &request, const auto &isWanted) {
            return bridge.translate(request.texts, request.target, isWanted);
        };
        clients.remote = [](const EngineRequest &request, const auto &mayBeSent) {
            mayBeSent();
            return request.texts;
        };
        TranslationManager manager(m_texts.settings, keychain, m_texts.manager, queue, clients, {});
        constexpr int pauses = 20;
        int completed = 0;
        for (int i = 1; i <= pauses; ++i)
            manager.translateText(text.first(text.size() * i / pauses), [&completed](const auto &) { ++completed; });
        QVERIFY(QTest::qWaitFor([&completed] { return completed == pauses; }, 60'000));
    }

    TestTexts m_texts;
    QTemporaryDir m_folder;
    int m_files = 0;
    std::shared_ptr<const PhraseFile> m_memory;
};

static const TestClass<GrowthTest, QApplication> growthTest;
#include "GrowthTest.moc"
