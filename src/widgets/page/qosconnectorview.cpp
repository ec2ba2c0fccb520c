#include "qosconnectorview.h"

#include "model/qosconnector.h"
#include "model/qosobject.h"
#include "objectpageview.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

#include <algorithm>
#include <cmath>

QoSConnectorView::QoSConnectorView(QoSConnector* connector, ObjectPageView* view, QWidget* parent)
    : QWidget(parent), m_connector(connector), m_view(view)
{
    setObjectName(connector->Name());
    setFocusPolicy(Qt::ClickFocus);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setAccessibleName(QStringLiteral("Verbindung"));
    if (QoSObject* bottom = connector->BottomQosObject())
        setAccessibleDescription(QStringLiteral("Verbindung zu ") +
                                 (bottom->Caption().isEmpty() ? bottom->Name() : bottom->Caption()));
}

void QoSConnectorView::detach()
{
    m_connector = nullptr;
}

// --- look and reach of a line ------------------------------------------------------------------

QPointF QoSConnectorView::markCentre(const QLineF& line, bool atStart)
{
    const double length = line.length();
    if (length <= 0)
        return line.p1();
    const double inset = std::min<double>(MarkInset, length / 2);
    const QPointF step = (line.p2() - line.p1()) / length * inset;
    return atStart ? line.p1() + step : line.p2() - step;
}

double QoSConnectorView::distance(const QLineF& line, bool selected, const QPointF& point)
{
    const QPointF d = line.p2() - line.p1();
    const double squared = QPointF::dotProduct(d, d);
    double t = squared > 0 ? QPointF::dotProduct(point - line.p1(), d) / squared : 0;
    t = std::clamp(t, 0.0, 1.0);
    const QPointF nearest = line.p1() + d * t;
    double best = std::hypot(point.x() - nearest.x(), point.y() - nearest.y());
    if (selected) {
        // A mark is hit anywhere on its square.
        for (const bool atStart : {true, false}) {
            const QPointF c = markCentre(line, atStart);
            const double dx = std::max(0.0, std::abs(point.x() - c.x()) - MarkSize / 2.0);
            const double dy = std::max(0.0, std::abs(point.y() - c.y()) - MarkSize / 2.0);
            best = std::min(best, std::hypot(dx, dy));
        }
    }
    return best;
}

QLineF QoSConnectorView::clip(const QLineF& line, const QRectF& rect)
{
    // Liang-Barsky: the part of the line between the parameters that stay inside.
    const double dx = line.dx();
    const double dy = line.dy();
    double t0 = 0;
    double t1 = 1;
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {line.x1() - rect.left(), rect.right() - line.x1(), line.y1() - rect.top(),
                         rect.bottom() - line.y1()};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0) {
            if (q[i] < 0)
                return {};
            continue;
        }
        const double t = q[i] / p[i];
        if (p[i] < 0)
            t0 = std::max(t0, t);
        else
            t1 = std::min(t1, t);
        if (t0 > t1)
            return {};
    }
    return QLineF(line.pointAt(t0), line.pointAt(t1));
}

namespace {

QPen linePen(const QColor& color, int width)
{
    QPen pen(color, width);
    pen.setCapStyle(Qt::FlatCap);
    return pen;
}

// Half a pixel in, so that a line of even width lies on whole pixels.
QLineF onPixels(const QLine& line)
{
    return QLineF(line).translated(0.5, 0);
}

} // namespace

void QoSConnectorView::paintLines(QPainter& painter, const QList<QLine>& lines, const QPalette& palette)
{
    if (lines.isEmpty())
        return;
    painter.setPen(linePen(palette.color(QPalette::WindowText), NormalWidth));
    QList<QLineF> shifted;
    shifted.reserve(lines.size());
    for (const QLine& line : lines)
        shifted << onPixels(line);
    painter.drawLines(shifted);
}

void QoSConnectorView::paintLine(QPainter& painter, const QLine& line, bool selected, bool highlighted,
                                 const QPalette& palette)
{
    const QColor color = selected ? palette.color(QPalette::Highlight) : palette.color(QPalette::WindowText);
    painter.setPen(linePen(color, highlighted ? HighlightWidth : NormalWidth));
    painter.drawLine(onPixels(line));
    if (selected) {
        // Shape1 and Shape2: the two end marks.
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        for (const bool atStart : {true, false}) {
            const QPointF c = markCentre(line, atStart);
            const QPoint corner(qRound(c.x() - MarkSize / 2.0), qRound(c.y() - MarkSize / 2.0));
            painter.drawRect(QRect(corner, QSize(MarkSize, MarkSize)));
        }
        painter.setBrush(Qt::NoBrush);
    }
}

// --- the selected line as a control ------------------------------------------------------------

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
    // Deselected, the line lets its view drop this widget.
    if (m_connector)
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

void QoSConnectorView::showContextMenu(const QPoint& globalPos)
{
    QWidget* host = m_view ? static_cast<QWidget*>(m_view) : this;
    QMenu* menu = createContextMenu(host);
    connect(menu, &QMenu::aboutToHide, menu, &QObject::deleteLater);
    menu->popup(globalPos);
}

void QoSConnectorView::contextMenuEvent(QContextMenuEvent* event)
{
    // The menu key while the line has the focus.
    setFocus(Qt::MouseFocusReason);
    showContextMenu(event->globalPos());
}
