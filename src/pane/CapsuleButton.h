#pragma once

#include <QAbstractButton>

namespace lucentra {

/// A button of the capsule: a symbol or a short text on a round ground that lights up. The capsule's own opacity is
/// the button's, too.
class CapsuleButton : public QAbstractButton
{
public:
    static constexpr int side = 30;

    explicit CapsuleButton(QWidget *parent = nullptr);

    /// What the button shows: the name of a symbol, or else its text.
    void setSymbol(const QString &symbol);
    /// What the button is to assistive programs, and what it says when the pointer rests on it.
    void describe(const QString &label, const QString &toolTip);
    void setOpacity(double opacity);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_symbol;
    double m_opacity = 1;
};

} // namespace lucentra
