#pragma once

#include "qosobjectbox.h"

class InputIP;
class InputOption;
class InputPort;
class InputType;
class QoSFilter;

// The box of a filter: caption, address, ports, type and option.
class QoSFilterBox final : public QoSObjectBox
{
    Q_OBJECT
public:
    QoSFilterBox(QoSFilter* filter, ObjectPageView* view, QWidget* parent);

    QoSFilter* filter() const;
    void setPrompt(UserPrompt* prompt) override;
    void setStatusLine(StatusLine* line) override;

protected:
    QString kindName() const override { return QStringLiteral("Filter"); }
    QStringList rowLabels() const override;
    void addMenuEntries(QMenu* menu) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    InputIP* m_txtIP;
    InputPort* m_inputPort1;
    InputType* m_txtType;
    InputOption* m_txtOption;
};
