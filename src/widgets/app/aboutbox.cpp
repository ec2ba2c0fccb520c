#include "aboutbox.h"

#include "toolicons.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace {

// Newest first; one line per change a user notices.
const char* const History = R"(<h4>0.1.0</h4>
<ul>
<li>Hauptfenster mit den Seiten „Allgemein“, „Down“ und „Up“, Werkzeugleisten, Menüs und Statuszeile</li>
<li>Klassenrechner als Seitenleiste</li>
<li>Öffnen, Speichern unter (sicher über eine temporäre Datei), Generieren in die Zwischenablage</li>
<li>Zuletzt geöffnete Dateien; Fenster und Einstellungen bleiben in config.ini erhalten</li>
<li>Warnung, wenn eine Datei nicht vollständig gelesen wurde</li>
</ul>
<h4>0.0.x</h4>
<ul>
<li>Lesen und Schreiben der qos.txt, Kommandozeilenwerkzeug tarnwick-cli</li>
<li>Eingabefelder für Bandbreiten, Adressen, Ports, Typ, Option, Priorität und Richtung</li>
</ul>)";

} // namespace

QString AboutBox::Version()
{
    return QStringLiteral("%1.%2.%3")
        .arg(TARNWICK_VERSION_MAJOR)
        .arg(TARNWICK_VERSION_MINOR)
        .arg(TARNWICK_VERSION_PATCH);
}

AboutBox::AboutBox(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("Über Tarnwick"));
    auto* icon = new QLabel(this);
    icon->setPixmap(ToolIcons::icon(ToolIcons::Picture::Program).pixmap(64, 64));
    icon->setAccessibleName(QStringLiteral("Programmsymbol"));
    auto* title = new QLabel(QStringLiteral("<b>Tarnwick %1</b><br>Editor für die QoS-Konfiguration qos.txt "
                                            "eines Routers<br><a href=\"%2\">%2</a>")
                                 .arg(Version(), HomePage()),
                             this);
    title->setObjectName(QStringLiteral("lblVersion"));
    title->setOpenExternalLinks(true);
    title->setTextInteractionFlags(Qt::TextBrowserInteraction);
    title->setAccessibleName(QStringLiteral("Tarnwick %1").arg(Version()));
    auto* history = new QTextBrowser(this);
    history->setObjectName(QStringLiteral("txtHistory"));
    history->setAccessibleName(QStringLiteral("Versionsgeschichte"));
    history->setHtml(QString::fromUtf8(History));
    history->setMinimumSize(460, 200);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setText(QStringLiteral("Schließen"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* head = new QHBoxLayout;
    head->addWidget(icon, 0, Qt::AlignTop);
    head->addWidget(title, 1);
    auto* column = new QVBoxLayout(this);
    column->addLayout(head);
    column->addWidget(new QLabel(QStringLiteral("Versionsgeschichte:"), this));
    column->addWidget(history);
    column->addWidget(buttons);
}
