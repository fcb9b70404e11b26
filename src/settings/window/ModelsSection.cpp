#include "ModelsSection.h"

#include "Language.h"
#include "LocalizationManager.h"
#include "MainQueue.h"
#include "Mnemonics.h"
#include "ModelInstallation.h"
#include "Settings.h"
#include "SettingsForm.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

const QString english = u"en"_s;

/// A widget that contains the others in a row.
QWidget *sideBySide(const QList<QWidget *> &widgets)
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    for (QWidget *widget : widgets)
        layout->addWidget(widget);
    return row;
}

QPushButton *makeButton()
{
    auto *button = new QPushButton;
    button->setAutoDefault(false);
    return button;
}

/// "한국어 → English → 日本語"
QString routeTitle(const LanguagePair &wanted, qsizetype steps)
{
    QStringList names{ownLanguageName(wanted.source)};
    if (steps > 1)
        names.append(ownLanguageName(english));
    names.append(ownLanguageName(wanted.target));
    return names.join(u" → "_s);
}

} // namespace

ModelsSection::ModelsSection(SettingsForm &form)
    : FormSection(form, u"翻譯模型"_s)
    , m_installation(form.services().modelInstallation)
    , m_source(new QComboBox)
    , m_download(makeButton())
    , m_needs(makeSmallPrint())
    , m_isInstalled(makeSmallPrint())
    , m_bar(new QProgressBar)
    , m_cancel(makeButton())
    , m_progress(makeSmallPrint())
    , m_failure(makeSmallPrint())
    , m_list(new QWidget)
{
    m_worker.setMaxThreadCount(1);
    addOfferRows();
    auto *list = new QVBoxLayout(m_list);
    list->setContentsMargins(0, 0, 0, 0);
    addWidget(m_list)->hide();
    addFooter(u"翻譯模型能在這部電腦上翻譯任何文字。只有在您按下按鈕時才會下載；您的文字不會傳出。"_s);
    m_installation.onChanged = [this] { showInstallation(); };
    form.keepValue([this] {
        fillSources();
        showOffer();
    });
    form.keepText([this] {
        showStored();
        showInstallation();
    });
}

ModelsSection::~ModelsSection()
{
    m_installation.onChanged = nullptr;
}

void ModelsSection::addOfferRows()
{
    m_source->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    addRow(u"來源語言"_s, m_source);
    connect(m_source, &QComboBox::activated, this, [this] {
        showOffer();
        form().onRefreshed();
    });
    QWidget *offer = sideBySide({m_download});
    static_cast<QHBoxLayout *>(offer->layout())->addStretch(1);
    addWidget(offer);
    addRemark(m_needs);
    addWidget(m_isInstalled);
    connect(m_download, &QPushButton::clicked, this, [this] {
        m_problem.reset();
        m_installation.start(wanted());
    });
    constexpr int barHeight = 8;
    m_bar->setFixedHeight(barHeight);
    m_bar->setTextVisible(false);
    addRemark(sideBySide({m_bar, m_cancel}))->hide();
    connect(m_cancel, &QPushButton::clicked, this, [this] { m_installation.cancel(); });
    addRemark(m_progress)->hide();
    addRemark(m_failure)->hide();
}

LanguagePair ModelsSection::wanted() const
{
    return {m_source->currentData().toString(), form().services().settings.read(settings::targetLanguageCode)};
}

void ModelsSection::fillSources()
{
    const QString target = wanted().target;
    if (m_source->property("target") == target)
        return;
    const QString chosen = m_source->count() > 0 ? wanted().source : english;
    m_source->setProperty("target", target);
    m_source->clear();
    for (const Language &language : languages) {
        const QString code(language.code);
        if (!modelRoute({code, target}, knownModelPairs()).isEmpty())
            m_source->addItem(ownLanguageName(code), code);
    }
    int index = m_source->findData(chosen);
    if (index < 0)
        index = m_source->findData(target == english ? u"ja"_s : english);
    m_source->setCurrentIndex(std::max(index, 0));
}

void ModelsSection::focusDownload()
{
    m_download->setFocus(Qt::OtherFocusReason);
}

void ModelsSection::refresh()
{
    const SettingsServices &services = form().services();
    m_worker.start([this, self = QPointer<QObject>(this), &mainQueue = services.mainQueue, &models = services.models] {
        mainQueue.post(self, [this, stored = models.stored()] { take(stored); });
    });
}

void ModelsSection::take(const QList<StoredModel> &stored)
{
    m_stored = stored;
    showStored();
    showOffer();
    form().onRefreshed();
}

