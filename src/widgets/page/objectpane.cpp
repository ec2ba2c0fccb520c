#include "objectpane.h"

#include "base/twips.h"
#include "model/objectpage.h"
#include "model/qosconnector.h"
#include "model/qosobject.h"
#include "objectpageview.h"
#include "qosconnectorview.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <cmath>

namespace {

QColor mix(const QColor& a, const QColor& b, double share)
{
    return QColor::fromRgbF(float(a.redF() * (1 - share) + b.redF() * share),
                            float(a.greenF() * (1 - share) + b.greenF() * share),
                            float(a.blueF() * (1 - share) + b.blueF() * share));
}

} // namespace

ObjectPane::ObjectPane(ObjectPageView* view) : QWidget(view), m_view(view)
{
    setObjectName(QStringLiteral("ObjectPane"));
    // The page itself is where Tab enters it; from here Tab goes to the first box.
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    // The lines drawn here light up under the mouse.
    setMouseTracking(true);
    setAccessibleName(QStringLiteral("Seite"));
}

void ObjectPane::paintEvent(QPaintEvent* event)
{
    const ObjectPage* page = m_view->page();
    const ObjectPageProperties& prop = page->prop();
    const QPoint offset = m_view->scrollPosition();
    const QSize size = m_view->pageSize();
    const QRect exposed = event->rect();
    const QPalette& pal = palette();

    QPainter p(this);
    p.fillRect(exposed, pal.color(QPalette::Window).darker(106)); // beyond the page
    const QRect pageRect = QRect(-offset, size).intersected(exposed);
    if (pageRect.isEmpty())
        return;
    const QColor base = pal.color(QPalette::Base);
    p.fillRect(pageRect, base);

    // Column and row edges in page pixels; only the ones in the exposed part are touched.
    const double colPx = Twips::ToPixelsF(prop.ColWidth);
    const double rowPx = Twips::ToPixelsF(prop.RowHeight);
    if (colPx < 2 || rowPx < 2)
        return;
    const QRect area = pageRect.translated(offset); // in page pixels
    const int classRows = std::min(ClassRows, prop.Rows);
    const int classBottom = int(classRows * rowPx) - offset.y();
    const QRect classBand =
        QRect(-offset.x(), -offset.y(), size.width(), classBottom + offset.y()).intersected(pageRect);
    if (!classBand.isEmpty())
        p.fillRect(classBand, mix(base, pal.color(QPalette::Highlight), 0.05));

    p.setPen(mix(base, pal.color(QPalette::Mid), 0.45));
    const qint64 firstCol = qint64(std::floor(area.left() / colPx));
    const qint64 lastCol = qint64(std::ceil((area.right() + 1) / colPx));
    for (qint64 c = std::max<qint64>(firstCol, 1); c <= lastCol; ++c) {
        const int x = int(std::floor(c * colPx)) - offset.x();
        p.drawLine(x, pageRect.top(), x, pageRect.bottom());
    }
    const qint64 firstRow = qint64(std::floor(area.top() / rowPx));
    const qint64 lastRow = qint64(std::ceil((area.bottom() + 1) / rowPx));
    for (qint64 r = std::max<qint64>(firstRow, 1); r <= lastRow; ++r) {
        const int y = int(std::floor(r * rowPx)) - offset.y();
        if (r != classRows)
            p.drawLine(pageRect.left(), y, pageRect.right(), y);
    }
    // The border between the class levels and the filter rows.
    if (classRows < prop.Rows && classBottom >= pageRect.top() && classBottom <= pageRect.bottom()) {
        p.setPen(mix(base, pal.color(QPalette::Highlight), 0.45));
        p.drawLine(pageRect.left(), classBottom, pageRect.right(), classBottom);
    }
    m_view->paintDropTarget(p, exposed);
    m_view->paintLines(p, exposed);
}

void ObjectPane::mousePressEvent(QMouseEvent* event)
{
    event->accept();
    if (QoSConnector* line = m_view->connectorAt(event->position().toPoint())) {
        m_view->pressLine(line);
        return;
    }
    // A click on the empty page clears the selection (the focus it takes does the rest).
    ObjectPage* page = m_view->page();
    if (QoSObject* selected = page->SelectedObject())
        selected->SetSelected(false);
    if (QoSConnector* line = page->SelectedConnector(); line && line->Selected())
        line->SetSelected(false);
}

void ObjectPane::mouseMoveEvent(QMouseEvent* event)
{
    if (QoSConnector* line = m_view->connectorAt(event->position().toPoint()))
        m_view->hoverLine(line);
    QWidget::mouseMoveEvent(event);
}

void ObjectPane::wheelEvent(QWheelEvent* event)
{
    QPoint delta = event->pixelDelta();
    if (delta.isNull())
        delta = event->angleDelta() / 120 * 3 * m_view->verticalScrollBar()->singleStep();
    // Shift turns the wheel sideways, as in most editors of wide pictures.
    if (event->modifiers() & Qt::ShiftModifier)
        delta = QPoint(delta.y() != 0 ? delta.y() : delta.x(), 0);
    m_view->scrollBy(-delta);
    event->accept();
}

void ObjectPane::keyPressEvent(QKeyEvent* event)
{
    QScrollBar* h = m_view->horizontalScrollBar();
    QScrollBar* v = m_view->verticalScrollBar();
    switch (event->key()) {
    case Qt::Key_Left:
        h->triggerAction(QAbstractSlider::SliderSingleStepSub);
        break;
    case Qt::Key_Right:
        h->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        break;
    case Qt::Key_Up:
        v->triggerAction(QAbstractSlider::SliderSingleStepSub);
        break;
    case Qt::Key_Down:
        v->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        break;
    case Qt::Key_PageUp:
        v->triggerAction(QAbstractSlider::SliderPageStepSub);
        break;
    case Qt::Key_PageDown:
        v->triggerAction(QAbstractSlider::SliderPageStepAdd);
        break;
    case Qt::Key_Home:
        m_view->setScrollPosition(QPoint(0, 0));
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
}

void ObjectPane::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() == QContextMenuEvent::Mouse)
        if (QoSConnector* line = m_view->connectorAt(event->pos())) {
            m_view->lineMenu(line, event->globalPos());
            return;
        }
    QMenu* menu = m_view->createPageMenu(this);
    connect(menu, &QMenu::aboutToHide, menu, &QObject::deleteLater);
    menu->popup(event->globalPos());
}

bool ObjectPane::focusNextPrevChild(bool next)
{
    // A selected line stands just before the box below it in the order of the picture.
    QWidget* focus = QApplication::focusWidget();
    if (auto* line = qobject_cast<QoSConnectorView*>(focus); line && line->parentWidget() == this) {
        if (QoSObject* below = line->connector() ? line->connector()->BottomQosObject() : nullptr) {
            if (next)
                m_view->focusObject(below);
            else
                m_view->focusNextBox(below, false);
            return true;
        }
    }
    // Tab on the page itself; a box's own Tab is the box's business.
    if (focus != this)
        return QWidget::focusNextPrevChild(next);
    if (next)
        m_view->focusNextBox(nullptr, true);
    else
        m_view->leavePage(false);
    return true;
}

void ObjectPane::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    // Shift+Tab from the widget after the page comes to the last box, as Tab from the widget
    // before it comes to the page and then to the first box.
    if (event->reason() == Qt::BacktabFocusReason)
        m_view->focusNextBox(nullptr, false);
}

void ObjectPane::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_view->paneResized();
}
