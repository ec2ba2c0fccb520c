#include "qosobjectbox.h"

#include "boxmetrics.h"
#include "model/qosobject.h"
#include "page/moveobject.h"
#include "page/objectpageview.h"
#include "page/tittlebar.h"
#include "plugbottom.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QPainter>

QoSObjectBox::QoSObjectBox(QoSObject* object, ObjectPageView* view, QWidget* parent)
    : QWidget(parent), m_object(object), m_view(view), m_dummy(new QWidget(this)), m_label1(new QLabel(this)),
      m_title(new TittleBar(this))
{
    setObjectName(object->Name());
    setAcceptDrops(true);
    // A click anywhere on the box gives the focus to its hidden focus control, and the focus
    // makes the object the page's selection.
    setFocusPolicy(Qt::ClickFocus);
    setFocusProxy(m_dummy);
    m_dummy->setObjectName(QStringLiteral("dummy"));
    m_dummy->setFocusPolicy(Qt::StrongFocus);
    m_dummy->setGeometry(0, 0, 1, 1);
    m_dummy->installEventFilter(this);
    m_label1->setObjectName(QStringLiteral("Label1"));
    m_label1->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_title->setObjectName(QStringLiteral("TittleBar1"));
    m_title->SetCaptionEditable(true);

    const BoxMetrics& m = metrics();
    m_title->setGeometry(m.titleOffset, m.titleOffset, m.titleWidth, m.titleHeight);

    connect(m_title, &TittleBar::DblClick, m_title, &TittleBar::Edit);
    connect(m_title, &TittleBar::Change, this, [this] {
        if (m_object)
            m_object->SetCaption(m_title->Caption());
    });
    connect(object, &QoSObject::captionChanged, this, &QoSObjectBox::showCaption);
    connect(object, &QoSObject::selectedChanged, this, &QoSObjectBox::showSelection);
    m_title->SetCaption(object->Caption());
    showSelection(object->Selected());
}

const BoxMetrics& QoSObjectBox::metrics() const
{
    return BoxMetrics::For(font());
}

void QoSObjectBox::finishChildren()
{
    m_label1->setGeometry(rect());
    m_label1->lower();
    for (QWidget* w : findChildren<QWidget*>())
        w->setAcceptDrops(false);
    const QString kind = kindName();
    m_label1->setAccessibleName(kind);
    setAccessibleDescription(kind);
    m_dummy->setAccessibleDescription(kind);
    showCaption(m_object ? m_object->Caption() : QString());
}

void QoSObjectBox::detach()
{
    if (m_object)
        disconnect(m_object, nullptr, this, nullptr);
    m_object = nullptr;
}

void QoSObjectBox::showCaption(const QString& caption)
{
    m_title->SetCaption(caption);
    // Without a caption a box is named by its kind, so that it is never nameless.
    const QString name = caption.isEmpty() ? kindName() : caption;
    setAccessibleName(name);
    m_dummy->setAccessibleName(name);
}

void QoSObjectBox::showSelection(bool selected)
{
    m_title->SetActive(selected);
    if (selected)
        raise();
    update();
}

QColor QoSObjectBox::background() const
{
    return palette().color(QPalette::Window);
}

void QoSObjectBox::paintEvent(QPaintEvent*)
{
    const BoxMetrics& m = metrics();
    QPainter p(this);
    p.fillRect(rect(), background());
    p.setPen(palette().color(QPalette::WindowText));
    const QStringList labels = rowLabels();
    for (int row = 0; row < labels.size(); ++row)
        p.drawText(QRect(m.titleOffset, m.rowTop(row), m.labelWidth, m.rowHeight),
                   Qt::AlignLeft | Qt::AlignVCenter, labels.at(row));
    // The selected box carries a broad frame in the selection colour; the others a thin one.
    const bool selected = m_object && m_object->Selected();
    const int frame = selected ? 2 : 1;
    const QColor frameColor =
        selected ? palette().color(QPalette::Highlight) : palette().color(QPalette::Mid);
    p.setPen(Qt::NoPen);
    p.setBrush(frameColor);
    const QRect r = rect();
    p.drawRect(0, 0, r.width(), frame);
    p.drawRect(0, r.height() - frame, r.width(), frame);
    p.drawRect(0, 0, frame, r.height());
    p.drawRect(r.width() - frame, 0, frame, r.height());
}

