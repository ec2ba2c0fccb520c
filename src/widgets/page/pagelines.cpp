#include "pagelines.h"

#include "base/twips.h"
#include "model/objectpage.h"
#include "model/qosconnector.h"
#include "model/qosobject.h"
#include "objectpageview.h"
#include "objectpane.h"
#include "qosconnectorview.h"

#include <QPainter>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>

namespace {

int pixels(double twips)
{
    return Twips::ToPixels(twips);
}

} // namespace

PageLines::PageLines(ObjectPageView* view) : QObject(view), m_view(view) {}

PageLines::~PageLines()
{
    qDeleteAll(m_lines);
}

QRect PageLines::rectOf(const QoSConnector* connector)
{
    return QRect(pixels(connector->Left()), pixels(connector->Top()),
                 Twips::LengthToPixels(connector->Width()), Twips::LengthToPixels(connector->Height()));
}

QLine PageLines::lineOf(const QoSConnector* connector)
{
    // The end points are snapped to whole pixels already.
    return QLine(pixels(connector->x1()), pixels(connector->y1()), pixels(connector->x2()),
                 pixels(connector->y2()));
}

PageLines::Record* PageLines::record(const QoSConnector* connector) const
{
    return connector ? m_lines.value(connector->Name()) : nullptr;
}

// --- records -------------------------------------------------------------------------------------

void PageLines::adopt(QoSConnector* connector)
{
    if (!connector || m_lines.contains(connector->Name()))
        return;
    auto* r = new Record{connector, nullptr, rectOf(connector), lineOf(connector)};
    m_lines.insert(connector->Name(), r);
    m_index.insert(r, r->rect);
    connect(connector, &QoSConnector::geometryChanged, this, [this, connector] { moved(connector); });
    connect(connector, &QoSConnector::selectedChanged, this, [this, r](bool on) { selected(r, on); });
    if (!m_view->page()->ConnectorsWait())
        m_view->updatePageRect(r->rect);
    if (connector->Selected())
        selected(r, true);
}

void PageLines::remove(const QString& name)
{
    const auto it = m_lines.find(name);
    if (it == m_lines.end())
        return;
    Record* r = *it;
    m_lines.erase(it);
    m_index.remove(r);
    m_withWidget.remove(r);
    m_highlighted.remove(name);
    if (r->connector)
        disconnect(r->connector, nullptr, this, nullptr);
    m_view->updatePageRect(r->rect);
    if (QPointer<QoSConnectorView> widget = r->widget) {
        widget->detach();
        m_view->dropWidget(widget);
    }
    delete r;
}

void PageLines::clear()
{
    for (const QString& name : m_lines.keys())
        remove(name);
}

void PageLines::moved(QoSConnector* connector)
{
    Record* r = record(connector);
    if (!r)
        return;
    const QRect rect = rectOf(connector);
    const QLine line = lineOf(connector);
    if (rect == r->rect && line == r->line)
        return;
    m_view->updatePageRect(r->rect);
    r->rect = rect;
    r->line = line;
    m_index.insert(r, rect);
    m_view->updatePageRect(rect);
    placeWidget(r);
}

void PageLines::scrolled()
{
    for (Record* r : std::as_const(m_withWidget))
        placeWidget(r);
}

void PageLines::detachWidgets()
{
    for (Record* r : std::as_const(m_withWidget))
        if (r->widget)
            r->widget->detach();
}

// --- what the pane draws and hits ----------------------------------------------------------------

QoSConnector* PageLines::connectorAt(const QPoint& at) const
{
    if (m_view->page()->ConnectorsWait())
        return nullptr;
    const int reach = QoSConnectorView::HitRadius + QoSConnectorView::MarkSize;
    QoSConnector* best = nullptr;
    double bestDistance = 0;
    double bestLength = 0;
    for (const Record* r : m_index.findIn(QRect(at, at).adjusted(-reach, -reach, reach, reach))) {
        QoSConnector* c = r->connector;
        if (!c)
            continue;
        const double d = QoSConnectorView::distance(r->line, c->Selected(), at);
        if (d > QoSConnectorView::HitRadius)
            continue;
        // The selected line first; then the nearest, and of lines that lie on each other
        // (the filters of one class) the shortest, whose box is the nearest.
        const double length = QLineF(r->line).length();
        const bool better = !best || (c->Selected() && !best->Selected()) ||
                            (c->Selected() == best->Selected() &&
                             (d < bestDistance || (d == bestDistance && length < bestLength)));
        if (better) {
            best = c;
            bestDistance = d;
            bestLength = length;
        }
    }
    return best;
}

QLine PageLines::line(const QString& name) const
{
    const Record* r = m_lines.value(name);
    return r ? r->line : QLine();
}

