#include "CommandLine.h"
#include "TestProgram.h"

#include "Columns.h"
#include "TestTexts.h"

#include <QTest>

using namespace lucentra;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(lucentra::Invocation)

class CommandLineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void argumentsAreUnderstood_data()
    {
        const auto row = columns<Invocation>("invocation");
        row("recognize a.png", {.command = u"recognize", .argument = u"a.png"_s});
        row("image --output=o.png a.png --engine 7 --target ja --paragraphs --json --timing", {.command = u"image",
                                                                                               .argument = u"a.png"_s,
                                                                                               .output = u"o.png"_s,
                                                                                               .engine = 7,
                                                                                               .target = u"ja"_s,
                                                                                               .paragraphs = true,
                                                                                               .json = true,
                                                                                               .timing = true});
        row("text a --target=ja --target=ko", {.command = u"text", .argument = u"a"_s, .target = u"ko"_s});
        row("image a.png --output=a=b.png", {.command = u"image", .argument = u"a.png"_s, .output = u"a=b.png"_s});
        row("text -- --json", {.command = u"text", .argument = u"--json"_s});
        row("text -5°", {.command = u"text", .argument = u"-5°"_s});
        row("text ", {.command = u"text"}); // an empty text
        row("models run a --max-length-factor 1.5",
            {.command = u"models run", .argument = u"a"_s, .maxLengthFactor = 1.5});
        row("text --help", {});
        row("live --help", {});
        row("toggle", {.command = u"toggle"});
        row("--version", {.command = u"version"});
    }

    void argumentsAreUnderstood()
    {
        QFETCH(Invocation, invocation);
        const auto parsed = parseCommandLine(QString::fromUtf8(QTest::currentDataTag()).split(u' '), m_texts.manager);
        QVERIFY2(parsed, qPrintable(parsed ? QString() : parsed.error().description));
        QVERIFY(*parsed == invocation);
    }

    void wrongUsageIsSaidInWords_data()
    {
        columns<QStringList, QString>("arguments", "description");
        const auto row = [](const char *arguments, const QString &description) {
            QTest::newRow(arguments) << QString::fromUtf8(arguments).split(u' ') << description;
        };
        QTest::newRow("nothing") << QStringList() << u"缺少指令"_s;
        QTest::newRow("a number written otherwise")
            << QStringList{u"text"_s, u"a"_s, u"--engine= +7"_s} << u"選項 --engine 的值無效： +7"_s;
        row("fly", u"未知的指令：fly"_s);
        row("live", u"缺少參數：on|off|toggle"_s);
        row("live fly", u"未知的指令：live fly"_s);
        row("text a --fast", u"未知的選項：--fast"_s);
        row("text a --json", u"未知的選項：--json"_s); // another command's
        row("text a --engine", u"選項 --engine 需要一個值"_s);
        row("recognize a --timing=1", u"選項 --timing 不接受值"_s);
        row("text a --engine=8", u"選項 --engine 的值無效：8"_s);
        row("text a --engine=7x", u"選項 --engine 的值無效：7x"_s);
        row("text a --target=en&x=1", u"選項 --target 的值無效：en&x=1"_s);
        row("models run a --max-length-factor=0", u"選項 --max-length-factor 的值無效：0"_s);
        row("models run a --max-length-factor=nan", u"選項 --max-length-factor 的值無效：nan"_s);
        row("recognize", u"缺少參數：IMAGE"_s);
        row("image a", u"缺少參數：--output"_s);
        row("show pane", u"多餘的參數：pane"_s);
        row("text a b", u"多餘的參數：b"_s);
    }

    void wrongUsageIsSaidInWords()
    {
        QFETCH(QStringList, arguments);
        const auto parsed = parseCommandLine(arguments, m_texts.manager);
        QVERIFY(!parsed);
        QCOMPARE(parsed.error().code, int(ExitCode::WrongUsage));
        QTEST(parsed.error().description, "description");
    }

private:
    TestTexts m_texts;
};

static const TestClass<CommandLineTest> commandLineTest;
#include "CommandLineTest.moc"
