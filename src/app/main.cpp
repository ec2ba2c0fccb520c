#include "app/dialogprompt.h"
#include "app/statusbarline.h"
#include "inputs/inputbandwidth.h"
#include "inputs/inputdirection.h"
#include "inputs/inputip.h"
#include "inputs/inputoption.h"
#include "inputs/inputport.h"
#include "inputs/inputprio.h"
#include "inputs/inputtype.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QMainWindow>
#include <QStatusBar>
#include <QVBoxLayout>

namespace {

// Adds a row whose label also names the field for a screen reader.
void addRow(QFormLayout* form, const QString& label, QWidget* field)
{
    auto* caption = new QLabel(label);
    caption->setBuddy(field->focusProxy() ? field->focusProxy() : field);
    form->addRow(caption, field);
}

} // namespace

// Until the main window with its pages arrives, the input fields are shown on one plain form.
int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tarnwick"));
    // Qt's own texts (file dialogs, the edit menus of text boxes) in German where installed.
    QTranslator qtGerman;
    if (qtGerman.load(QLocale(QLocale::German, QLocale::Germany), QStringLiteral("qtbase"), QStringLiteral("_"),
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&qtGerman);

    QMainWindow window;
    window.setObjectName(QStringLiteral("frmMain"));
    window.setWindowTitle(QStringLiteral("Tarnwick"));
    DialogPrompt prompt(&window);
    StatusBarLine status(window.statusBar());

    auto* central = new QWidget(&window);
    auto* column = new QVBoxLayout(central);
    column->setContentsMargins(12, 12, 12, 12);
    column->setSpacing(12);

    auto* classGroup = new QGroupBox(QStringLiteral("Klasse"), central);
    auto* classForm = new QFormLayout(classGroup);
    auto* minimum = new InputBandwidth(classGroup);
    minimum->setPrompt(&prompt);
    minimum->setLabel(QStringLiteral("Minimum"));
    minimum->field()->SetBandwidth(QStringLiteral("768kbit"));
    auto* maximum = new InputBandwidth(classGroup);
    maximum->setPrompt(&prompt);
    maximum->setLabel(QStringLiteral("Maximum"));
    maximum->field()->SetBandwidth(QStringLiteral("10Mbit"));
    auto* prio = new InputPrio(classGroup);
    addRow(classForm, QStringLiteral("&Minimum:"), minimum);
    addRow(classForm, QStringLiteral("Ma&ximum:"), maximum);
    addRow(classForm, QStringLiteral("&Priorität:"), prio);

    auto* filterGroup = new QGroupBox(QStringLiteral("Filter"), central);
    auto* filterForm = new QFormLayout(filterGroup);
    auto* ip = new InputIP(filterGroup);
    ip->setPrompt(&prompt);
    auto* port = new InputPort(filterGroup);
    port->setPrompt(&prompt);
    port->setStatusLine(&status);
    auto* type = new InputType(filterGroup);
    auto* option = new InputOption(filterGroup);
    auto* direction = new InputDirection(filterGroup);
    ip->setMaximumWidth(240);
    port->setMaximumWidth(240);
    type->setMaximumWidth(120);
    option->setMaximumWidth(120);
    direction->setMaximumWidth(80);
    addRow(filterForm, QStringLiteral("&IP-Adresse:"), ip);
    addRow(filterForm, QStringLiteral("P&orts:"), port);
    addRow(filterForm, QStringLiteral("&Typ:"), type);
    addRow(filterForm, QStringLiteral("O&ption:"), option);
    addRow(filterForm, QStringLiteral("&Richtung:"), direction);

    // The host decides the direction: here it simply toggles.
    QObject::connect(direction, &InputDirection::Change, direction, [direction] {
        DirectionField* f = direction->field();
        f->SetText(f->Text() == u"down" ? QStringLiteral("up") : QStringLiteral("down"));
    });

    column->addWidget(classGroup);
    column->addWidget(filterGroup);
    column->addStretch(1);
    window.setCentralWidget(central);
    status.SetStatusText(QStringLiteral("Bereit"));
    window.resize(420, 380);
    window.show();
    return app.exec();
}
