#pragma once

#include <QScrollArea>

class QVBoxLayout;

namespace lucentra {

class SettingsForm;

/// One tab: a column of sections that scrolls if it is too high. Never narrower than the sections need.
class FormPage : public QScrollArea
{
public:
    FormPage();

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
