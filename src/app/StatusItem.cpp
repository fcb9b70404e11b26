#include "StatusItem.h"

#include "LocalizationManager.h"

#include <QApplication>
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

} // namespace

StatusItem::StatusItem(const LocalizationManager &texts, QMenu &menu, std::function<void()> clicked,
                       Scheduler &scheduler, std::function<bool()> isTrayThere)
    : m_texts(texts)
    , m_menu(menu)
    , m_clicked(std::move(clicked))
    , m_scheduler(scheduler)
    , m_isTrayThere(std::move(isTrayThere))
{
}

StatusItem::~StatusItem() = default;

void StatusItem::build()
{
    if (m_icon)
        m_icon->setToolTip(m_texts.localized(u"Lucentra｜澄鏡通"_s));
    else
        poll();
}

void StatusItem::renew()
{
    m_icon.reset();
    m_pollInterval = firstPollInterval;
    poll();
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
    build();
    m_icon->setContextMenu(&m_menu);
    connect(m_icon.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger)
            m_clicked();
    });
    m_icon->show();
}

} // namespace lucentra
