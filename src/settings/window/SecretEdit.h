#pragma once

#include <QLineEdit>

class QTextLayout;

namespace lucentra {

/// A field for a secret that can be shown in clear, by painting alone. Screen readers and everything else that reads
/// the field always get dots, also for its changes. While the secret is shown, nothing can be selected, since the
/// selection would be on the clipboard of selections.
class SecretEdit : public QLineEdit
{
public:
    explicit SecretEdit(QWidget *parent = nullptr);
    ~SecretEdit() override;

    /// Use it instead of `setText`, which would report the text to screen readers.
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
