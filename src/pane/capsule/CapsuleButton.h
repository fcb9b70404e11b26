#pragma once

#include "Transition.h"

#include <QAbstractButton>

#include <chrono>

namespace lucentra {

/// How one symbol replaces another: the new one fades in and grows from a share of its size, while the old one fades
/// out and shrinks.
struct SymbolChange
{
    double smallestScale = 1;
    std::chrono::milliseconds duration{200};
    QEasingCurve curve = QEasingCurve::InOutSine;
};

/// A button of the capsule: a symbol or a short text on a round ground that lights up. It has the capsule's opacity.
/// Space and Return press it.
class CapsuleButton : public QAbstractButton
{
public:
    static constexpr int side = 30;

    explicit CapsuleButton(QWidget *parent = nullptr);

    /// The symbol to show. If the name is empty, the button shows its text.
    void setSymbol(const QString &symbol, const SymbolChange &change = {});
    /// The name for assistive programs, and the tooltip.
    void describe(const QString &label, const QString &toolTip);
    /// A small coloured dot in the button's corner.
    enum class Sign { None, Live, Trouble };
    void setSign(Sign sign);
    void setOpacity(double opacity);
    void setReduceMotion(bool reduceMotion) { m_reduceMotion = reduceMotion; }

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void paintContent(QPainter &painter, const QString &symbol, double presence) const;

    QString m_symbol;
    QString m_previousSymbol;
    Sign m_sign = Sign::None;
    double m_opacity = 1;
    bool m_reduceMotion = false;
    double m_smallestScale = 1; ///< of symbols that come and go
    double m_presence = 1;      ///< of the symbol; the rest is the previous one's
    Transition m_pressure;      ///< 0 untouched, 1 pressed
    QVariantAnimation m_change;
};

} // namespace lucentra
