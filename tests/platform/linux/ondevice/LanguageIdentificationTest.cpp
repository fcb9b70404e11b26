#include "CatalogueBytes.h"
#include "Columns.h"
#include "ScreenLanguageIdentifier.h"
#include "TestProgram.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

/// Of the catalogues on this computer; the toolkit's own are always among them.
std::shared_ptr<const PhraseFile> memoryOfThisComputer()
{
    static const auto file = phrasesIn(CatalogueFolders::ofThisSystem());
    return file;
}

std::shared_ptr<const PhraseFile> noMemory()
{
    return nullptr;
}

} // namespace

class LanguageIdentificationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void scriptsDecide_data()
    {
        const auto row = columns<QString, QString>("text", "code");
        row("nothing", u""_s, u""_s);
        row("numbers and signs", u"12,345.67 € (+3 %)"_s, u""_s);
        row("an address", u"https://example.org/a/page?q=1"_s, u""_s);
        row("a path and a mail address", u"/usr/share/doc me@example.org"_s, u""_s);
        row("a keyboard shortcut", u"Ctrl+Shift+S"_s, u""_s);
        row("a kana makes it Japanese", u"設定を変更"_s, u"ja"_s);
        row("a long vowel mark misread in Chinese", u"ー個檔案無法開啟"_s, u"zh-Hant"_s);
        row("hangul among Latin letters", u"PDF 파일"_s, u"ko"_s);
        row("traditional beside a program's name", u"Firefox 擴充套件"_s, u"zh-Hant"_s);
        row("characters of Japan alone", u"両替対応"_s, u"ja"_s);
        row("Ukrainian letters", u"Зберегти зміни"_s, u"uk"_s);
        // Languages that the memory doesn't have aren't taken for their neighbours.
        row("Swedish", u"Filen kunde inte sparas eftersom disken är full"_s, u"sv"_s);
        row("Catalan", u"No s'ha pogut desar el fitxer perquè el disc és ple"_s, u"ca"_s);
        row("Welsh", u"Methwyd cadw'r ffeil gan fod y ddisg yn llawn"_s, u"cy"_s);
        row("a megabyte", u"Save the file and close the window. "_s.repeated(30'000), u"en"_s);
        row("Thai", u"บันทึกการเปลี่ยนแปลง"_s, u"th"_s);
    }
    void scriptsDecide()
    {
        QFETCH(QString, text);
        for (const auto &memory : {&noMemory, &memoryOfThisComputer}) {
            ScreenLanguageIdentifier identifier(memory);
            QTEST(identifier.identify({text}).value(0), "code");
        }
    }

    void ambiguousLinesFollowTheOthers()
    {
        ScreenLanguageIdentifier identifier(&noMemory);
        const QString ambiguous = u"音量"_s; // the same in all three
        QCOMPARE(identifier.identify({u"検索を開始する"_s, ambiguous, u"終わり"_s}).value(1), u"ja"_s);
        QCOMPARE(identifier.identify({ambiguous, u"关闭窗口"_s}).value(0), u"zh-Hans"_s);
        QCOMPARE(identifier.identify({ambiguous, u"關閉視窗"_s}).value(0), u"zh-Hant"_s);
        // What can't be in a language doesn't become so for company.
        QCOMPARE(identifier.identify({u"検索を開始する"_s, u"关闭窗口"_s, u"終わり"_s}).value(1), u"zh-Hans"_s);
    }

    void wordsOfEnglishAreEnglish()
    {
        const QTemporaryDir folder;
        const auto install = [&](const QString &name, const Messages &messages) {
            installCatalogue(folder.path(), u"es"_s, name, moBytes(messages));
        };
        for (const QString &name : {u"first.mo"_s, u"second.mo"_s}) {
            install(name, {{"End", "Final"},
                           {"Close the window", "Cerrar la ventana"},
                           {"The final copy", "La copia"},
                           {"A final word", "Una palabra"},
                           {"Final checks", "Pruebas"},
                           {"Last week", "Semana última"}});
        }
        ScreenLanguageIdentifier identifier([file = phrasesIn({.dataFolders = {folder.path()}})] { return file; });
        QCOMPARE(identifier.identify({u"Final"_s}), QStringList{u"en"_s}); // though English has it within phrases only
        QCOMPARE(identifier.identify({u"Cerrar la ventana"_s}), QStringList{u"es"_s});
        ScreenLanguageIdentifier ofThisComputer(&memoryOfThisComputer);
        QCOMPARE(ofThisComputer.identify({u"Cerrar la ventana"_s, u"Final"_s}).value(1), u"es"_s);
    }

    /// The n-grams of programs' phrases would take these for Dutch or German.
    void everydayEnglishIsEnglish()
    {
        ScreenLanguageIdentifier identifier(&memoryOfThisComputer);
        for (const QString &text :
             {u"hello world"_s, u"Good night"_s, u"I am hungry"_s, u"Hello John"_s, u"Best wishes"_s})
            QCOMPARE(identifier.identify({text}), QStringList{u"en"_s});
    }

    void shortLinesAreToldRight()
    {
        QFile file(QStringLiteral(LANGUAGES));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
        QVERIFY(lines.size() >= 300);
        // Programs that are installed change the share with this computer's catalogues a little, so it isn't tight.
        for (const auto &[memory, mostWrong] : {std::pair(&memoryOfThisComputer, 0.07), std::pair(&noMemory, 0.12)}) {
            ScreenLanguageIdentifier identifier(memory);
            QStringList wrong;
            for (const QString &line : lines) {
                const QString code = identifier.identify({line.section(u'\t', 1)}).value(0);
                if (code != line.section(u'\t', 0, 0))
                    wrong.append(line + u" -> "_s + code);
            }
            QVERIFY2(double(wrong.size()) <= mostWrong * double(lines.size()), qPrintable(wrong.join(u'\n')));
        }
    }
};

static const TestClass<LanguageIdentificationTest> languageIdentificationTest;
#include "LanguageIdentificationTest.moc"
