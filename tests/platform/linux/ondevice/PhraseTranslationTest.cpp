#include "PhraseTranslation.h"
#include "CatalogueBytes.h"
#include "Columns.h"
#include "LayeredTranslation.h"
#include "PhraseLookup.h"
#include "PhraseStore.h"
#include "TestProgram.h"

#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <utime.h>

using namespace lucentra;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr BuildPatience patient{.longest = 20s, .acceptsOutdated = false};

QString translated(const PhraseFile &file, const QString &source, const QString &target, const QString &line)
{
    const auto lookup = PhraseLookup::between(file, {source, target});
    const auto found = lookup ? lookup->translate(line) : std::nullopt;
    return found ? found->text : u"-"_s;
}

/// The same becomes of every text, perhaps only for those who wait.
class FixedLayer : public OnDeviceTranslationService
{
public:
    FixedLayer(OnDeviceOutcome::Kind kind, bool isSlow = false)
        : m_kind(kind)
        , m_isSlow(isSlow)
    {
    }

    QList<OnDeviceOutcome> translate(const LanguagePair &, const QStringList &texts,
                                     const std::function<bool()> &) override
    {
        return QList<OnDeviceOutcome>(texts.size(), {.kind = m_kind, .text = m_isSlow ? u"slow"_s : u"fast"_s});
    }
    QList<OnDeviceOutcome> translateAtOnce(const LanguagePair &pair, const QStringList &texts,
                                           const std::function<bool()> &isWanted) override
    {
        return m_isSlow ? QList<OnDeviceOutcome>(texts.size(), {.kind = OnDeviceOutcome::Kind::NotReady})
                        : translate(pair, texts, isWanted);
    }
    QList<OnDeviceServiceStatus> status() override { return {}; }

private:
    const OnDeviceOutcome::Kind m_kind;
    const bool m_isSlow;
};

OnDeviceOutcome outcomeOf(const std::vector<FixedLayer> &fixed)
{
    std::vector<std::unique_ptr<OnDeviceTranslationService>> layers;
    for (const FixedLayer &layer : fixed)
        layers.push_back(std::make_unique<FixedLayer>(layer));
    return LayeredTranslation(std::move(layers)).translate({u"en"_s, u"ja"_s}, {u"a"_s}, {}).value(0);
}

} // namespace

class PhraseTranslationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_share = m_folder.filePath(u"share"_s);
        const auto install = [this](const QString &locale, const QString &name, const Messages &messages) {
            installCatalogue(m_share, locale, name, moBytes(messages));
        };
        install(u"ja"_s, u"editor.mo"_s,
                {{"_Cancel", "キャンセル(_C)"},
                 {"Save _As...", "名前を付けて保存(_A)..."},
                 {"File name:", "ファイル名:"},
                 {"Page %d of %d", "%d / %d ページ"},
                 {"Could not open “%s”.", "“%s”を開けませんでした。"},
                 {"Copying {source} to {target}", "{target} へ {source} をコピー中"},
                 {"<b>Warning</b>", "<b>警告</b>"},
                 {"Preferences", "設定"},
                 {"file_name_1", "file_name_1 のままの語"},
                 {"%s is %s", "%3$s は %1$s"},
                 {"Text Editor", "テキストエディター"},
                 {"Size", "サイズ"}});
        for (const QString &program : {u"editor.mo"_s, u"player.mo"_s}) {
            for (const auto &[source, german, japanese] :
                 {std::tuple{"_File", "_Datei", "ファイル(_F)"}, std::tuple{"_Edit", "_Bearbeiten", "編集(_E)"},
                  std::tuple{"_View", "_Ansicht", "表示(_V)"}}) {
                const QString own = QString::fromUtf8(source).sliced(1).toLower() + u'-' + program;
                install(u"ja"_s, own, {{source, japanese}});
                install(u"de"_s, own, {{source, german}});
            }
        }
        install(u"de"_s, u"editor.mo"_s, {{"_Cancel", "_Abbrechen"}, {"Unknown there", "Dort unbekannt"}});
        m_file = phrasesIn({.dataFolders = {m_share}});
        QVERIFY(m_file);
    }

    void linesAreTranslated_data()
    {
        const auto row = columns<QString, QString, QString>("pair", "line", "translation");
        row("mnemonics are gone", u"en ja"_s, u"Cancel"_s, u"キャンセル"_s);
        row("another case", u"en ja"_s, u"CANCEL"_s, u"キャンセル"_s);
        row("an ellipsis as one character", u"en ja"_s, u"Save As…"_s, u"名前を付けて保存…"_s);
        row("misread dots", u"en ja"_s, u"Save As.…"_s, u"名前を付けて保存…"_s);
        row("the line's own tail", u"en ja"_s, u"Save  as :"_s, u"名前を付けて保存："_s);
        row("a tail that the line doesn't have", u"en ja"_s, u"file name"_s, u"ファイル名"_s);
        row("numbers", u"en ja"_s, u"Page 12 of 3,400"_s, u"12 / 3,400 ページ"_s);
        row("other quotation marks", u"en ja"_s, u"Could not open \"a b.txt\"."_s, u"“a b.txt”を開けませんでした。"_s);
        row("values change places", u"en ja"_s, u"Copying /tmp/a.c to b.txt"_s, u"b.txt へ /tmp/a.c をコピー中"_s);
        row("markup", u"en ja"_s, u"Warning"_s, u"警告"_s);
        row("underscores that are no mnemonic", u"en ja"_s, u"file_name_1"_s, u"file_name_1 のままの語"_s);
        row("a window's title", u"en ja"_s, u"notes.txt - Text Editor"_s, u"notes.txt - テキストエディター"_s);
        row("a label with its value", u"en ja"_s, u"Size: 12 MB"_s, u"サイズ：12 MB"_s);
        row("an unknown label", u"en ja"_s, u"Colour: Size"_s, u"-"_s);
        row("a keyboard shortcut", u"en ja"_s, u"Save As...   Ctrl+Shift+S"_s, u"名前を付けて保存…   Ctrl+Shift+S"_s);
        row("a bullet", u"en ja"_s, u"• Preferences"_s, u"• 設定"_s);
        row("a menu bar read as one line", u"en ja"_s, u"File Edit View"_s, u"ファイル  編集  表示"_s);
        row("a phrase of such words in capitals", u"en ja"_s, u"View Edit File"_s, u"-"_s);
        row("a sentence of such words", u"en ja"_s, u"Edit view file"_s, u"-"_s);
        row("a singular", u"en ja"_s, u"Preference"_s, u"設定"_s);
        row("hyphenated", u"en ja"_s, u"Text-editor"_s, u"テキストエディター"_s);
        row("a misread character", u"en ja"_s, u"Preferenees"_s, u"設定"_s);
        row("two misread characters", u"en ja"_s, u"Preferenoos"_s, u"-"_s);
        row("a misread short word", u"en ja"_s, u"Slze"_s, u"-"_s);
        row("through English", u"de ja"_s, u"Abbrechen"_s, u"キャンセル"_s);
        row("known to English only", u"de ja"_s, u"Dort unbekannt"_s, u"-"_s);
        row("into English", u"ja en-US"_s, u"キャンセル"_s, u"Cancel"_s);
        row("white space within ideographs", u"ja en"_s, u"キャン セル"_s, u"Cancel"_s);
        row("an argument that the source doesn't have", u"en ja"_s, u"12 is 13"_s, u"-"_s);
        row("nothing but numbers", u"en ja"_s, u"12 / 13"_s, u"-"_s);
        row("a language that nobody has", u"en ko"_s, u"Cancel"_s, u"-"_s);
        // These would take hours if the cost grew with the square of the length.
        row("a megabyte of letters", u"en ja"_s, u"i"_s.repeated(1 << 20), u"-"_s);
        row("a megabyte of words", u"en ja"_s, u"abc "_s.repeated(1 << 18), u"-"_s);
        const QString folders = u"/tmp"_s.repeated(longestPhrase / 4);
        row("a value longer than any phrase", u"en ja"_s, u"Copying %1 to b.txt"_s.arg(folders),
            u"b.txt へ %1 をコピー中"_s.arg(folders));
    }
    void linesAreTranslated()
    {
        const auto [pair, line] = fetched<QString, QString>();
        QTEST(translated(*m_file, pair.section(u' ', 0, 0), pair.section(u' ', 1), line), "translation");
    }

    void programsVote()
    {
        const QTemporaryDir folder;
        const auto install = [&](const QString &name, const Messages &messages) {
            installCatalogue(folder.path(), u"zh_TW"_s, name, moBytes(messages));
        };
        // Five files of one family are one voice.
        for (const QString &name : {u"big20.mo"_s, u"big30.mo"_s, u"big30-parts.mo"_s, u"big4.mo"_s, u"big_tool.mo"_s})
            install(name, {{"Print", "打印"}, {"Font", "字體"}, {"Zoom", "縮放顯示"}});
        install(u"one.mo"_s, {{"Print", "列印"}, {"Font", "字型"}, {"Zoom", "縮放"}});
        install(u"two.mo"_s, {{"Print", "列印"}});
        // And so is a whole application that somebody else has packed, with its extensions, or a program's own folder.
        QStringList folders{folder.path()};
        for (const QString &name : {u"app/org.example.Loud"_s, u"runtime/org.example.Loud.Locale"_s,
                                    u"runtime/org.example.Loud.More.Words"_s}) {
            folders.append(folder.filePath(u"flatpak/"_s + name + u"/files/share"_s));
            installCatalogue(folders.last(), u"zh_TW"_s, u"alpha.mo"_s, moBytes({{"Print", "印"}}));
            installCatalogue(folders.last(), u"zh_TW"_s, u"beta.mo"_s, moBytes({{"Print", "印"}}));
        }
        for (const QString &name : {u"alpha"_s, u"beta"_s, u"gamma"_s})
            writeFile(folder.filePath(u"loud/translations/%1_zh_TW.qm"_s.arg(name)), qmBytes({{"Print", "印刷"}}));
        // And a package with many parts.
        QByteArray list;
        for (const QString &name : {u"shell.mo"_s, u"panel.mo"_s, u"mixer.mo"_s}) {
            install(name, {{"Print", "印製"}});
            list += u"%1/locale/zh_TW/LC_MESSAGES/%2\n"_s.arg(folder.path(), name).toUtf8();
        }
        writeFile(folder.filePath(u"loudspeaker:all.list"_s), list);
        const auto file = phrasesIn({.dataFolders = folders, .packageLists = folder.path()});
        QCOMPARE(translated(*file, u"en"_s, u"zh-Hant"_s, u"Print"_s), u"列印"_s);
        QCOMPARE(translated(*file, u"en"_s, u"zh-Hant"_s, u"Zoom"_s), u"縮放"_s); // the shorter of two
    }

    void wordsAreWeighed_data()
    {
        // programs: first.mo, second.mo ...
        const auto row =
            columns<QString, QList<Messages>, QString, QString>("locale", "programs", "word", "translation");
        row("a code is no translation", u"zh_TW"_s, {{{"Do", "zh_TW"}}}, u"Do"_s, u"-"_s);
        row("a remark", u"ko"_s, {{{"Spaces", "<공백개수>"}}}, u"Spaces"_s, u"-"_s);
        row("the source beside its translation", u"ko"_s, {{{"Period", "Period (기간)"}}}, u"Period"_s, u"기간"_s);
        row("the source in brackets", u"ko"_s, {{{"Gamma", "감마 (Gamma)"}}}, u"Gamma"_s, u"감마"_s);
        row("one program's explanation", u"ko"_s, {{{"Gold", "금 (1 트로이 온스)"}}}, u"Gold"_s, u"-"_s);
        row("two programs' explanation", u"ja"_s, {{{"Beep", "音 (警告)"}}, {{"Beep", "音 (警告)"}}}, u"Beep"_s,
            u"音 (警告)"_s);
        row("one program's word for a longer phrase", u"ja"_s,
            {{{"Rate", "サンプリング周波数"}, {"Sampling rate", "サンプリング周波数"}}}, u"Rate"_s, u"-"_s);
        row("the longer phrase itself", u"ja"_s,
            {{{"Rate", "サンプリング周波数"}, {"Sampling rate", "サンプリング周波数"}}}, u"Sampling rate"_s,
            u"サンプリング周波数"_s);
        row("a long word of its own", u"ja"_s, {{{"Administrator", "アドミニストレーター"}}}, u"Administrator"_s,
            u"アドミニストレーター"_s);
        row("of two alike the one that others use too", u"ja"_s,
            {{{"Order", "次数"}}, {{"Order", "順序"}}, {{"Sequence", "順序"}}}, u"Order"_s, u"順序"_s);
        row("a program of two minds counts half for each", u"ja"_s,
            {{{"Fit", "合わせ"}, {"_Fit", "適合"}}, {{"Fit", "収まるように"}}}, u"Fit"_s, u"収まるように"_s);
    }
    void wordsAreWeighed()
    {
        const auto [locale, programs, word] = fetched<QString, QList<Messages>, QString>();
        const QTemporaryDir folder;
        const QStringList names{u"first.mo"_s, u"second.mo"_s, u"third.mo"_s};
        for (qsizetype i = 0; i < programs.size(); ++i)
            installCatalogue(folder.path(), locale, names[i], moBytes(programs[i]));
        const auto file = phrasesIn({.dataFolders = {folder.path()}});
        const QString code = locale == u"zh_TW" ? u"zh-Hant"_s : locale;
        QTEST(translated(*file, u"en"_s, code, word), "translation");
    }

    void agreementMakesSure()
    {
        const auto lookup = PhraseLookup::between(*m_file, {u"en"_s, u"ja"_s});
        const double one = lookup->translate(u"Cancel"_s)->confidence;
        const double more = lookup->translate(u"File"_s)->confidence;
        QCOMPARE(one, 0.5);
        QVERIFY(more >= one);
        QVERIFY(lookup->translate(u"Preferenees"_s)->confidence < lookup->translate(u"Preferences"_s)->confidence);
    }

    void outcomesSayWhatBecameOfEachText()
    {
        using Kind = OnDeviceOutcome::Kind;
        PhraseTranslation phrases(std::make_shared<PhraseStore>(CatalogueFolders{.dataFolders = {m_share}},
                                                                m_folder.filePath(u"outcomes"_s), patient));
        // A text that is too long for a phrase doesn't start a build, and neither does the reason for that.
        QCOMPARE(phrases.translate({u"en"_s, u"ja"_s}, {QString(1000, u'a')}, {}).value(0).kind, Kind::UnknownPhrase);
        QVERIFY(phrases.currentStatus().value(0).isGettingReady);
        const auto outcomes = phrases.translate({u"en"_s, u"ja"_s}, {u"Cancel"_s, u"Nobody says this"_s}, {});
        QCOMPARE(outcomes.size(), 2);
        QCOMPARE(outcomes[0].kind, Kind::Translated);
        QCOMPARE(outcomes[0].service, u"phrases"_s);
        QCOMPARE(outcomes[1].kind, Kind::UnknownPhrase);
        for (const LanguagePair &pair : {LanguagePair{u"en"_s, u"ko"_s}, {u"de"_s, u"ko"_s}, {u"en"_s, u"de"_s}})
            QCOMPARE(phrases.translate(pair, {u"Cancel"_s}, {}).value(0).kind, Kind::PairUnavailable);
        for (const auto &[text, isPhrase] :
             {std::pair(u"Page 12 of 3"_s, true), std::pair(u"notes.txt - Text Editor"_s, false)})
            QCOMPARE(phrases.isPhrase({u"en"_s, u"ja"_s}, text), isPhrase); // parts of a line are none
        QVERIFY(!phrases.status().value(0).addableBy.isEmpty()); // a handful of phrases calls for more
    }

    void aLaterLayerHidesNothingThatHelpsMore()
    {
        using Kind = OnDeviceOutcome::Kind;
        QCOMPARE(outcomeOf({Kind::NotReady, Kind::UnknownPhrase}).kind, Kind::NotReady);
        QCOMPARE(outcomeOf({Kind::UnknownPhrase, Kind::NotReady}).kind, Kind::NotReady);
        QCOMPARE(outcomeOf({Kind::NotReady, Kind::Translated}).kind, Kind::Translated);
        QCOMPARE(outcomeOf({Kind::UnknownPhrase, Kind::PairUnavailable}).kind, Kind::UnknownPhrase);
    }

    void textsWaitForNothingThatAnotherLayerKnows()
    {
        using Kind = OnDeviceOutcome::Kind;
        QCOMPARE(outcomeOf({{Kind::Translated, true}, Kind::Translated}).text, u"fast"_s);
        QCOMPARE(outcomeOf({{Kind::Translated, true}, Kind::UnknownPhrase}).text, u"slow"_s);
        QCOMPARE(outcomeOf({{Kind::UnknownPhrase, true}, Kind::PairUnavailable}).text, u"slow"_s);
    }

    void theCacheIsKeptUntilTheCataloguesChange()
    {
        const QTemporaryDir folder;
        const QString cache = folder.filePath(u"deep/phrases"_s);
        installCatalogue(folder.path(), u"ja"_s, u"a.mo"_s, moBytes({{"Cancel", "中止"}}));
        const CatalogueFolders folders{.dataFolders = {folder.path()}};
        const auto look = [&] {
            PhraseStore store(folders, cache, patient);
            return translated(*store.file(), u"en"_s, u"ja"_s, u"Cancel"_s);
        };
        QCOMPARE(look(), u"中止"_s);
        QCOMPARE(QFile::permissions(cache) & ~(QFile::ReadUser | QFile::WriteUser),
                 QFile::ReadOwner | QFile::WriteOwner);
        const auto inode = [&] {
            struct stat file;
            return ::stat(qPrintable(cache), &file) == 0 ? file.st_ino : 0;
        };
        const auto before = inode();
        QVERIFY(before != 0);
        QCOMPARE(look(), u"中止"_s);
        QCOMPARE(inode(), before); // the very same file

        installCatalogue(folder.path(), u"ja"_s, u"a.mo"_s, moBytes({{"Cancel", "取りやめる"}}));
        QCOMPARE(look(), u"取りやめる"_s);
    }

    void aDamagedCacheIsBuiltAnew()
    {
        const QString cache = m_folder.filePath(u"damaged"_s);
        for (const qint64 size : {-1, 0, 100, 5000}) {
            QVERIFY(size < 0 || QFile::resize(cache, size));
            PhraseStore store({.dataFolders = {m_share}}, cache, patient);
            QVERIFY(store.file());
            QCOMPARE(translated(*store.file(), u"en"_s, u"ja"_s, u"Cancel"_s), u"キャンセル"_s);
        }
        // Without a place for it the memory is built all the same.
        PhraseStore store({.dataFolders = {m_share}}, cache + u"/phrases"_s, patient);
        QVERIFY(store.file());
        QCOMPARE(translated(*store.file(), u"en"_s, u"ja"_s, u"Cancel"_s), u"キャンセル"_s);
    }

    void whatIsNoCatalogueIsSkipped()
    {
        const QTemporaryDir folder;
        installCatalogue(folder.path(), u"ja"_s, u"good.mo"_s, moBytes({{"Cancel", "中止"}}));
        const QString messages = folder.filePath(u"locale/ja/LC_MESSAGES"_s);
        QCOMPARE(::mkfifo(qPrintable(messages + u"/pipe.mo"_s), 0600), 0); // opening it would wait for a writer
        QVERIFY(QFile::link(messages + u"/loop.mo"_s, messages + u"/loop.mo"_s));
        QVERIFY(QFile::link(folder.path(), folder.filePath(u"locale/ko"_s)));
        QVERIFY(QDir().mkpath(folder.filePath(u"locale/de"_s)));
        QVERIFY(QFile::link(folder.filePath(u"locale/de"_s), folder.filePath(u"locale/de/LC_MESSAGES"_s)));
        QVERIFY(QDir().mkpath(messages + u"/folder.mo"_s));
        installCatalogue(folder.path(), u"ja"_s, u"text.mo"_s, "no catalogue at all");
        installCatalogue(folder.path(), u"ja"_s, u"huge.mo"_s, {});
        QVERIFY(QFile::resize(messages + u"/huge.mo"_s, qint64(5) << 30)); // takes no room on the disk
        const auto file = phrasesIn({.dataFolders = {folder.path()}});
        QVERIFY(file);
        QCOMPARE(file->header().catalogues, 1U);
        QCOMPARE(translated(*file, u"en"_s, u"ja"_s, u"Cancel"_s), u"中止"_s);
    }

    void systemsWithoutTranslationsAreKnown()
    {
        const QTemporaryDir folder;
        writeFile(folder.filePath(u"docker"_s), "# path-exclude=/usr/share/locale/*\npath-exclude=/usr/share/doc/*\n");
        QVERIFY(!leavesOutCatalogues(folder.path()));
        writeFile(folder.filePath(u"excludes"_s), "path-exclude=/usr/share/man/*\npath-exclude=/usr/share/locale/*\n");
        QVERIFY(leavesOutCatalogues(folder.path()));
    }

private:
    QTemporaryDir m_folder;
    QString m_share;
    std::shared_ptr<const PhraseFile> m_file;
};

static const TestClass<PhraseTranslationTest> phraseTranslationTest;
#include "PhraseTranslationTest.moc"
