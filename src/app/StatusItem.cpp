#include "StatusItem.h"

#include "LiveItem.h"
#include "LocalizationManager.h"
#include "VirtualKeys.h"

#include <QApplication>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QStyle>
#include <QSystemTrayIcon>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

const QString imageName = u"com.tarnby.lucentra-symbolic"_s;

/// The icon, drawn in its proportions in a place of any size. Trays that look an icon up in the desktop's theme and
/// give it their panel's colour get its name if the theme has it.
class StatusImage : public QIconEngine
{
public:
    explicit StatusImage(const QIcon &drawing)
        : m_drawing(drawing)
    {
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        const int side = std::min(rect.width(), rect.height());
        QRect square(0, 0, side, side);
        square.moveCenter(rect.center());
        m_drawing.paint(painter, square, Qt::AlignCenter, mode, state);
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }
    QString iconName() override { return QIcon::hasThemeIcon(imageName) ? imageName : QString(); }
    QIconEngine *clone() const override { return new StatusImage(*this); }

private:
    QIcon m_drawing;
};

QIcon statusImage()
{
    QIcon drawing(u":/lucentra/icons/"_s + imageName + u".svg"_s);
    if (drawing.pixmap(24).isNull())
        drawing = QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
    QIcon image(new StatusImage(drawing)); // which owns it
    image.setIsMask(true);
    return image;
}

/// An earlier version stored keys without a letter as private-use characters.
QString keyName(const QString &key)
{
    constexpr char16_t firstFunctionKey = 0xF704;
    constexpr char16_t lastFunctionKey = 0xF717; // F20
    static const QHash<QString, QString> names{
        {u"\uF700"_s, u"Up"_s},    {u"\uF701"_s, u"Down"_s}, {u"\uF702"_s, u"Left"_s},
        {u"\uF703"_s, u"Right"_s}, {u"\uF728"_s, u"Del"_s},  {u"\uF729"_s, u"Home"_s},
        {u"\uF72B"_s, u"End"_s},   {u"\uF72C"_s, u"PgUp"_s}, {u"\uF72D"_s, u"PgDown"_s}};
    if (key.size() == 1 && key[0].unicode() >= firstFunctionKey && key[0].unicode() <= lastFunctionKey)
        return u'F' + QString::number(key[0].unicode() - firstFunctionKey + 1);
    return names.value(key, key.toUpper());
}

QKeySequence keySequence(quint32 flags, const QString &key)
{
    QStringList parts;
    if (flags & modifierFlag::control)
        parts.append(u"Ctrl"_s);
    if (flags & modifierFlag::option)
        parts.append(u"Alt"_s);
    if (flags & modifierFlag::shift)
        parts.append(u"Shift"_s);
    if (flags & modifierFlag::command)
        parts.append(u"Meta"_s);
    parts.append(keyName(key));
    return QKeySequence(parts.join(u'+'), QKeySequence::PortableText);
}

} // namespace

StatusItem::StatusItem(const LocalizationManager &texts, const ShellActions &actions, Scheduler &scheduler,
                       std::function<bool()> isTrayThere)
    : m_texts(texts)
    , m_actions(actions)
    , m_scheduler(scheduler)
    , m_isTrayThere(std::move(isTrayThere))
{
}

StatusItem::~StatusItem() = default;

QAction *StatusItem::add(const QString &key, const QKeySequence &shortcut, std::function<void()> act)
{
    QAction *action = m_menu.addAction(m_texts.localized(key));
    action->setShortcut(shortcut);
    connect(action, &QAction::triggered, this, std::move(act));
    return action;
}

void StatusItem::build()
{
    m_menu.clear();
    QAction *toggle = add(u"顯示/隱藏 翻譯板"_s, Qt::ALT | Qt::Key_T, [this] { m_actions.toggleWindow(); });
    toggle->setData(toggleTag);
    add(u"翻譯目前區域"_s, Qt::ALT | Qt::Key_Return, [this] { m_actions.translateCurrentArea(); });
    m_live = add(liveItemKey.toString(), {}, [this] { m_actions.setLive(m_live->isChecked()); });
    m_live->setCheckable(true);
    updateLive();
    m_menu.addSeparator();
    add(u"翻譯歷史紀錄"_s, {}, [this] { m_actions.openHistory(); });
    add(u"設定…"_s, Qt::CTRL | Qt::Key_Comma, [this] { m_actions.openSettings(); });
    m_menu.addSeparator();
    add(u"結束 Lucentra｜澄鏡通"_s, Qt::CTRL | Qt::Key_Q, [] { QCoreApplication::exit(); });
    if (m_icon)
        m_icon->setToolTip(m_texts.localized(u"Lucentra｜澄鏡通"_s));
    else
        poll();
}

void StatusItem::updateLive()
{
    if (m_live)
        showLiveState(*m_live, m_actions, m_texts);
}

void StatusItem::renew()
{
    m_icon.reset();
    m_pollInterval = firstPollInterval;
    poll();
}

void StatusItem::setToggleKeys(quint32 flags, const QString &key)
{
    const QList<QAction *> items = m_menu.actions();
    for (QAction *item : items) {
        if (item->data() == toggleTag)
            item->setShortcut(keySequence(flags, key));
    }
}

void StatusItem::poll()
{
    if (m_isTrayThere()) {
        makeIcon();
        return;
    }
    m_poll = m_scheduler.after(m_pollInterval, [this] { poll(); });
    m_pollInterval = std::min(m_pollInterval * 2, longestPollInterval);
}

void StatusItem::makeIcon()
{
    m_icon = std::make_unique<QSystemTrayIcon>(statusImage());
    m_icon->setToolTip(m_texts.localized(u"Lucentra｜澄鏡通"_s));
    m_icon->setContextMenu(&m_menu);
    connect(m_icon.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger)
            m_actions.toggleWindow();
    });
    m_icon->show();
}

} // namespace lucentra
