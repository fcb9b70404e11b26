#pragma once

#include <QLineEdit>

class QTextLayout;

namespace lucentra {

/// A field for a secret that can be shown in clear. It is shown by painting alone: for whatever asks the field, such as
/// a screen reader, it holds dots at all times, and dots are what is told of its changes. While it is shown nothing of
/// it can be selected, for what is selected would be on the clipboard of selections.
class SecretEdit : public QLineEdit
{
public:
    explicit SecretEdit(QWidget *parent = nullptr);
    ~SecretEdit() override;

    /// In place of `setText`, which would tell screen readers the text.
    void setSecret(const QString &secret);
    void showInClear(bool inClear);

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    QRect textRect() const;
    void layOut(QTextLayout &layout) const;
    qreal offset(const QTextLayout &layout) const;

    bool m_isInClear = false;
};

} // namespace lucentra
