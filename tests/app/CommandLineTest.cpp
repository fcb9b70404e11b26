#include "CommandLine.h"

#include "TestTexts.h"

#include <QTest>

using namespace lucentra;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(lucentra::Invocation)

class CommandLineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void argumentsAreUnderstood_data();
    void argumentsAreUnderstood();
    void wrongUsageIsSaidInWords_data();
    void wrongUsageIsSaidInWords();
    void theHelpNamesEveryCommandAndOption();
    void theBusKnowsTheSameCommands();

private:
    TestTexts m_texts;
};

void CommandLineTest::argumentsAreUnderstood_data()
{
    using Command = Invocation::Command;
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<Invocation>("invocation");
    QTest::newRow("a picture's lines") << QStringList{u"recognize"_s, u"a.png"_s}
                                       << Invocation{.command = Command::Recognize, .argument = u"a.png"_s};
    QTest::newRow("options before and after, with and without equals sign")
        << QStringList{u"image"_s, u"--output=o.png"_s, u"a.png"_s,   u"--engine"_s, u"7"_s, u"--target"_s,
                       u"ja"_s,    u"--json"_s,         u"--timing"_s}
        << Invocation{.command = Command::Image,
                      .argument = u"a.png"_s,
                      .output = u"o.png"_s,
                      .engine = 7,
                      .target = u"ja"_s,
                      .json = true,
                      .timing = true};
    QTest::newRow("the last of two values counts")
        << QStringList{u"text"_s, u"a"_s, u"--target=ja"_s, u"--target=ko"_s}
        << Invocation{.command = Command::Text, .argument = u"a"_s, .target = u"ko"_s};
    QTest::newRow("an equals sign in the value")
        << QStringList{u"image"_s, u"a.png"_s, u"--output=a=b.png"_s}
        << Invocation{.command = Command::Image, .argument = u"a.png"_s, .output = u"a=b.png"_s};
    QTest::newRow("a text that looks like an option") << QStringList{u"text"_s, u"--"_s, u"--json"_s}
                                                      << Invocation{.command = Command::Text, .argument = u"--json"_s};
    QTest::newRow("a text that begins with one dash")
        << QStringList{u"text"_s, u"-5 degrees"_s} << Invocation{.command = Command::Text, .argument = u"-5 degrees"_s};
    QTest::newRow("an empty text") << QStringList{u"text"_s, u""_s} << Invocation{.command = Command::Text};
    QTest::newRow("help on a command") << QStringList{u"text"_s, u"--help"_s} << Invocation{};
    QTest::newRow("a command of the running program")
        << QStringList{u"toggle"_s} << Invocation{.command = Command::Toggle};
    QTest::newRow("the version") << QStringList{u"--version"_s} << Invocation{.command = Command::Version};
}

void CommandLineTest::argumentsAreUnderstood()
{
    QFETCH(QStringList, arguments);
    QFETCH(Invocation, invocation);
    const auto parsed = parseCommandLine(arguments, m_texts.manager);
    QVERIFY2(parsed, qPrintable(parsed ? QString() : parsed.error().description));
    QVERIFY(*parsed == invocation);
}

void CommandLineTest::wrongUsageIsSaidInWords_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("description");
    QTest::newRow("nothing") << QStringList{} << u"缺少指令"_s;
    QTest::newRow("unknown command") << QStringList{u"fly"_s} << u"未知的指令：fly"_s;
    QTest::newRow("unknown option") << QStringList{u"text"_s, u"a"_s, u"--fast"_s} << u"未知的選項：--fast"_s;
    QTest::newRow("another command's option") << QStringList{u"text"_s, u"a"_s, u"--json"_s} << u"未知的選項：--json"_s;
    QTest::newRow("a value is missing") << QStringList{u"text"_s, u"a"_s, u"--engine"_s}
                                        << u"選項 --engine 需要一個值"_s;
    QTest::newRow("a switch with a value")
        << QStringList{u"recognize"_s, u"a"_s, u"--timing=1"_s} << u"選項 --timing 不接受值"_s;
    QTest::newRow("an engine that there isn't")
        << QStringList{u"text"_s, u"a"_s, u"--engine=8"_s} << u"選項 --engine 的值無效：8"_s;
    QTest::newRow("an engine that is no number")
        << QStringList{u"text"_s, u"a"_s, u"--engine=7x"_s} << u"選項 --engine 的值無效：7x"_s;
    QTest::newRow("a number written otherwise")
        << QStringList{u"text"_s, u"a"_s, u"--engine= +7"_s} << u"選項 --engine 的值無效： +7"_s;
    QTest::newRow("a target that is no language tag")
        << QStringList{u"text"_s, u"a"_s, u"--target=en&x=1"_s} << u"選項 --target 的值無效：en&x=1"_s;
    QTest::newRow("no picture") << QStringList{u"recognize"_s} << u"缺少參數：IMAGE"_s;
    QTest::newRow("no output") << QStringList{u"image"_s, u"a"_s} << u"缺少參數：--output"_s;
    QTest::newRow("a command of the running program takes nothing")
        << QStringList{u"show"_s, u"pane"_s} << u"多餘的參數：pane"_s;
    QTest::newRow("two texts") << QStringList{u"text"_s, u"a"_s, u"b"_s} << u"多餘的參數：b"_s;
}

void CommandLineTest::wrongUsageIsSaidInWords()
{
    QFETCH(QStringList, arguments);
    const auto parsed = parseCommandLine(arguments, m_texts.manager);
    QVERIFY(!parsed);
    QCOMPARE(parsed.error().code, int(ExitCode::WrongUsage));
    QTEST(parsed.error().description, "description");
}

void CommandLineTest::theHelpNamesEveryCommandAndOption()
{
    const QString page = helpPage(m_texts.manager);
    for (const auto name : {u"recognize IMAGE [--timing]", u"image IMAGE --output OUT.png [--engine N]", u"text TEXT",
                            u"test-connection [--engine N]"})
        QVERIFY2(page.contains(QStringView(name)), qPrintable(page));
}

void CommandLineTest::theBusKnowsTheSameCommands()
{
    const QStringList members = remoteBusMembers();
    QCOMPARE(members,
             (QStringList{u"Toggle"_s, u"Show"_s, u"Hide"_s, u"Translate"_s, u"Settings"_s, u"History"_s, u"Quit"_s}));
    for (const QString &member : members) {
        const auto parsed = parseCommandLine({member.toLower()}, m_texts.manager);
        QVERIFY(parsed);
        QCOMPARE(std::optional(parsed->command), remoteCommandOfBusMember(member));
        QCOMPARE(busMember(parsed->command), member);
    }
    QVERIFY(!remoteCommandOfName(u"image") && !remoteCommandOfBusMember(u"") && !remoteCommandOfBusMember(u"toggle"));
    QVERIFY(startsProgram(Invocation::Command::Show) && !startsProgram(Invocation::Command::Quit));
}

QTEST_GUILESS_MAIN(CommandLineTest)
#include "CommandLineTest.moc"
