#pragma once

#include <QScrollArea>

class QVBoxLayout;

namespace lucentra {

class SettingsForm;

/// One tab: sections below each other, which scroll up and down where they don't fit. Never narrower than they need.
class FormPage : public QScrollArea
{
public:
    explicit FormPage(QWidget *parent = nullptr);

    void addSection(QWidget *section);

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int neededWidth() const;

    QVBoxLayout *m_sections;
};

} // namespace lucentra
