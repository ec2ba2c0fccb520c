#include "frmstatus.h"

#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace {

// Repainting after every one of thousands of steps would take longer than the steps.
constexpr qint64 PumpIntervalMs = 40;

} // namespace

frmStatus::frmStatus(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      m_lblMessage(new QLabel(this)), m_progress(new QProgressBar(this))
{
    setObjectName(QStringLiteral("frmStatus"));
    setWindowModality(Qt::ApplicationModal);
    m_lblMessage->setObjectName(QStringLiteral("lblMessage"));
    m_lblMessage->setAccessibleDescription(QStringLiteral("Meldung des Fortschritts"));
    m_lblMessage->setMinimumWidth(m_lblMessage->fontMetrics().horizontalAdvance(QLatin1Char('x')) * 48);
    m_lblMessage->setWordWrap(true);
    m_progress->setObjectName(QStringLiteral("prgStatus"));
    m_progress->setAccessibleName(QStringLiteral("Fortschritt"));
    m_progress->setRange(0, 0);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_lblMessage);
    layout->addWidget(m_progress);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void frmStatus::Show(const QString& caption, const QString& message)
{
    m_value = m_maximum = 0; // busy until a step count is known
    SetCaption(caption);
    m_message = QString(message).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    show();
    raise();
    pump(true);
}

void frmStatus::SetCaption(const QString& caption)
{
    setWindowTitle(caption);
}

void frmStatus::SetMessage(const QString& message)
{
    m_message = message;
    m_message.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    pump();
}

void frmStatus::SetProgress(int value, int maximum)
{
    m_maximum = qMax(0, maximum);
    m_value = qBound(0, value, m_maximum);
    pump();
}

void frmStatus::Close()
{
    hide();
}

QString frmStatus::message() const
{
    return m_message;
}

void frmStatus::pump(bool now)
{
    if (!now && m_lastPump.isValid() && m_lastPump.elapsed() < PumpIntervalMs)
        return;
    // The message and the bar show the latest step only when the window is drawn anyway: a
    // label or a bar set at every step repaints at every step.
    if (m_lblMessage->text() != m_message) {
        m_lblMessage->setText(m_message);
        m_lblMessage->setAccessibleName(m_message);
    }
    if (m_progress->maximum() != m_maximum)
        m_progress->setRange(0, m_maximum);
    if (m_progress->value() != m_value)
        m_progress->setValue(m_value);
    QCoreApplication::processEvents();
    m_lastPump.restart();
}