void QoSObjectBox::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        update();
}

// --- the keyboard: Tab through the fields, then on to the next box ----------------------------

QList<QWidget*> QoSObjectBox::tabStops() const
{
    QList<QWidget*> stops{m_dummy};
    // The order of the window's focus chain, which is the order the fields were made in.
    for (QWidget* w = m_dummy->nextInFocusChain(); w && w != m_dummy; w = w->nextInFocusChain()) {
        if (!isAncestorOf(w) || w->focusProxy() || !(w->focusPolicy() & Qt::TabFocus))
            continue;
        if (w->isVisibleTo(this) && w->isEnabled())
            stops << w;
    }
    return stops;
}

bool QoSObjectBox::focusNextPrevChild(bool next)
{
    if (!m_view || !m_object)
        return QWidget::focusNextPrevChild(next);
    const QList<QWidget*> stops = tabStops();
    QWidget* focus = QApplication::focusWidget();
    qsizetype at = stops.indexOf(focus);
    for (qsizetype i = 0; at < 0 && i < stops.size(); ++i)
        if (stops.at(i)->isAncestorOf(focus))
            at = i;
    if (at < 0)
        return QWidget::focusNextPrevChild(next);
    const qsizetype to = at + (next ? 1 : -1);
    if (to >= 0 && to < stops.size()) {
        stops.at(to)->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        return true;
    }
    // The view may drop this box once the focus has left it far behind; nothing of it is
    // used after this call.
    m_view->focusNextBox(m_object, next);
    return true;
}

// --- mouse: the box, its surface label and its title bar drag the box ----------------------

void QoSObjectBox::mousePressEvent(QMouseEvent* event)
{
    // Every press stays with the box, so that the empty page below never sees it.
    event->accept();
    if (m_object && !m_object->Selected())
        m_object->SetSelected(true);
    if (event->button() == Qt::LeftButton && m_view)
        m_view->mover()->Press(this, event->globalPosition());
}

void QoSObjectBox::mouseMoveEvent(QMouseEvent* event)
{
    if ((event->buttons() & Qt::LeftButton) && m_view)
        m_view->mover()->Move(event->globalPosition());
}

void QoSObjectBox::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && m_view)
        m_view->mover()->Release(event->globalPosition());
}

// --- menu and keys --------------------------------------------------------------------------

QMenu* QoSObjectBox::createContextMenu(QWidget* parent)
{
    auto* menu = new QMenu(parent);
    menu->setObjectName(QStringLiteral("mnuEdit"));
    const QPointer<QoSObject> object = m_object;
    auto add = [menu](const QString& name, const QString& caption, auto run) {
        QAction* item = menu->addAction(caption);
        item->setObjectName(name);
        QObject::connect(item, &QAction::triggered, menu, run);
        return item;
    };
    add(QStringLiteral("itmEditCut"), QStringLiteral("&Ausschneiden\tStrg+X"), [object] {
        if (object)
            object->EditCut();
    });
    add(QStringLiteral("itmEditCopy"), QStringLiteral("&Kopieren\tStrg+C"), [object] {
        if (object)
            object->EditCopy();
    });
    add(QStringLiteral("itmEditPaste"), QStringLiteral("Ein&fügen\tStrg+V"), [object] {
        if (object)
            object->EditPaste();
    });
    add(QStringLiteral("itmEditDelete"), QStringLiteral("&Löschen\tEntf"), [object] {
        if (object)
            object->EditDelete();
    });
    menu->addSeparator();
    // Offered, and deliberately without an effect on the document.
    add(QStringLiteral("itmEditDuplicate"), QStringLiteral("&Duplizieren"), [] {});
    add(QStringLiteral("itmEditCopyProperties"), QStringLiteral("Eigenschaften k&opieren"), [] {});
    add(QStringLiteral("itmEditPasteProperties"), QStringLiteral("Eigenschaften ei&nfügen"), [object] {
        if (object)
            object->EditPaste();
    });
    addMenuEntries(menu);
    menu->addSeparator();
    const QPointer<TittleBar> title = m_title;
    add(QStringLiteral("itmEditCaption"), QStringLiteral("&Titel bearbeiten\tF2"), [title] {
        if (title)
            title->Edit();
    });
    return menu;
}

