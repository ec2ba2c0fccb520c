#include "qosconnectorview.h"

#include "model/qosobject.h"
#include "objectpageview.h"
#include "page/qosconnector.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QTimerEvent>

#include <cmath>

QoSConnectorView::QoSConnectorView(QoSConnector* connector, ObjectPageView* view, QWidget* parent)
    : QWidget(parent), m_connector(connector), m_view(view)
{
    setObjectName(connector->Name());
    setFocusPolicy(Qt::ClickFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_NoSystemBackground);
    setAccessibleName(QStringLiteral("Verbindung"));
    if (QoSObject* bottom = connector->BottomQosObject())
        setAccessibleDescription(QStringLiteral("Verbindung zu ") +
                                 (bottom->Caption().isEmpty() ? bottom->Name() : bottom->Caption()));
    connect(connector, &QoSConnector::selectedChanged, this, &QoSConnectorView::showSelected);
    showSelected(connector->Selected());
}

void QoSConnectorView::detach()
{
    if (m_connector)
        disconnect(m_connector, nullptr, this, nullptr);
    m_connector = nullptr;
}

QPoint QoSConnectorView::startPoint() const
{
    if (!m_connector)
        return {};
    return QPoint((m_connector->x1() - m_connector->Left()) / 15, (m_connector->y1() - m_connector->Top()) / 15);
}

QPoint QoSConnectorView::endPoint() const
{
    if (!m_connector)
        return {};
    return QPoint((m_connector->x2() - m_connector->Left()) / 15, (m_connector->y2() - m_connector->Top()) / 15);
}

void QoSConnectorView::layoutFromConnector()
{
    updateMask();
    update();
}

void QoSConnectorView::updateMask()
{
    // The band along the line that a click or the mouse can hit, with room for the end marks.
    const QPointF a = startPoint();
    const QPointF b = endPoint();
    QRegion band(QRect(startPoint() - QPoint(4, 4), QSize(9, 9)));
    band += QRect(endPoint() - QPoint(4, 4), QSize(9, 9));
    const QPointF d = b - a;
    const double length = std::hypot(d.x(), d.y());
    if (length > 0) {
        const QPointF n(-d.y() / length * 4, d.x() / length * 4);
        band += QRegion(QPolygonF{a + n, b + n, b - n, a - n}.toPolygon());
    }
    setMask(band);
}

void QoSConnectorView::paintEvent(QPaintEvent*)
{
    if (!m_connector)
        return;
    QPainter p(this);
    const bool selected = m_connector->Selected();
    const QColor color = selected ? palette().color(QPalette::Highlight) : palette().color(QPalette::WindowText);
    QPen pen(color, m_highlighted ? HighlightWidth : NormalWidth);
    pen.setCapStyle(Qt::FlatCap);
    p.setPen(pen);
    // Half a pixel in, so that a line of even width lies on whole pixels.
    const QPointF shift(0.5, 0);
    p.drawLine(QPointF(startPoint()) + shift, QPointF(endPoint()) + shift);
    if (selected) {
        // Shape1 and Shape2: the two end marks.
        p.setPen(Qt::NoPen);
        p.setBrush(color);
        p.drawRect(QRect(startPoint() - QPoint(3, 3), QSize(7, 7)));
        p.drawRect(QRect(endPoint() - QPoint(3, 3), QSize(7, 7)));
    }
}

void QoSConnectorView::showSelected(bool selected)
{
    if (m_view)
        m_view->stackLine(this, selected);
    layoutFromConnector();
}

void QoSConnectorView::mouseMoveEvent(QMouseEvent*)
{
    if (m_highlighted)
        return;
    m_highlighted = true;
    update();
    m_timer1.start(HoverMilliseconds, this);
}

void QoSConnectorView::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer1.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    m_timer1.stop();
    m_highlighted = false;
    update();
}

void QoSConnectorView::mousePressEvent(QMouseEvent* event)
{
    // The focus (given by the click) selects the line; the page below must not see the press.
    event->accept();
}

void QoSConnectorView::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    if (m_connector && !m_connector->Selected())
        m_connector->SetSelected(true);
}

void QoSConnectorView::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    // The line's own menu or another window leaves it selected.
    if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason)
        return;
    if (m_connector && m_connector->Selected())
        m_connector->SetSelected(false);
}

bool QoSConnectorView::deletesRelation(const QKeyEvent* event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    return event->key() == Qt::Key_Delete || (event->key() == Qt::Key_X && modifiers == Qt::ControlModifier);
}

bool QoSConnectorView::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && deletesRelation(static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

void QoSConnectorView::keyPressEvent(QKeyEvent* event)
{
    if (deletesRelation(event) && m_connector) {
        m_connector->EditCut(); // deletes the connector; this view goes with it
        return;
    }
    QWidget::keyPressEvent(event);
}

QMenu* QoSConnectorView::createContextMenu(QWidget* parent)
{
    auto* menu = new QMenu(parent);
    QMenu* mnuEdit = menu->addMenu(QStringLiteral("&Bearbeiten"));
    mnuEdit->setObjectName(QStringLiteral("mnuEdit"));
    QAction* itmEditDelete = mnuEdit->addAction(QStringLiteral("&Löschen\tEntf"));
    itmEditDelete->setObjectName(QStringLiteral("itmEditDelete"));
    const QPointer<QoSConnector> connector = m_connector;
    connect(itmEditDelete, &QAction::triggered, menu, [connector] {
        if (connector)
            connector->EditCut();
    });
    // Deleting every relation at once and a properties dialog have no defined effect yet:
    // they are shown, but cannot be chosen.
    QAction* itmEditDeleteAll = mnuEdit->addAction(QStringLiteral("&Alle Löschen"));
    itmEditDeleteAll->setObjectName(QStringLiteral("itmEditDeleteAll"));
    itmEditDeleteAll->setEnabled(false);
    QMenu* mnuConnector = menu->addMenu(QStringLiteral("&Beziehung"));
    mnuConnector->setObjectName(QStringLiteral("mnuConnector"));
    QAction* itmConnectorProperties = mnuConnector->addAction(QStringLiteral("&Eigenschaften"));
    itmConnectorProperties->setObjectName(QStringLiteral("itmConnectorProperties"));
    itmConnectorProperties->setEnabled(false);
    return menu;
}

void QoSConnectorView::contextMenuEvent(QContextMenuEvent* event)
{
    setFocus(Qt::MouseFocusReason);
    QWidget* host = m_view ? static_cast<QWidget*>(m_view) : this;
    QMenu* menu = createContextMenu(host);
    connect(menu, &QMenu::aboutToHide, menu, &QObject::deleteLater);
    menu->popup(event->globalPos());
}
