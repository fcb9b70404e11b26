// Another program's window, full of the texts that programs have: what the demonstration lays the pane over.
// sample_window X,Y [dark]

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QSpinBox>
#include <QStyleFactory>
#include <QTabBar>
#include <QTimer>
#include <QVBoxLayout>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

QCheckBox *checkBox(const QString &text, bool isChecked)
{
    auto *box = new QCheckBox(text);
    box->setChecked(isChecked);
    return box;
}

QGroupBox *appearance()
{
    auto *group = new QGroupBox(u"Appearance"_s);
    auto *form = new QFormLayout(group);
    auto *language = new QComboBox;
    language->addItem(u"System Default"_s);
    form->addRow(u"Language:"_s, language);
    form->addRow(u"Font:"_s, new QLineEdit(u"Noto Sans"_s));
    form->addRow(u"Size:"_s, new QSpinBox);
    return group;
}

QGroupBox *behaviour()
{
    auto *group = new QGroupBox(u"General"_s);
    auto *column = new QVBoxLayout(group);
    column->setSpacing(14);
    column->addWidget(checkBox(u"Show line numbers"_s, true));
    column->addWidget(checkBox(u"Check spelling"_s, false));
    column->addWidget(checkBox(u"Show hidden files"_s, true));
    column->addWidget(checkBox(u"Restore defaults"_s, false));
    return group;
}

QPalette darkPalette()
{
    QPalette palette(QColor(0x3c, 0x40, 0x48), QColor(0x2a, 0x2d, 0x33)); // the style derives the others
    palette.setColor(QPalette::Base, QColor(0x1f, 0x21, 0x26));
    return palette;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    QFont font(u"Noto Sans"_s);
    font.setPixelSize(16);
    QApplication::setFont(font);
    if (QApplication::arguments().contains(u"dark"_s))
        QApplication::setPalette(darkPalette());

    QWidget window;
    window.setWindowTitle(u"Preferences"_s);
    auto *column = new QVBoxLayout(&window);
    auto *menus = new QMenuBar;
    for (const QString &title : {u"File"_s, u"Edit"_s, u"View"_s, u"Tools"_s, u"Help"_s})
        menus->addMenu(title);
    column->setMenuBar(menus);
    auto *row = new QHBoxLayout;
    row->setSpacing(24);
    row->addWidget(appearance());
    row->addWidget(behaviour());
    column->addSpacing(16);
    column->addLayout(row);
    column->addSpacing(20);
    auto *buttons = new QDialogButtonBox;
    buttons->addButton(u"Apply"_s, QDialogButtonBox::ApplyRole);
    buttons->addButton(u"Cancel"_s, QDialogButtonBox::RejectRole);
    buttons->addButton(u"Save As…"_s, QDialogButtonBox::AcceptRole);
    column->addWidget(buttons);

    const QStringList place = QApplication::arguments().value(1, u"100,100"_s).split(u',');
    window.setGeometry(place.value(0).toInt(), place.value(1).toInt(), 660, 360);
    window.show();
    QTimer::singleShot(500, [] {
        std::puts("shown");
        std::fflush(stdout);
    });
    return QApplication::exec();
}
