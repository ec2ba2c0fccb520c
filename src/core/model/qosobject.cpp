#include "model/qosobject.h"

#include "base/userprompt.h"
#include "model/arrangement.h"
#include "model/document.h"
#include "model/dropplan.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qosconnector.h"
#include "model/qosfilter.h"
#include "model/treedepth.h"

QoSObject::QoSObject(Document* document, ObjectPage* page, const QString& name)
    : QObject(nullptr), m_document(document), m_page(page), m_name(name),
      m_sequence(document->NextSequence()), m_width(page ? page->prop().ObjectWidth : 1755),
      m_height(page ? page->prop().ObjectHeight : 1275)
{}

QoSObject::~QoSObject() = default;

bool QoSObject::IsClass() const
{
    return qobject_cast<const QoSClass*>(this) != nullptr;
}

bool QoSObject::IsFilter() const
{
    return qobject_cast<const QoSFilter*>(this) != nullptr;
}

void QoSObject::markChanged(const QString& property)
{
    m_document->SetModified(true);
    if (watched())
        emit propertyChanged(property);
}

void QoSObject::SetCaption(const QString& caption)
{
    if (caption == m_caption)
        return;
    m_caption = caption;
    if (watched())
        emit captionChanged(caption);
    markChanged(QStringLiteral("Caption"));
}

bool QoSObject::columnSettled() const
{
    return !m_page || !m_page->arrangement().IsListed(this);
}

void QoSObject::SetMatrixX(qint16 x)
{
    const int oldX = MatrixX();
    m_x = x;
    if (oldX != x && m_page)
        m_page->CellChanged(this, oldX, m_y);
    if (m_page)
        m_page->PlaceObject(this);
    if (oldX != x)
        if (watched())
            emit cellChanged(m_x, m_y);
    markChanged(QStringLiteral("MatrixX"));
}

void QoSObject::SetMatrixY(qint16 y)
{
    const int oldY = m_y;
    const int x = MatrixX();
    m_y = y;
    if (oldY != y && m_page)
        m_page->CellChanged(this, x, oldY);
    if (m_page)
        m_page->PlaceObject(this);
    if (oldY != y)
        if (watched())
            emit cellChanged(m_x, m_y);
    markChanged(QStringLiteral("MatrixY"));
}

void QoSObject::Move(double left, double top)
{
    if (left == m_left && top == m_top)
        return;
    m_left = left;
    m_top = top;
    if (watched())
        emit geometryChanged();
    PaintLines();
}

void QoSObject::Resize(int width, int height)
{
    if (width == m_width && height == m_height)
        return;
    m_width = width;
    m_height = height;
    if (watched())
        emit geometryChanged();
    PaintLines();
}

void QoSObject::SetVisible(bool visible)
{
    if (visible == m_visible)
        return;
    m_visible = visible;
    if (watched())
        emit visibleChanged(visible);
}

void QoSObject::SetSelected(bool selected)
{
    // The selection changes only when another box or a line is selected, the empty page is
    // clicked or the box goes: the keyboard focus moving to the calculator, a menu or a dialog
    // leaves it alone, so that the calculator keeps showing the class.
    if (selected && m_page && m_page->SelectedObject() && m_page->SelectedObject() != this)
        m_page->SelectedObject()->SetSelected(false);
    if (selected && m_page)
        if (QoSConnector* line = m_page->SelectedConnector(); line && line->Selected())
            line->SetSelected(false);
    const bool changed = selected != m_selected;
    m_selected = selected;
    if (selected && m_page)
        m_page->SetSelectedObject(this);
    else if (!selected && m_page && m_page->SelectedObject() == this)
        m_page->SetSelectedObject(nullptr);
    if (changed)
        if (watched())
            emit selectedChanged(selected);
    if (selected)
        PaintLines();
}

QoSClass* QoSObject::ParentQoSObject() const
{
    if (m_parentName.isEmpty() || !m_page)
        return nullptr;
    if (m_parentCache && m_parentCache->GetObjectPage() == m_page)
        return m_parentCache;
    // Only a class of the same page can be a parent.
    QoSObject* o = m_document->Object(m_parentName);
    if (!o || o->GetObjectPage() != m_page)
        return nullptr;
    m_parentCache = qobject_cast<QoSClass*>(o);
    return m_parentCache;
}

