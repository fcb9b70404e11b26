#include "ConnectionSection.h"

#include "LocalizationManager.h"
#include "Mnemonics.h"
#include "SettingsForm.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

ConnectionSection::ConnectionSection(SettingsForm &form, std::function<bool()> canTest,
                                     std::function<void(std::function<void()>)> beforeTest)
    : FormSection(form, u"可用性檢查"_s)
    , m_canTest(std::move(canTest))
    , m_beforeTest(std::move(beforeTest))
    , m_button(new QPushButton)
    , m_busy(new QProgressBar)
    , m_result(makeSmallPrint())
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    layout->addWidget(m_button);
    layout->addWidget(m_busy);
    layout->addStretch(1);
    m_button->setAutoDefault(false);
    connect(m_button, &QPushButton::clicked, this, [this] { start(); });
    constexpr QSize busySize(96, 8);
    m_busy->setRange(0, 0); // of unknown duration
    m_busy->setFixedSize(busySize);
    m_busy->setTextVisible(false);
    m_busy->hide();
    form.keepText([this] {
        setMnemonicText(*m_button, this->form().text(u"測試連線"_s));
        constexpr int buttonPadding = 20;
        m_button->setMinimumWidth(m_button->fontMetrics().horizontalAdvance(m_button->text()) + 2 * buttonPadding);
        setTone(*m_result, m_isGood ? Tone::Good : Tone::Bad);
        m_busy->setAccessibleName(this->form().text(u"正在測試連線…"_s));
    });
    addWidget(row);
    addRemark(m_result)->hide();
    addFooter(u"測試會送出一小段範例文字；雲端服務可能計入極少量 API 用量。"_s);
}

void ConnectionSection::refresh()
{
    m_button->setEnabled(!m_isTestingConnection && m_canTest());
    m_busy->setVisible(m_isTestingConnection);
}

void ConnectionSection::forget()
{
    ++m_test;
    m_isTestingConnection = false;
    m_result->parentWidget()->hide();
    refresh();
}

void ConnectionSection::start()
{
    forget();
    m_isTestingConnection = true;
    refresh();
    m_beforeTest([self = QPointer(this), test = m_test] {
        if (!self || test != self->m_test)
            return;
        self->form().services().testConnection([self, test](const Result<QString> &outcome) {
            if (self && test == self->m_test)
                self->finish(outcome);
        });
    });
}

void ConnectionSection::finish(const Result<QString> &outcome)
{
    const LocalizationManager &texts = form().services().texts;
    m_isTestingConnection = false;
    m_isGood = outcome.has_value();
    m_result->setText(m_isGood ? texts.formatted(u"連線成功：%@"_s, *outcome)
                               : texts.formatted(u"連線失敗：%@"_s, outcome.error().description));
    setTone(*m_result, m_isGood ? Tone::Good : Tone::Bad);
    m_result->parentWidget()->show();
    refresh();
}

} // namespace lucentra
