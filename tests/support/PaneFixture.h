#pragma once

#include "GlassView.h"
#include "LocalizationManager.h"
#include "ManualScheduler.h"
#include "PaneControls.h"
#include "PaneWindowHints.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "TransparentWindow.h"

#include <QAbstractButton>
#include <QTemporaryDir>
#include <QWindow>

namespace lucentra {

/// A window system that does nothing but remember.
class RecordedHints : public PaneWindowHints
{
public:
    void apply(const QWindow &, const PaneWindowPresence &presence) override { applied.append(presence); }
    bool isPointerButtonDown() const override { return false; }
    void setHoldHandler(const QWindow &, std::function<void(bool)>) override {}
    void endDrag(const QWindow &) override {}
    void place(QWidget &window, const QRect &frame) override { window.setGeometry(frame); }
    bool startMove(QWindow &window) override { return window.startSystemMove(); }
    bool startResize(QWindow &window, Qt::Edges edges) override { return window.startSystemResize(edges); }
    bool hasInputFocus(const QWindow &) const override { return true; }
    void setAbove(const QWindow &, bool) override {}
    void activate(const QWindow &) override {}

    QList<PaneWindowPresence> applied;
};

/// The pane in its window, with settings of its own and a clock that is pushed. Texts are their keys.
struct PaneFixture
{
    explicit PaneFixture(const AccessibilityDisplayOptions &options = {.reduceMotion = true})
        : view(new GlassView({settings, texts, scheduler}, options))
    {
        window.setContentView(view);
        controls.showPristineHint();
        controls.onTranslateTapped = [this] { ++passes; };
    }

    /// Everything that can be seen of the pane.
    QImage picture() { return window.grab().toImage(); }

    QTemporaryDir folder;
    SettingsStore settings{folder.filePath(QStringLiteral("preferences.json"))};
    LocalizationManager texts{settings, folder.path(), {QStringLiteral("zh-Hant")}};
    ManualScheduler scheduler;
    RecordedHints hints;
    TransparentWindow window{{hints, settings, texts, scheduler}};
    GlassView *view;
    PaneControls controls{*view, settings, texts};
    int passes = 0;
};

/// The same on the screen.
struct ShownPane : PaneFixture
{
    ShownPane() { window.show(); }
};

/// The view of a class on another one. Null if there is none or more than one.
template <typename View>
View *only(QWidget *parent)
{
    View *found = nullptr;
    for (QWidget *each : parent->findChildren<QWidget *>()) {
        if (auto *view = dynamic_cast<View *>(each)) {
            if (found)
                return nullptr;
            found = view;
        }
    }
    return found;
}

/// The button with an accessible name, where it is shown.
inline QAbstractButton *buttonNamed(QWidget *parent, const QString &name)
{
    for (QAbstractButton *button : parent->findChildren<QAbstractButton *>()) {
        if (button->accessibleName() == name && !button->isHidden())
            return button;
    }
    return nullptr;
}

} // namespace lucentra
