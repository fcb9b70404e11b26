#include "Tabs.h"

#include "FormSection.h"
#include "SettingsForm.h"

#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

QWidget *makeHeader(SettingsForm &form)
{
    const SettingsServices &services = form.services();
    auto *header = new QWidget;
    auto *layout = new QVBoxLayout(header);
    layout->setContentsMargins(0, 12, 0, 4);
    layout->setSpacing(6);
    constexpr int iconSize = 72;
    auto *icon = new QLabel;
    icon->setPixmap(services.applicationIcon.pixmap(QSize(iconSize, iconSize), header->devicePixelRatioF()));
    auto *name = new QLabel;
    form.keepText([&form, name] { name->setText(form.text(u"Lucentra｜澄鏡通"_s)); });
    constexpr qreal nameSize = 1.6;
    QFont font = name->font();
    font.setPointSizeF(font.pointSizeF() * nameSize);
    font.setBold(true);
    name->setFont(font);
    QLabel *version = makeSmallPrint();
    version->setAlignment(Qt::AlignHCenter);
    version->setText(services.version);
    layout->addWidget(icon, 0, Qt::AlignHCenter);
    layout->addWidget(name, 0, Qt::AlignHCenter);
    layout->addWidget(version);
    return header;
}

} // namespace

FormPage *makeAboutTab(SettingsForm &form)
{
    auto *tab = new FormPage;
    tab->addSection(makeHeader(form));
    return tab;
}

} // namespace lucentra
