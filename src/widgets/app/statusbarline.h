#pragma once

#include "base/userprompt.h"

#include <QLabel>
#include <QPointer>

class QStatusBar;

// The status line as the first panel of a status bar.
class StatusBarLine final : public StatusLine
{
public:
    explicit StatusBarLine(QStatusBar* bar);
    void SetStatusText(const QString& text) override;
    void ClearStatusText(const QString& ifShowing) override;

private:
    QPointer<QLabel> m_panel;
};
