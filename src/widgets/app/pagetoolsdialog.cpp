#include "pagetoolsdialog.h"

#include <QAction>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

PageToolsDialog::PageToolsDialog(const QList<Entry>& entries, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("dlgPageTools"));
    setWindowTitle(QStringLiteral("Werkzeugleiste anpassen"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Angezeigte Schaltflächen:"), this));
    for (const Entry& e : entries) {
        auto* box = new QCheckBox(e.text, this);
        box->setIcon(e.icon);
        box->setChecked(e.shown->isVisible());
        layout->addWidget(box);
        m_boxes << qMakePair(box, e.shown);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Abbrechen"));
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void PageToolsDialog::Apply() const
{
    for (const auto& [box, shown] : m_boxes)
        shown->setVisible(box->isChecked());
}
