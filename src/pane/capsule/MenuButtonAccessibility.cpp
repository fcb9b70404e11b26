#include "MenuButtonAccessibility.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QHash>
#include <QMenu>
#include <QPointer>

namespace lucentra {

namespace {

QHash<const QObject *, QPointer<QMenu>> &menus()
{
    static QHash<const QObject *, QPointer<QMenu>> all;
    return all;
}

class AccessibleMenuButton : public QAccessibleWidget
{
public:
    explicit AccessibleMenuButton(QAbstractButton *button)
        : QAccessibleWidget(button, QAccessible::ButtonMenu)
    {
    }

    int childCount() const override { return menu() ? 1 : 0; }
    QAccessibleInterface *child(int index) const override
    {
        return index == 0 && menu() ? QAccessible::queryAccessibleInterface(menu()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        return child && menu() && child->object() == menu() ? 0 : -1;
    }
    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString &name) override
    {
        if (name == pressAction())
            static_cast<QAbstractButton *>(widget())->click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    QMenu *menu() const { return menus().value(object()); }
};

QAccessibleInterface *accessibleMenuButton(const QString &, QObject *object)
{
    return menus().contains(object) ? new AccessibleMenuButton(static_cast<QAbstractButton *>(object)) : nullptr;
}

} // namespace

void showMenuInAccessibleTree(QAbstractButton &button, QMenu *menu)
{
    static const bool isInstalled = (QAccessible::installFactory(accessibleMenuButton), true);
    Q_UNUSED(isInstalled);
    if (!menus().contains(&button))
        QObject::connect(&button, &QObject::destroyed, [](QObject *gone) { menus().remove(gone); });
    menus()[&button] = menu;
}

} // namespace lucentra
