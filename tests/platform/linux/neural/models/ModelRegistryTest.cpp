// Which models a list offers, whatever else it holds, and which models a translation goes through.

#include "ModelRegistry.h"
#include "Columns.h"
#include "TestProgram.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

const QString hash(64, u'a');

QJsonObject record(const QString &kind, const QJsonObject &changes = {})
{
    QJsonObject attachment{{u"hash"_s, hash},
                           {u"size"_s, 10},
                           {u"filename"_s, u"f.zst"_s},
                           {u"location"_s, u"main/"_s + kind + u".zst"_s}};
    QJsonObject all{{u"name"_s, kind + (kind.endsWith(u"vocab") ? u".enja.spm"_s : u".enja.bin"_s)},
                    {u"sourceLanguage"_s, u"en"_s},
                    {u"targetLanguage"_s, u"ja"_s},
                    {u"architecture"_s, u"base"_s},
                    {u"version"_s, u"2.0"_s},
                    {u"fileType"_s, kind},
                    {u"decompressedSize"_s, 20},
                    {u"decompressedHash"_s, hash},
                    {u"attachment"_s, attachment}};
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        if (attachment.contains(change.key()))
            attachment[change.key()] = change.value();
        else
            all[change.key()] = change.value();
    }
    all[u"attachment"_s] = attachment;
    return all;
}

QJsonArray model(const QJsonObject &changes = {})
{
    return {record(u"model"_s, changes), record(u"lex"_s, changes), record(u"vocab"_s, changes)};
}

QJsonArray joined(const QList<QJsonArray> &parts)
{
    QJsonArray all;
    for (const QJsonArray &part : parts) {
        for (const QJsonValue &value : part)
            all.append(value);
    }
    return all;
}

} // namespace

class ModelRegistryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void chooses_data()
    {
        // edition: empty: none is offered
        const auto row = columns<QJsonArray, QString>("records", "edition");
        const auto with = [](const char16_t *key, const QString &value) {
            return model({{QString::fromUtf16(key), value}});
        };
        const auto version = [&](const QString &value) { return with(u"version", value); };
        const auto only = [&](const QString &condition) {
            return model({{u"version"_s, u"9.0"_s}, {u"filter_expression"_s, condition}});
        };
        row("versions are numbers", joined({version(u"2.10"_s), version(u"2.9"_s)}), u"2.10 base"_s);
        row("a release before newer test versions",
            joined({version(u"2.1b2"_s), version(u"2.0"_s), version(u"3.0a1"_s)}), u"2.0 base"_s);
        row("a beta before a nightly version", joined({version(u"2.1b2"_s), version(u"3.0a1"_s)}), u"2.1b2 base"_s);
        row("the better architecture",
            joined({with(u"architecture", u"tiny"_s), with(u"architecture", u"base-memory"_s), model()}),
            u"2.0 base-memory"_s);
        row("for telephones", joined({only(u"env.appinfo.OS == 'Android'"_s)}), {});
        row("not for telephones", joined({model(), only(u"env.appinfo.OS != 'Android'"_s)}), u"9.0 base"_s);
        row("for testers", joined({model(), only(u"env.channel == 'default' || env.channel == 'nightly'"_s)}),
            u"2.0 base"_s);
        row("an unknown condition", joined({model(), only(u"env.locale == 'de'"_s)}), u"2.0 base"_s);
        row("files of different versions",
            {record(u"model"_s), record(u"lex"_s), record(u"vocab"_s, {{u"version"_s, u"1.0"_s}})}, {});
        row("two vocabularies", {record(u"model"_s), record(u"lex"_s), record(u"srcvocab"_s), record(u"trgvocab"_s)},
            u"2.0 base"_s);
        row("one of two vocabularies", {record(u"model"_s), record(u"lex"_s), record(u"srcvocab"_s)}, {});
        row("other values among the records", joined({{1, QJsonValue(), u"x"_s}, model()}), u"2.0 base"_s);
    }

    void chooses()
    {
        const auto [records, edition] = fetched<QJsonArray, QString>();
        const auto models = readModelRegistry(QJsonDocument(QJsonObject{{u"data"_s, records}}).toJson());
        QVERIFY(models);
        QCOMPARE(models->isEmpty() ? QString() : models->first().edition(), edition);
        QVERIFY(models->isEmpty() || models->first().files.size() >= 3);
    }

    void refusesFields_data()
    {
        const auto row = columns<QString, QJsonValue>("key", "value");
        row("a name in another folder", u"name"_s, u"model.x/../../.bashrc.bin"_s);
        row("a hidden name", u"name"_s, u".model.bin"_s);
        row("a name of another kind", u"name"_s, u"vocab.bin"_s);
        row("a location above the files", u"location"_s, u"main/../x.zst"_s);
        row("a location on another server", u"location"_s, u"//evil.example/x.zst"_s);
        row("a line break in the location", u"location"_s, u"main/x.zst\n"_s);
        row("no hash", u"hash"_s, QString());
        row("a short hash", u"decompressedHash"_s, u"abc"_s);
        row("an empty file", u"size"_s, 0);
        row("an endless file", u"decompressedSize"_s, 1e18);
        row("a language with a path", u"sourceLanguage"_s, u"../en"_s);
        row("a version with control characters", u"version"_s, u"2.0\x1b[2J"_s);
        row("a number for a text", u"architecture"_s, 7);
    }

    void refusesFields()
    {
        const auto [key, value] = fetched<QString, QJsonValue>();
        const QJsonArray records{record(u"model"_s, {{key, value}}), record(u"lex"_s), record(u"vocab"_s)};
        const auto models = readModelRegistry(QJsonDocument(QJsonObject{{u"data"_s, records}}).toJson());
        QVERIFY(models);
        QVERIFY(models->isEmpty());
    }

    void routes_data()
    {
        const auto row = columns<QString, QStringList, QStringList>("wanted", "available", "route");
        const QStringList all{u"en-ja"_s, u"ja-en"_s, u"en-zh"_s, u"zh-en"_s, u"ko-en"_s};
        row("direct", u"en-ja"_s, all, {u"en-ja"_s});
        row("by way of English", u"ko-ja"_s, all, {u"ko-en"_s, u"en-ja"_s});
        row("half of the way", u"ja-ko"_s, all, {});
        row("Traditional from Simplified", u"en-zh-Hant"_s, all, {u"en-zh"_s});
        row("Traditional by itself", u"zh-Hant-en"_s, all + QStringList{u"zh-Hant-en"_s}, {u"zh-Hant-en"_s});
        row("Simplified isn't made from Traditional", u"en-zh-Hans"_s, {u"en-zh-Hant"_s}, {});
        row("kinds of Chinese", u"zh-Hans-zh-Hant"_s, all, {});
        row("the two kinds by way of English", u"ja-zh-Hans"_s, all, {u"ja-en"_s, u"en-zh"_s});
    }

    void routes()
    {
        const auto [wanted, available, route] = fetched<QString, QStringList, QStringList>();
        QList<LanguagePair> pairs;
        for (const QString &name : available)
            pairs.append(modelPair(name).value());
        QStringList found;
        for (const LanguagePair &pair : modelRoute(modelPair(wanted).value(), pairs))
            found.append(modelName(pair));
        QCOMPARE(found, route);
    }
};

static const TestClass<ModelRegistryTest> modelRegistryTest;
#include "ModelRegistryTest.moc"
