#pragma once

#include <QObject>
#include <QString>

// The direction shown on a filter, "down" or "up". A click only tells the host, which
// decides the new direction and sets Text.
class DirectionField : public QObject
{
    Q_OBJECT
public:
    explicit DirectionField(QObject* parent = nullptr);

    QString Text() const { return m_text; }
    void SetText(const QString& text);

    void Click() { emit Change(); }

signals:
    void Change();
    void textChanged(const QString& text);

private:
    QString m_text = QStringLiteral("down");
};
