#pragma once

#include <QDialog>
#include <QIcon>
#include <QList>
#include <QPair>

class QAction;
class QCheckBox;

// "Werkzeugleiste anpassen": which buttons of the page toolbar are shown, one check box each.
class PageToolsDialog final : public QDialog
{
    Q_OBJECT
public:
    struct Entry
    {
        QString text;
        QIcon icon;
        QAction* shown; // the toolbar's action of the button
    };

    explicit PageToolsDialog(const QList<Entry>& entries, QWidget* parent = nullptr);

    // Shows and hides the buttons as their boxes say.
    void Apply() const;

private:
    QList<QPair<QCheckBox*, QAction*>> m_boxes;
};
