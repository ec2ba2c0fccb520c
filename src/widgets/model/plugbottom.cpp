#include "plugbottom.h"

#include "model/qosclass.h"

#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>

PlugBottom::PlugBottom(QoSClass* owner, QWidget* parent) : QWidget(parent), m_owner(owner)
{
    setObjectName(QStringLiteral("PlugBottom"));
    setCursor(Qt::PointingHandCursor);
    setToolTip(QStringLiteral("Auf eine Klasse oder einen Filter ziehen, um sie hier unterzuordnen"));
    setAccessibleName(QStringLiteral("Anschluss"));
    setAccessibleDescription(
        QStringLiteral("Auf eine Klasse oder einen Filter ziehen, um sie hier unterzuordnen"));
}

QString PlugBottom::MimeType()
{
    return QStringLiteral("application/x-tarnwick-plug");
}

void PlugBottom::paintEvent(QPaintEvent*)
{
    // A small tab hanging from the box's bottom edge, in the colour of the lines it makes.
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    p.setBrush(palette().color(QPalette::WindowText));
    const QRectF r = QRectF(rect()).adjusted(0.5, -3, -0.5, -0.5);
    p.drawRoundedRect(r, 3, 3);
}

void PlugBottom::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    m_pressed = true;
    m_pressPos = event->position().toPoint();
}

void PlugBottom::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_pressed || !m_owner ||
        (event->position().toPoint() - m_pressPos).manhattanLength() < QApplication::startDragDistance())
        return;
    m_pressed = false;
    auto* data = new QMimeData;
    data->setData(MimeType(), m_owner->Name().toUtf8());
    auto* drag = new QDrag(this);
    drag->setMimeData(data);
    drag->exec(Qt::LinkAction);
}

void PlugBottom::mouseReleaseEvent(QMouseEvent*)
{
    m_pressed = false;
}
