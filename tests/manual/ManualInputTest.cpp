#include "Columns.h"
#include "LongTextEdit.h"
#include "MainQueue.h"
#include "ManualInputView.h"
#include "ManualInputViewModel.h"
#include "ManualScheduler.h"
#include "TestProgram.h"
#include "TestTexts.h"

#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QTest>

#include <ctime>
#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace lucentra;

namespace {

/// A model whose requests are kept and answered when a test says so.
struct Typing
{
    Typing()
    {
        model->onTranslate = [this](const QString &text, ManualInputViewModel::Completion completion) {
            requests << text;
            completions << std::move(completion);
        };
    }

    void answer(int request, const QString &text, const QString &note = {})
    {
        completions.at(request)({.text = text, .note = note});
        queue.drain();
    }

    /// "=text" types, "+ms" waits, "!" translates now, "n>text" answers the request n; "copy" and "reset".
    void perform(const QString &step)
    {
        if (step.startsWith(u'='))
            model->setInputText(step.mid(1));
        else if (step.startsWith(u'+'))
            clock.advance(std::chrono::milliseconds(step.mid(1).toInt()));
        else if (step == u"!")
            model->translateNow();
        else if (step == u"copy")
            model->copyResult();
        else if (step == u"reset")
            model->reset();
        else
            answer(step.section(u'>', 0, 0).toInt(), step.section(u'>', 1));
        queue.drain();
    }

    /// The translation, with "…" while a request runs and "✓" while a copy is confirmed.
    QString shown() const
    {
        return model->translatedText() + (model->isTranslating() ? u"…"_s : QString()) +
               (model->isCopied() ? u"✓"_s : QString());
    }

    ManualScheduler clock;
    MainQueue queue;
    QStringList requests;
    QStringList copies;
    QList<ManualInputViewModel::Completion> completions;
    std::unique_ptr<ManualInputViewModel> model =
        std::make_unique<ManualInputViewModel>(clock, queue, [this](const QString &text) { copies << text; });
};

} // namespace

class ManualInputTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void longLinesSurviveUndoing()
    {
        const QString line(4800, u'x');
        QGuiApplication::clipboard()->setText(line + u"\nend"_s);
        LongTextEdit editor;
        editor.paste();
        QCOMPARE(editor.wholeText(), line + u"\nend"_s);
        editor.selectAll();
        QTest::keyClick(&editor, Qt::Key_Delete);
        QCOMPARE(editor.wholeText(), QString());
        editor.undo();
        QCOMPARE(editor.wholeText(), line + u"\nend"_s);
        while (editor.document()->isUndoAvailable())
            editor.undo();
        while (editor.document()->isRedoAvailable())
            editor.redo();
        editor.undo(); // of the deletion
        QCOMPARE(editor.wholeText(), line + u"\nend"_s);

        QTextCursor cursor(editor.document());
        cursor.setPosition(LongTextEdit::greatestPiece + 100);
        editor.setTextCursor(cursor);
        QTest::keyClick(&editor, Qt::Key_Return);
        QCOMPARE(editor.wholeText().count(u'\n'), 2);
        QCOMPARE(editor.wholeText().size(), line.size() + 5);
    }

    void whatIsSentAndShown_data()
    {
        const auto row = columns<QStringList, QStringList, QString>("steps", "requests", "shown");

        const QStringList threeKeys{u"=a"_s, u"+400"_s, u"=ab"_s, u"+400"_s, u"=abc"_s, u"+599"_s};
        row("a moment before the pause's end", threeKeys, {}, u""_s);
        row("three keys, then a pause", threeKeys + QStringList{u"+1"_s}, {u"abc"_s}, u"…"_s);
        row("white space around it", {u"= \n a\u3000b\t\n"_s, u"+600"_s, u"0>AB"_s}, {u"a\u3000b"_s}, u"AB"_s);
        row("nothing but white space", {u"= \n\u3000"_s, u"!"_s, u"+600"_s}, {}, u""_s);
        row("emptied after a translation", {u"=a"_s, u"+600"_s, u"0>A"_s, u"= "_s, u"+600"_s}, {u"a"_s}, u""_s);

        const QStringList overtaken{u"=a"_s, u"+600"_s, u"=ab"_s, u"0>A"_s};
        row("the answer to the longer text", overtaken + QStringList{u"+600"_s, u"1>AB"_s}, {u"a"_s, u"ab"_s}, u"AB"_s);
        row("the older answer comes last", {u"=a"_s, u"+600"_s, u"=ab"_s, u"+600"_s, u"1>AB"_s, u"0>A"_s},
            {u"a"_s, u"ab"_s}, u"AB"_s);
        row("the text is again what was sent", {u"=a"_s, u"+600"_s, u"=ab"_s, u"=a "_s, u"0>A"_s}, {u"a"_s}, u"A"_s);
        row("the old translation stays until the new one comes", {u"=a"_s, u"!"_s, u"0>A"_s, u"=ab"_s, u"+600"_s},
            {u"a"_s, u"ab"_s}, u"A…"_s);

        row("now, and the pause sends nothing more", {u"=a"_s, u"+300"_s, u"!"_s, u"+600"_s}, {u"a"_s}, u"…"_s);
        row("the same text twice, both", {u"=a"_s, u"!"_s, u"!"_s, u"1>second"_s, u"0>first"_s}, {u"a"_s, u"a"_s},
            u"second"_s);

        row("reset while one is under way", {u"=a"_s, u"!"_s, u"reset"_s, u"0>A"_s}, {u"a"_s}, u""_s);
        row("reset, and the same text again", {u"=a"_s, u"!"_s, u"reset"_s, u"=a"_s, u"0>A"_s, u"!"_s, u"1>B"_s},
            {u"a"_s, u"a"_s}, u"B"_s);

        const QStringList translated{u"=a"_s, u"!"_s, u"0>A"_s};
        const QStringList copiedTwice = translated + QStringList{u"copy"_s, u"+1000"_s, u"copy"_s, u"+1499"_s};
        row("copied twice, and confirmed", copiedTwice + QStringList{u"+1"_s}, {u"a"_s}, u"A"_s);
        row("nothing to copy", {u"=a"_s, u"!"_s, u"copy"_s}, {u"a"_s}, u"…"_s);
        row("reset ends the confirmation", translated + QStringList{u"copy"_s, u"reset"_s}, {u"a"_s}, u""_s);
    }

    void whatIsSentAndShown()
    {
        QFETCH(QStringList, steps);
        Typing typing;
        for (const QString &step : steps)
            typing.perform(step);
        QTEST(typing.requests, "requests");
        QTEST(typing.shown(), "shown");
        QCOMPARE(typing.copies.size(), steps.contains(u"0>A"_s) ? steps.count(u"copy"_s) : 0);
    }

    void emptiedAndTypedAgainAtOnce()
    {
        Typing typing;
        typing.perform(u"=a"_s);
        typing.model->translateNow();
        typing.model->setInputText({});
        typing.model->setInputText(u"b"_s);
        typing.model->translateNow();
        typing.queue.drain();
        QCOMPARE(typing.shown(), u"…"_s); // of "b": its wheel isn't stopped by what the empty text left behind
    }

    void notesComeWithWhatIsShown()
    {
        Typing typing;
        typing.model->setInputText(u"a"_s);
        typing.model->translateNow();
        typing.model->translateNow();
        typing.answer(0, u"A"_s, u"stale"_s);
        QVERIFY(typing.model->note().isEmpty());
        typing.answer(1, u"A"_s, u"why"_s);
        QCOMPARE(typing.model->note(), u"why"_s);
        typing.model->setInputText(u" "_s);
        typing.queue.drain();
        QVERIFY(typing.model->note().isEmpty());
    }

    void answersFromAnotherThreadAndAfterTheEnd()
    {
        Typing typing;
        typing.model->setInputText(u"a"_s);
        typing.model->translateNow();
        std::thread([&] { typing.completions[0]({.text = u"A"_s}); }).join();
        QCOMPARE(typing.shown(), u"…"_s);
        typing.queue.drain();
        QCOMPARE(typing.shown(), u"A"_s);
        typing.model->setInputText({});
        typing.model.reset();
        typing.answer(0, u"too late"_s);
        QVERIFY(typing.clock.isIdle());
    }

    void aMegabyteIsPasted()
    {
        for (const QString &text :
             {u"lighthouse keeper\n"_s.repeated(60000), u"lighthouse keeper "_s.repeated(60000),
              u"👩‍🚀燈塔管理員"_s.repeated(100000)}) { // one word of characters of several units
            Typing typing;
            TestTexts texts;
            ManualInputView view(*typing.model, texts.manager, true);
            view.resize(464, 240);
            view.show();
            auto *editor = dynamic_cast<QPlainTextEdit *>(view.focusProxy());
            const std::clock_t begin = std::clock(); // processor time: others may be at work
            QGuiApplication::clipboard()->setText(text);
            editor->paste();
            view.grab();
            QTest::keyClicks(editor, u"abc"_s);
            view.grab();
            typing.clock.advance(600ms);
            QCOMPARE(typing.requests, QStringList{text + u"abc"_s});
            typing.answer(0, text);
            view.resize(400, 240);
            view.grab();
            QVERIFY(std::clock() - begin < 20 * CLOCKS_PER_SEC); // without the split into lines it takes minutes

            editor->selectAll();
            editor->copy();
            QCOMPARE(QGuiApplication::clipboard()->text(), text + u"abc"_s);
        }
    }
};

static const TestClass<ManualInputTest, QApplication> manualInputTest;
#include "ManualInputTest.moc"