void QoSObjectBox::contextMenuEvent(QContextMenuEvent* event)
{
    m_dummy->setFocus(Qt::MouseFocusReason);
    QWidget* host = m_view ? static_cast<QWidget*>(m_view) : this;
    QMenu* menu = createContextMenu(host);
    connect(menu, &QMenu::aboutToHide, menu, &QObject::deleteLater);
    menu->popup(event->globalPos());
}

bool QoSObjectBox::handleKey(QKeyEvent* event)
{
    QoSObject* object = m_object;
    if (!object)
        return false;
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    if (modifiers == Qt::ControlModifier) {
        switch (event->key()) {
        case Qt::Key_C:
            object->EditCopy();
            return true;
        case Qt::Key_V:
            object->EditPaste();
            return true;
        case Qt::Key_X:
            object->EditCut(); // deletes the object: nothing of it may be used after this
            return true;
        default:
            break;
        }
    }
    if (event->key() == Qt::Key_Delete) {
        object->EditDelete(); // the same
        return true;
    }
    if (event->key() == Qt::Key_F2 && modifiers == Qt::NoModifier) {
        m_title->Edit();
        return true;
    }
    return false;
}

bool QoSObjectBox::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_dummy) {
        if (event->type() == QEvent::ShortcutOverride) {
            // The box's keys come before shortcuts of the window that use the same keys.
            auto* key = static_cast<QKeyEvent*>(event);
            const Qt::KeyboardModifiers modifiers = key->modifiers() & ~Qt::KeypadModifier;
            const bool clipboardKey =
                modifiers == Qt::ControlModifier &&
                (key->key() == Qt::Key_C || key->key() == Qt::Key_V || key->key() == Qt::Key_X);
            if (clipboardKey || key->key() == Qt::Key_Delete || key->key() == Qt::Key_F2) {
                event->accept();
                return true;
            }
        } else if (event->type() == QEvent::KeyPress) {
            return handleKey(static_cast<QKeyEvent*>(event));
        }
    }
    return QWidget::eventFilter(watched, event);
}

// --- drop of a plug ------------------------------------------------------------------------

bool QoSObjectBox::acceptsPlug(const QString& className) const
{
    return m_object && m_object->AcceptsPlug(className);
}

void QoSObjectBox::dropPlug(const QString& className)
{
    if (acceptsPlug(className))
        m_object->LinkByPlug(className);
}

namespace {

QString plugData(const QMimeData* data)
{
    return data && data->hasFormat(PlugBottom::MimeType())
               ? QString::fromUtf8(data->data(PlugBottom::MimeType()))
               : QString();
}

} // namespace

void QoSObjectBox::dragEnterEvent(QDragEnterEvent* event)
{
    if (acceptsPlug(plugData(event->mimeData()))) {
        event->setDropAction(Qt::LinkAction);
        event->accept();
    } else {
        event->ignore();
    }
}

void QoSObjectBox::dragMoveEvent(QDragMoveEvent* event)
{
    if (acceptsPlug(plugData(event->mimeData()))) {
        event->setDropAction(Qt::LinkAction);
        event->accept();
    } else {
        event->ignore();
    }
}

void QoSObjectBox::dropEvent(QDropEvent* event)
{
    const QString name = plugData(event->mimeData());
    if (!acceptsPlug(name)) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::LinkAction);
    event->accept();
    dropPlug(name);
}
