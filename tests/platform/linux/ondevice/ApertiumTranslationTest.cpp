#include "ApertiumTranslation.h"
#include "Columns.h"
#include "Files.h"
#include "TestProgram.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

using namespace lucentra;
using namespace Qt::StringLiterals;

/// Plays the installed program by scripts: a mode's file is the pipeline itself.
class ApertiumTranslationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_apertium.reset();
        m_folder = std::make_unique<QTemporaryDir>();
        writeFile(m_folder->filePath(u"pipeline"_s), "#!/bin/sh\ncat \"$2\"\n");
        QFile::setPermissions(m_folder->filePath(u"pipeline"_s), QFile::ReadOwner | QFile::ExeOwner);
    }

    void modesAreLanguagePairs()
    {
        install(u"spa-eng.mode"_s, {});
        install(u"spa-eng_US.mode"_s, {});
        install(u"oc-es.mode"_s, {});
        ApertiumTranslation apertium(m_folder->filePath(u"pipeline"_s), m_folder->path());
        QCOMPARE(apertium.status().value(0).pairs, (QList<LanguagePair>{{u"oc"_s, u"es"_s}, {u"es"_s, u"en"_s}}));
        const auto kindOf = [&](const LanguagePair &pair) { return apertium.translate(pair, {u"a"_s}, {}).value(0).kind; };
        QVERIFY(kindOf({u"es"_s, u"en-US"_s}) != OnDeviceOutcome::Kind::PairUnavailable);
        QCOMPARE(kindOf({u"en"_s, u"es"_s}), OnDeviceOutcome::Kind::PairUnavailable);
        QVERIFY(ApertiumTranslation({}, m_folder->path()).status().isEmpty());
    }

    void answers_data()
    {
        const auto row = columns<QByteArray, QString, QString>("script", "source", "translation");
        const QByteArray echo = "while IFS= read -r -d '' text; do printf '%s\\0' \"$text\"; done";
        row("what means something in its stream", echo, u"a [b] <c> ^d$ \\ e/f *"_s, u"a [b] <c> ^d$ \\ e/f *"_s);
        row("other scripts", echo, u"日本 ñ"_s, u"日本 ñ"_s);
        row("one unknown word of three", "while IFS= read -r -d '' t; do printf 'the *perro eats[][\\n]\\0'; done",
            u"el perro come"_s, u"the perro eats"_s);
        row("mostly unknown words", "while IFS= read -r -d '' t; do printf 'the *perro *come\\0'; done",
            u"el perro come"_s, {});
        row("not UTF-8", "while IFS= read -r -d '' t; do printf '\\xff\\xfe\\0'; done", u"hola"_s, {});
        row("nothing", "while IFS= read -r -d '' t; do printf '\\0'; done", u"hola"_s, {});
        row("it ends at once", "exit 1", u"hola"_s, {});
    }
    void answers()
    {
        const auto [script, source, translation] = fetched<QByteArray, QString, QString>();
        install(u"spa-eng.mode"_s, script);
        const auto outcomes = translate({source});
        QCOMPARE(outcomes.size(), 1);
        QCOMPARE(outcomes[0].kind,
                 translation.isEmpty() ? OnDeviceOutcome::Kind::UnknownPhrase : OnDeviceOutcome::Kind::Translated);
        QCOMPARE(outcomes[0].text, translation);
    }

    void oneProcessServesMany()
    {
        install(u"spa-eng.mode"_s, "n=0; while IFS= read -r -d '' t; do n=$((n+1)); printf 'answer %s\\0' $n; done");
        QStringList texts;
        for (const auto &outcomes : {translate({u"a"_s, u"b"_s}), translate({u"c"_s})}) {
            for (const OnDeviceOutcome &outcome : outcomes)
                texts.append(outcome.text);
        }
        QCOMPARE(texts, (QStringList{u"answer 1"_s, u"answer 2"_s, u"answer 3"_s}));
    }

    void aProcessThatEndsIsStartedAgain()
    {
        install(u"spa-eng.mode"_s, "IFS= read -r -d '' t; printf 'once\\0'");
        QCOMPARE(translate({u"a"_s}).value(0).text, u"once"_s);
        // The first question after its end may still find it there; the next one finds another.
        const QString second = translate({u"b"_s}).value(0).text;
        const QString third = translate({u"c"_s}).value(0).text;
        QVERIFY(second == u"once"_s || third == u"once"_s);
    }

    void nobodyWaitsForWhatIsNotWanted()
    {
        install(u"spa-eng.mode"_s, "exec sleep 60");
        QElapsedTimer timer;
        timer.start();
        int looks = 0;
        const auto outcomes = translate({u"a"_s, u"b"_s, u"c"_s}, [&looks] { return ++looks < 3; });
        QCOMPARE(outcomes.size(), 3);
        QVERIFY(timer.elapsed() < 8000); // less than one answer would be waited for
    }

private:
    void install(const QString &mode, const QByteArray &script) { writeFile(m_folder->filePath(mode), script); }

    QList<OnDeviceOutcome> translate(const QStringList &texts, const std::function<bool()> &isWanted = {})
    {
        if (!m_apertium)
            m_apertium = std::make_unique<ApertiumTranslation>(m_folder->filePath(u"pipeline"_s), m_folder->path());
        return m_apertium->translate({u"es"_s, u"en-US"_s}, texts, isWanted);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<ApertiumTranslation> m_apertium;
};

static const TestClass<ApertiumTranslationTest> apertiumTranslationTest;
#include "ApertiumTranslationTest.moc"
