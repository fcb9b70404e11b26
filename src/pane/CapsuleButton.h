#pragma once

#include <QAbstractButton>
#include <QVariantAnimation>

#include <chrono>

namespace lucentra {

/// A button of the capsule: a symbol or a short text on a round ground that lights up. The capsule's own opacity is
/// the button's, too. Space and Return press it.
class CapsuleButton : public QAbstractButton
{
public:
    static constexpr int side = 30;

    /// How a symbol takes the place of another: it fades in, and grows from a share of its size.
    struct SymbolChange
    {
        double fromScale = 1;
        std::chrono::milliseconds duration{200};
        QEasingCurve curve = QEasingCurve::InOutSine;
    };

    explicit CapsuleButton(QWidget *parent = nullptr);

    /// What the button shows: the name of a symbol, or else its text.
    void setSymbol(const QString &symbol);
    void setSymbolChange(const SymbolChange &change) { m_symbolChange = change; }
    /// Shows the button, or hides it; its symbol grows where it appears.
    void setShown(bool shown);
    /// What the button is to assistive programs, and what it says when the pointer rests on it.
    void describe(const QString &label, const QString &toolTip);
    void setOpacity(double opacity);
    void setReduceMotion(bool reduceMotion) { m_reduceMotion = reduceMotion; }

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void animatePress(bool down);
    void animateSymbol(const QString &previous, const SymbolChange &change);
    void paintContent(QPainter &painter, const QString &symbol, double presence, double scale) const;

    QString m_symbol;
    QString m_previousSymbol;
    double m_opacity = 1;
    bool m_reduceMotion = false;
    SymbolChange m_symbolChange;
    double m_fromScale = 1;
    double m_pressure = 0; ///< 0 untouched, 1 pressed
    double m_presence = 1; ///< of the symbol; the rest is the previous one's
    QVariantAnimation m_press;
    QVariantAnimation m_change;
};

} // namespace lucentra
