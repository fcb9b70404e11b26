// The whole job on a picture, with each of the engines whose hosts a user can't choose: the program, told of a local
// server in their place, runs in a process of its own.

#include "CommandLineProgram.h"
#include "ServiceResponder.h"

#include <QGuiApplication>
#include <QImage>
#include <QJsonArray>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

const auto runAsProgram = "--run-with-hosts-at"_ba;
const QStringList lines{u"Ferry to the northern islands"_s, u"Departs at noon from pier four"_s};

} // namespace

class EnginePicturesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void pictureIsTranslated_data();
    void pictureIsTranslated();

private:
    void writePreferences(int engine, const QString &keyAccount, const QString &key);
    QByteArray runProgram(const QStringList &arguments);

    QueuedServer m_server;
    QTemporaryDir m_home;
    QImage m_picture;
};

void EnginePicturesTest::initTestCase()
{
    QVERIFY(m_home.isValid());
    m_picture = QImage(640, 200, QImage::Format_RGB32);
    m_picture.fill(Qt::white);
    QPainter painter(&m_picture);
    QFont font(u"Noto Sans"_s);
    font.setPixelSize(24);
    painter.setFont(font);
    for (int i = 0; i < lines.size(); ++i)
        painter.drawText(40, 70 + 70 * i, lines[i]);
    painter.end();
    QVERIFY(m_picture.save(m_home.filePath(u"page.png"_s)));
    m_server.respondWith([](const ReceivedRequest &request) {
        return answerAsService(request, [](const QString &text) { return text.toUpper(); });
    });
}

void EnginePicturesTest::writePreferences(int engine, const QString &keyAccount, const QString &key)
{
    QJsonObject preferences{{u"translationEngine"_s, engine},
                            {u"targetLanguageCode"_s, u"ja"_s},
                            {u"privacy.remoteTranslation.v1.engine.%1"_s.arg(engine), true}};
    preferences.insert(keyAccount, key); // there is no keyring here to move it to
    QVERIFY(QDir(m_home.path()).mkpath(u"lucentra"_s));
    QFile file(m_home.filePath(u"lucentra/preferences.json"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QJsonDocument(preferences).toJson());
}

QByteArray EnginePicturesTest::runProgram(const QStringList &arguments)
{
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_CONFIG_HOME"_s, m_home.path());
    program.setProcessEnvironment(environment);
    program.start(QCoreApplication::applicationFilePath(),
                  QStringList{QString::fromLatin1(runAsProgram), QString::fromLatin1(m_server.origin())} + arguments);
    if (!program.waitForFinished(60000) || program.exitCode() != 0)
        qWarning() << program.exitStatus() << program.exitCode() << program.readAllStandardError();
    return program.readAllStandardOutput();
}

void EnginePicturesTest::pictureIsTranslated_data()
{
    QTest::addColumn<int>("engine");
    QTest::addColumn<QString>("keyAccount");
    QTest::addColumn<QByteArray>("path");

    QTest::newRow("Google, without a key") << 1 << u"googleApiKey"_s << "/translate_a/single"_ba;
    QTest::newRow("Google Cloud") << 1 << u"googleApiKey"_s << "/language/translate/v2"_ba;
    QTest::newRow("Microsoft") << 2 << u"microsoftApiKey"_s << "/translate"_ba;
    QTest::newRow("Gemini") << 3 << u"geminiApiKey"_s << "/v1beta/models/gemini-2.5-flash:generateContent"_ba;
    QTest::newRow("DeepL") << 4 << u"deeplApiKey"_s << "/v2/translate"_ba;
    QTest::newRow("OpenAI") << 5 << u"openAIApiKey"_s << "/v1/responses"_ba;
    QTest::newRow("Anthropic") << 6 << u"anthropicApiKey"_s << "/v1/messages"_ba;
}

void EnginePicturesTest::pictureIsTranslated()
{
    QFETCH(const int, engine);
    QFETCH(const QString, keyAccount);
    QFETCH(const QByteArray, path);
    m_server.reset();
    writePreferences(engine, keyAccount, path.startsWith("/translate_a") ? u" "_s : u"a-key"_s);

    const QString output = m_home.filePath(u"translated.png"_s);
    const QByteArray answer =
        runProgram({u"image"_s, m_home.filePath(u"page.png"_s), u"--output"_s, output, u"--json"_s});

    const QJsonObject document = QJsonDocument::fromJson(answer).object();
    QCOMPARE(document[u"engine"_s].toInt(), engine);
    const QJsonArray blocks = document[u"blocks"_s].toArray();
    QCOMPARE(blocks.size(), lines.size());
    for (int i = 0; i < lines.size(); ++i)
        QCOMPARE(blocks[i][u"translation"_s].toString(), lines[i].toUpper());
    const QImage translated(output);
    QCOMPARE(translated.size(), m_picture.size());
    QVERIFY(translated != m_picture);
    for (const ReceivedRequest &request : m_server.requests())
        QCOMPARE(request.target.split('?').first(), path);
    QVERIFY(!m_server.requests().isEmpty());
}

int main(int argc, char *argv[])
{
    if (argc > 2 && argv[1] == runAsProgram) {
        const QByteArray origin = argv[2];
        argv[2] = argv[0];
        return runCommandLine(argc - 2, argv + 2, hostsAt(origin));
    }
    const QGuiApplication application(argc, argv);
    EnginePicturesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "EnginePicturesTest.moc"