void ModelsSection::showOffer()
{
    QList<LanguagePair> complete;
    QList<LanguagePair> begun;
    for (const StoredModel &model : m_stored)
        (model.isComplete ? complete : begun).append(model.pair);
    const MissingModels needed = missingModels(wanted(), complete);
    const bool isBegun = std::any_of(begun.begin(), begun.end(), [&needed](const LanguagePair &one) {
        return std::any_of(needed.pairs.begin(), needed.pairs.end(),
                           [&one](const LanguagePair &pair) { return isSameModelPair(one, pair); });
    });
    const bool isRunning = m_installation.isRunning();
    QString title = routeTitle(wanted(), needed.steps);
    if (needed.packedSize > 0)
        title += u", "_s + form().services().texts.formatted(u"約 %@"_s, megabyteText(needed.packedSize));
    setMnemonicText(*m_download, form().services().texts.formatted(isBegun ? u"繼續下載 %@"_s : u"下載 %@"_s, title));
    m_download->parentWidget()->parentWidget()->setVisible(!needed.pairs.isEmpty() && !isRunning);
    m_source->setEnabled(!isRunning);
    QStringList titles;
    for (const LanguagePair &pair : needed.pairs)
        titles.append(modelTitle(pair));
    m_needs->setText(form().services().texts.formatted(u"所需的翻譯模型：%@"_s, titles.join(u", "_s)));
    m_needs->parentWidget()->setVisible(!isRunning && !titles.isEmpty() && titles != QStringList(modelTitle(wanted())));
    m_isInstalled->setText(form().text(u"已安裝此語言所需的翻譯模型。"_s));
    m_isInstalled->parentWidget()->setVisible(needed.pairs.isEmpty());
    setTone(*m_isInstalled, Tone::Good);
}

void ModelsSection::showInstallation()
{
    const LocalizationManager &texts = form().services().texts;
    const ModelInstallation &installation = m_installation;
    const ModelProgress &progress = installation.progress();
    const bool isRunning = installation.isRunning();
    const bool isListed = !progress.models.isEmpty();
    m_bar->parentWidget()->parentWidget()->setVisible(isRunning);
    m_progress->parentWidget()->setVisible(isRunning);
    constexpr int barSteps = 1000;
    m_bar->setRange(0, isListed ? barSteps : 0); // of unknown duration while the list is fetched
    m_bar->setValue(progress.total > 0 ? int(progress.bytes * barSteps / progress.total) : 0);
    QStringList titles;
    for (const LanguagePair &pair : progress.models)
        titles.append(modelTitle(pair));
    m_progress->setText(isListed ? texts.formatted(u"%@：%@，共 %@"_s, titles.join(u", "_s),
                                                   megabyteText(progress.bytes), megabyteText(progress.total))
                                 : texts.localized(u"正在取得模型清單…"_s));
    m_bar->setAccessibleName(m_progress->text());
    setMnemonicText(*m_cancel, texts.localized(u"取消下載"_s));
    const auto &problem = installation.problem() ? installation.problem() : m_problem;
    m_failure->setText(problem ? modelProblemText(*problem, texts) : QString());
    setTone(*m_failure, Tone::Bad);
    m_failure->parentWidget()->setVisible(problem.has_value());
    if (std::exchange(m_wasRunning, isRunning) != isRunning) {
        showOffer();
        form().onRefreshed();
        refresh();
        if (!isRunning)
            onModelsChanged();
    }
}

void ModelsSection::showStored()
{
    const LocalizationManager &texts = form().services().texts;
    for (QWidget *row : m_list->findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
        row->hide();
        row->deleteLater();
    }
    const bool isRunning = m_installation.isRunning();
    for (const StoredModel &model : m_stored) {
        if (!model.isComplete && isRunning)
            continue;
        QString text = modelTitle(model.pair) + u", "_s + megabyteText(model.size);
        if (!model.isComplete)
            text += u", "_s + texts.localized(u"尚未下載完成"_s);
        else if (!model.isOwn)
            text += u", "_s + texts.localized(u"由系統安裝"_s);
        auto *label = new QLabel;
        label->setTextFormat(Qt::PlainText);
        label->setText(text);
        QWidget *row = sideBySide({label});
        static_cast<QHBoxLayout *>(row->layout())->addStretch(1);
        if (model.isOwn) {
            QPushButton *button = makeButton();
            setMnemonicText(*button, texts.localized(u"移除"_s));
            setAccessibleNameOnce(*button, texts.formatted(u"移除 %@"_s, modelTitle(model.pair)));
            connect(button, &QPushButton::clicked, this, [this, pair = model.pair, button] {
                button->setEnabled(false);
                removeModel(pair);
            });
            row->layout()->addWidget(button);
        }
        m_list->layout()->addWidget(row);
        row->show();
    }
    m_list->parentWidget()->setVisible(!m_stored.isEmpty());
}

void ModelsSection::removeModel(const LanguagePair &pair)
{
    const SettingsServices &services = form().services();
    m_worker.start(
        [this, pair, self = QPointer<QObject>(this), &mainQueue = services.mainQueue, &models = services.models] {
            const auto removed = models.remove(pair);
            mainQueue.post(self, [this, removed, stored = models.stored()] {
                m_problem = removed ? std::nullopt : std::optional(removed.error());
                take(stored);
                showInstallation();
                onModelsChanged();
            });
        });
}

} // namespace lucentra