void QoSObject::SetParentName(const QString& name)
{
    if (name == m_parentName)
        return;
    m_parentName = name;
    m_parentCache = nullptr;
    if (watched())
        emit parentChanged(name);
}

void QoSObject::CreateTopConnector()
{
    if (m_lineTop)
        RemoveTopConnector();
    m_lineTop = new QoSConnector(m_document, this);
    m_document->RegisterConnector(m_lineTop);
    PaintLines();
}

void QoSObject::RemoveTopConnector()
{
    if (!m_lineTop)
        return;
    QoSConnector* line = m_lineTop;
    m_lineTop = nullptr;
    if (m_page && m_page->SelectedConnector() == line)
        m_page->SetSelectedConnector(nullptr);
    m_document->UnregisterConnector(line);
    delete line;
    if (watched())
        emit linesChanged();
}

void QoSObject::LinkUnder(QoSClass* parent, const QString& property)
{
    if (ParentQoSObject() == parent && m_lineTop)
        return;
    DetachFromParent();
    SetParentName(parent->Name());
    parent->AddChild(this);
    CreateTopConnector();
    PaintLines();
    markChanged(property);
}

void QoSObject::DetachFromParent()
{
    if (QoSClass* parent = ParentQoSObject())
        parent->RemoveChildQoSQbject(this);
    RemoveTopConnector();
    SetParentName(QString());
}

void QoSObject::Abandon()
{
    m_page = nullptr;
    m_lineTop = nullptr;
}

void QoSObject::PaintLines()
{
    if (m_page && m_page->ConnectorsWait())
        return; // the page lays every connector out once when the import ends
    // A box's own upper connector and those of its children depend on its geometry.
    UpdateTopConnector();
    if (auto* self = qobject_cast<QoSClass*>(this))
        for (QoSObject* child : self->ChildQoSObjects())
            child->UpdateTopConnector();
    if (watched())
        emit linesChanged();
}

void QoSObject::UpdateTopConnector()
{
    // From the middle of the parent's bottom edge to the middle of this box's top edge.
    if (!m_lineTop)
        return;
    if (QoSClass* parent = ParentQoSObject()) {
        const int x1 = int(parent->Left() + parent->Width() / 2.0);
        const int y1 = int(parent->Top() + parent->Height());
        const int x2 = int(m_left + m_width / 2.0);
        const int y2 = int(m_top);
        m_lineTop->Move(x1, y1, x2, y2);
    }
}

QoSObject::DropResult QoSObject::MoveObject(double left, double top)
{
    DropResult result;
    if (!m_page)
        return result;
    const DropPlan plan = DropPlan::For(*this, left, top);
    switch (plan.outcome) {
    case DropPlan::Outcome::Move:
        SetMatrixX(qint16(plan.x));
        SetMatrixY(qint16(plan.y));
        result.moved = true;
        break;
    case DropPlan::Outcome::Link:
        m_page->PlaceObject(this);
        if (plan.alreadyLinked) {
            result.linked = true;
            break;
        }
        if (plan.swap) {
            if (QoSConnector* line = plan.parent->LineTop())
                line->EditCut();
        } else if (m_lineTop) {
            m_lineTop->EditCut();
        }
        AddParentQoSObject(plan.parent.data());
        result.linked = ParentQoSObject() == plan.parent;
        break;
    case DropPlan::Outcome::Stay:
    case DropPlan::Outcome::Refused:
        m_page->PlaceObject(this);
        break;
    }
    result.message = plan.message;
    if (!result.message.isEmpty())
        m_document->prompt().Message(result.message, UserPrompt::Icon::Warning);
    if (plan.hasCell)
        PaintLines();
    return result;
}

bool QoSObject::AcceptsPlug(const QString& className) const
{
    return !className.isEmpty() && className != m_name;
}

bool QoSObject::LinkByPlug(const QString& className)
{
    auto* parent = qobject_cast<QoSClass*>(m_document->Object(className));
    if (!parent || parent == this)
        return false;
    if (auto* self = qobject_cast<QoSClass*>(this);
        self && !self->IsInDownTree(parent) && !TreeDepth::FitsUnder(*self, *parent)) {
        m_document->prompt().Message(QStringLiteral("Anhängen nicht möglich. Keine weitere Ebene möglich."),
                                     UserPrompt::Icon::Warning);
        return false;
    }
    AddParentQoSObject(parent);
    return ParentQoSObject() == parent;
}
