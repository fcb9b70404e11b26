#pragma once

#include "Callback.h"

#include <QList>
#include <QObject>
#include <QPoint>
#include <QString>

#include <functional>
#include <memory>

class QAction;
class QHelpEvent;
class QMouseEvent;

namespace lucentra {

class LocalizationManager;
class OverlayView;

/// What the user does with the translations on the pane: copies them, finds them in the history, drags them out of the
/// pane with Ctrl held, chooses one by the arrow keys, and reads those that are cut off as tool tips.
class OverlayActions : public QObject
{
public:
    /// `pane` is the view that gets the pointer's events over the overlays.
    OverlayActions(QWidget &pane, OverlayView &overlays, const LocalizationManager &texts);

    // Either may be empty.
    Callback<> onCopied;
    Callback<const QString &, const QString &> onOpenInHistory;

    /// The menu's items for the overlay at a point of the pane, with a separator after them; empty if there is none.
    /// They act on the texts of this moment and are deleted at the next call.
    QList<QAction *> menuItemsAt(QPoint place);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void copy(const QString &text);
    void showWhole(const QHelpEvent &event);
    bool press(const QMouseEvent &event);
    void drag();
    QAction *add(const QString &textKey, std::function<void()> act);

    QWidget &m_pane;
    OverlayView &m_overlays;
    const LocalizationManager &m_texts;
    std::unique_ptr<QObject> m_items; ///< parent of the menu's items
    QString m_held;                   ///< the text under the pressed button; empty if no drag may begin
    QPoint m_pressed;
};

} // namespace lucentra