void PageLines::paint(QPainter& painter, const QRect& exposed) const
{
    if (m_view->page()->ConnectorsWait())
        return; // the lines have no places until the import ends
    const QRect area = exposed.adjusted(-8, -8, 8, 8);
    const QList<Record*> found = m_index.findIn(area);
    if (found.isEmpty())
        return;
    // Lines that cover the same pixels of the exposed part (the filters of one class, all
    // down the same column) are drawn once.
    QList<QLine> plain;
    QList<const Record*> marked;
    QSet<std::pair<quint64, quint64>> seen;
    const auto point = [](double x, double y) {
        return (quint64(quint32(qRound(x))) << 32) | quint32(qRound(y));
    };
    for (const Record* r : found) {
        const QoSConnector* c = r->connector;
        if (!c)
            continue;
        if (c->Selected() || m_highlighted.contains(c->Name())) {
            marked << r;
            continue;
        }
        const QLineF clipped = QoSConnectorView::clip(r->line, area);
        if (clipped.isNull())
            continue;
        const std::pair<quint64, quint64> key{point(clipped.x1(), clipped.y1()),
                                              point(clipped.x2(), clipped.y2())};
        if (!seen.contains(key)) {
            seen.insert(key);
            plain << r->line;
        }
    }
    const QPalette& palette = m_view->palette();
    QoSConnectorView::paintLines(painter, plain, palette);
    // Lit and selected lines over the others, the selected one last.
    std::stable_sort(marked.begin(), marked.end(), [](const Record* a, const Record* b) {
        return !a->connector->Selected() && b->connector->Selected();
    });
    for (const Record* r : std::as_const(marked))
        QoSConnectorView::paintLine(painter, r->line, r->connector->Selected(),
                                    m_highlighted.contains(r->connector->Name()), palette);
}

// --- the mouse over a line, and the selected line's focus widget -----------------------------------

bool PageLines::isHighlighted(const QString& name) const
{
    return m_highlighted.contains(name);
}

void PageLines::hover(QoSConnector* connector)
{
    Record* r = record(connector);
    if (!r || m_highlighted.contains(connector->Name()))
        return;
    m_highlighted.insert(connector->Name(), QDeadlineTimer(QoSConnectorView::HoverMilliseconds));
    m_view->updatePageRect(r->rect);
    if (!m_hoverTimer.isActive())
        m_hoverTimer.start(QoSConnectorView::HoverMilliseconds, this);
}

void PageLines::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_hoverTimer.timerId()) {
        QObject::timerEvent(event);
        return;
    }
    // Each lit line goes back to its normal look when its own time is up.
    m_hoverTimer.stop();
    qint64 next = -1;
    for (auto it = m_highlighted.begin(); it != m_highlighted.end();) {
        const qint64 left = it->remainingTime();
        if (left <= 0) {
            if (const Record* r = m_lines.value(it.key()))
                m_view->updatePageRect(r->rect);
            it = m_highlighted.erase(it);
        } else {
            next = next < 0 ? left : std::min(next, left);
            ++it;
        }
    }
    if (next >= 0)
        m_hoverTimer.start(int(next), this);
}

void PageLines::press(QoSConnector* connector)
{
    Record* r = record(connector);
    if (!r)
        return;
    // The focus selects the line, as a click on a control would.
    focusWidget(r)->setFocus(Qt::MouseFocusReason);
    if (!connector->Selected())
        connector->SetSelected(true);
}

void PageLines::menu(QoSConnector* connector, const QPoint& globalPos)
{
    Record* r = record(connector);
    if (!r)
        return;
    press(connector);
    if (r->widget)
        r->widget->showContextMenu(globalPos);
}

QoSConnectorView* PageLines::widget(const QString& name) const
{
    const Record* r = m_lines.value(name);
    return r ? r->widget.data() : nullptr;
}

int PageLines::widgetCount() const
{
    return int(std::count_if(m_withWidget.cbegin(), m_withWidget.cend(),
                             [](const Record* r) { return !r->widget.isNull(); }));
}

QoSConnectorView* PageLines::focusWidget(Record* r)
{
    if (!r->widget) {
        r->widget = new QoSConnectorView(r->connector, m_view, m_view->pane());
        m_withWidget.insert(r);
        placeWidget(r);
        r->widget->lower();
        r->widget->show();
    }
    return r->widget;
}

void PageLines::placeWidget(Record* r)
{
    // Where the line is, for whoever shows the focus; the mouse goes through to the pane.
    if (r->widget)
        r->widget->setGeometry(r->rect.translated(-m_view->scrollPosition()));
}

void PageLines::selected(Record* r, bool on)
{
    m_view->updatePageRect(r->rect);
    if (on) {
        focusWidget(r);
    } else if (r->widget && !r->widget->hasFocus()) {
        r->widget->detach();
        m_view->dropWidget(r->widget);
        r->widget = nullptr;
        m_withWidget.remove(r);
    }
}
