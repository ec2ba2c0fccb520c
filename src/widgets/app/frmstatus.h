#pragma once

#include "base/userprompt.h"

#include <QDialog>
#include <QElapsedTimer>

class QLabel;
class QProgressBar;

// The small window shown while a file is read or the document is cleared: a caption, a
// message and a progress bar. It is modal, so that the main window repaints during the long
// loop but takes no command halfway through it.
class frmStatus final : public QDialog, public StatusWindow
{
    Q_OBJECT
public:
    explicit frmStatus(QWidget* parent = nullptr);

    void Show(const QString& caption, const QString& message) override;
    void SetCaption(const QString& caption) override;
    void SetMessage(const QString& message) override;
    void SetProgress(int value, int maximum) override;
    void Close() override;

    // The latest message, also while the window has not shown it yet.
    QString message() const;

protected:
    void reject() override {} // the loop ends the window, not the Escape key

private:
    // Shows the latest message and progress and lets the interface repaint, not more often
    // than the eye can follow.
    void pump(bool now = false);

    QLabel* m_lblMessage;
    QProgressBar* m_progress;
    QElapsedTimer m_lastPump;
    QString m_message; // the latest, shown at the next repaint
    int m_value = 0;
    int m_maximum = 0;
};
