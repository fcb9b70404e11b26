#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

namespace lucentra {

class GlassView;
class LocalizationManager;
class SettingsStore;
class TipCard;

/// What the program explains by itself. Each once; the number is a bit of the setting.
enum class FirstTip {
    Drag = 1,    ///< what the pane is for
    Missing = 2, ///< what the program needs and this computer lacks
    Models = 4,  ///< what is translated without models
    Hotkey = 8,
};

/// Explains the pane to a new user, at most one thing at a time, in cards at the places they are about. Doing the thing
/// ends a tip as its button does. No tip covers translations, other texts or the capsule; if one has no room, another is shown or it waits.
class FirstTips : public QObject
{
public:
    struct Circumstances
    {
        // Asked after a pass.
        std::function<QString()> missing;  ///< what the program needs and how to get it; empty if nothing is missing
        std::function<bool()> lacksModels; ///< whether the engine in use would need models for free text
        std::function<QString()> hotkey;   ///< that shows and hides the pane; empty if there is none

        std::function<void()> openModels; ///< shows where models are downloaded
    };

    FirstTips(GlassView &pane, SettingsStore &settings, const LocalizationManager &texts, Circumstances circumstances);
    ~FirstTips() override;

    /// The user has done what a tip explains. It isn't shown any more.
    void done(FirstTip tip);
    /// To be called when what is on the pane, or the pane's size, has changed.
    void update();

private:
    bool isDone(FirstTip tip) const;
    bool isDue(FirstTip tip) const;
    QString textOf(FirstTip tip) const;
    void show(FirstTip tip);
    void hide();
    bool place();

    GlassView &m_pane;
    SettingsStore &m_settings;
    const LocalizationManager &m_texts;
    const Circumstances m_circumstances;
    bool m_wasTranslated = false; ///< at the last update
    bool m_isTipOwed = false;     ///< none has been shown yet beside these translations
    bool m_isUpdating = false;
    FirstTip m_shown{};       ///< of the card
    QPointer<TipCard> m_card; ///< belongs to the pane
};

} // namespace lucentra
