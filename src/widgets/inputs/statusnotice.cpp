#include "statusnotice.h"

#include "base/userprompt.h"

#include <QMainWindow>
#include <QStatusBar>

void ShowNotice(StatusLine* line, QWidget* field, const QString& text)
{
    if (line)
        line->SetStatusText(text);
    else if (auto* main = qobject_cast<QMainWindow*>(field->window()))
        main->statusBar()->showMessage(text);
}

void ClearNotice(StatusLine* line, QWidget* field, const QString& text)
{
    if (line)
        line->ClearStatusText(text);
    else if (auto* main = qobject_cast<QMainWindow*>(field->window());
             main && main->statusBar()->currentMessage() == text)
        main->statusBar()->clearMessage();
}
