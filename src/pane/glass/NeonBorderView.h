#pragma once

#include "AccessibilityDisplayOptions.h"
#include "FramePicture.h"
#include "NeonBorderStyle.h"

#include <QVariantAnimation>
#include <QWidget>

namespace lucentra {

class SettingsStore;

/// The pane's border: a line on the rounded edge with a glow inwards that pulses while a pass runs. It fills the pane
/// and takes no clicks.
class NeonBorderView : public QWidget
{
public:
    /// While a pass runs, the glow's opacity goes from the least to the greatest in one way's time, and back.
    static constexpr double leastPulse = 0.35;
    static constexpr double greatestPulse = 0.9;
    static constexpr int pulseWayMilliseconds = 800;

    NeonBorderView(const SettingsStore &settings, QWidget *parent = nullptr);

    /// Whether a pass runs. `updatePulse` must follow a change.
    bool isProcessing = false;

    /// Reads the colour from the settings. Also done on "UpdateNeonBorder".
    void updateColor();
    /// Starts or ends the pulse as `isProcessing`, colour and reduced motion require.
    void updatePulse();
    void accessibilityDisplayOptionsChanged(const AccessibilityDisplayOptions &options);

    double glowOpacity() const { return m_glowOpacity; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void setGlowOpacity(double opacity);
    QRegion glowRegion() const;

    const SettingsStore &m_settings;
    AccessibilityDisplayOptions m_displayOptions;
    NeonBorderStyle m_style;
    QVariantAnimation m_pulse;
    double m_glowOpacity = 0;
    FramePicture m_line;
    FramePicture m_glow;
    double m_pictureScale = 0; ///< of the two pictures; 0 if they are out of date
};

} // namespace lucentra
