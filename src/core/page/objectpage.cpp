#include "objectpage.h"

#include "document/document.h"
#include "document/numbers.h"
#include "document/qoscommon.h"
#include "document/qoserror.h"
#include "document/userprompt.h"
#include "model/qosclass.h"
#include "model/qosfilter.h"
#include "qosconnector.h"

#include <algorithm>
#include <cmath>

ObjectPage::ObjectPage(Document* document, const QString& name, const QString& direction)
    : QObject(document), m_document(document), m_direction(direction)
{
    setObjectName(name);
    m_prop.SetObjectDimensions(1275, 1755);
    m_prop.Rows = 5;
    m_prop.Cols = 6;
    rebuildColumns();
}

void ObjectPage::SetObjectDimensions(qint32 height, qint32 width)
{
    m_prop.SetObjectDimensions(height, width);
    for (QoSObject* o : std::as_const(m_contained))
        PlaceObject(o);
    emit gridChanged(m_prop.Cols, m_prop.Rows);
}

void ObjectPage::SetGridDimensions(qint32& width, qint32& height)
{
    if (width < 1)
        width = m_prop.Cols;
    if (height < 1)
        height = m_prop.Rows;
    width = qMax(width, 3);
    height = qMax(height, 3);
    const bool rowsChanged = height != m_prop.Rows;
    const int oldCols = m_prop.Cols;
    m_prop.Cols = width;
    m_prop.Rows = height;
    if (rowsChanged) {
        rebuildColumns();
    } else if (width > oldCols) {
        for (int x = oldCols; x < qMin(width, ColumnLimit); ++x)
            if (m_columnCounts.value(x) == 0)
                m_emptyColumns.insert(x);
    } else if (width < oldCols) {
        m_emptyColumns.erase(m_emptyColumns.lower_bound(width), m_emptyColumns.end());
    }
    m_posX = 0;
    m_posY = 0;
    emit gridChanged(width, height);
}

QList<QoSObject*> ObjectPage::ContainedObjects() const
{
    return m_contained;
}

QoSObject* ObjectPage::ObjectAt(int x, int y) const
{
    const auto it = m_cells.constFind(cellKey(x, y));
    return it == m_cells.cend() || it->isEmpty() ? nullptr : it->first();
}

bool ObjectPage::IsColumnEmpty(int x) const
{
    return m_columnCounts.value(x) == 0;
}

QList<QoSObject*> ObjectPage::ObjectsInCellOrder(int cols, int rows) const
{
    QList<QoSObject*> out;
    out.reserve(m_cells.size());
    for (auto it = m_cells.cbegin(); it != m_cells.cend(); ++it) {
        if (it->isEmpty())
            continue;
        QoSObject* o = it->first();
        if (o->MatrixX() >= 0 && o->MatrixX() < cols && o->MatrixY() >= 0 && o->MatrixY() < rows)
            out << o;
    }
    std::sort(out.begin(), out.end(), [](const QoSObject* a, const QoSObject* b) {
        return a->MatrixY() != b->MatrixY() ? a->MatrixY() < b->MatrixY() : a->MatrixX() < b->MatrixX();
    });
    return out;
}

void ObjectPage::columnCountChange(int x, int delta)
{
    int& n = m_columnCounts[x];
    const bool wasEmpty = n == 0;
    n += delta;
    const bool isEmpty = n == 0;
    if (isEmpty)
        m_columnCounts.remove(x);
    if (x < 0 || x >= qMin(m_prop.Cols, ColumnLimit) || wasEmpty == isEmpty)
        return;
    if (isEmpty)
        m_emptyColumns.insert(x);
    else
        m_emptyColumns.erase(x);
}

void ObjectPage::rebuildColumns()
{
    m_columnCounts.clear();
    for (QoSObject* o : std::as_const(m_contained))
        if (o->MatrixY() >= 0 && o->MatrixY() < m_prop.Rows)
            ++m_columnCounts[o->MatrixX()];
    m_emptyColumns.clear();
    for (int x = 0; x < qMin(m_prop.Cols, ColumnLimit); ++x)
        if (!m_columnCounts.contains(x))
            m_emptyColumns.insert(m_emptyColumns.end(), x);
}

void ObjectPage::indexInsert(QoSObject* object)
{
    QList<QoSObject*>& cell = m_cells[cellKey(object->MatrixX(), object->MatrixY())];
    // Keep each cell in insertion order, so that the first added wins the look-up.
    auto pos = std::upper_bound(cell.begin(), cell.end(), object, [](const QoSObject* a, const QoSObject* b) {
        return a->Sequence() < b->Sequence();
    });
    cell.insert(pos, object);
    ++m_allColumns[object->MatrixX()];
    if (object->MatrixY() >= 0 && object->MatrixY() < m_prop.Rows)
        columnCountChange(object->MatrixX(), +1);
}

void ObjectPage::indexRemove(QoSObject* object, int x, int y)
{
    const auto it = m_cells.find(cellKey(x, y));
    if (it == m_cells.end() || !it->removeOne(object))
        return;
    if (it->isEmpty())
        m_cells.erase(it);
    if (--m_allColumns[x] == 0)
        m_allColumns.erase(x);
    if (y >= 0 && y < m_prop.Rows)
        columnCountChange(x, -1);
}

void ObjectPage::CellChanged(QoSObject* object, int oldX, int oldY)
{
    if (!m_containedByName.contains(object->Name()))
        return;
    indexRemove(object, oldX, oldY);
    indexInsert(object);
}

void ObjectPage::ResetContainedObjects()
{
    m_contained.clear();
    m_containedByName.clear();
    m_cells.clear();
    m_allColumns.clear();
    m_classCount = 0;
    m_selectedClass = nullptr;
    m_selectedFilter = nullptr;
    m_selectedConnector = nullptr;
    rebuildColumns();
    emit selectionChanged();
}

void ObjectPage::PlaceObject(QoSObject* object) const
{
    const double left = object->MatrixX() * double(m_prop.ColWidth) + (m_prop.ColWidth - object->Width()) / 2.0;
    const double top = object->MatrixY() * double(m_prop.RowHeight) + (m_prop.RowHeight - object->Height()) / 2.0;
    object->Move(left, top);
}

// --- creation --------------------------------------------------------------------------

QoSObject* ObjectPage::createObject(bool isClass, qint16 x, qint16 y)
{
    const int counter = isClass ? m_document->NextClassCounter() : m_document->NextFilterCounter();
    const QString name = (isClass ? QStringLiteral("QoSClass") : QStringLiteral("QoSFilter")) + QString::number(counter);
    QoSObject* object;
    if (isClass) {
        auto* c = new QoSClass(m_document, this, name);
        c->SetClassIdx(counter);
        object = c;
    } else {
        auto* f = new QoSFilter(m_document, this, name);
        // The counter is life-long, the number 16-bit: past its range the export renumbers anyway.
        f->SetFilterIdx(qint16(counter <= 32767 ? counter : 0));
        object = f;
    }
    // The box is born in the cell it is meant for: setting MatrixX and MatrixY later then
    // changes nothing but the modified mark, and the cell index is written once.
    object->InitCell(x, y);
    PlaceObject(object);
    m_document->RegisterObject(object);
    m_document->SetModified(true);
    m_contained << object;
    m_containedByName.insert(name, object);
    if (isClass)
        ++m_classCount;
    indexInsert(object);
    emit objectAdded(object);
    return object;
}

QoSClass* ObjectPage::AddClass(const QString& parentIdx, const QString& minBandwidth, const QString& maxBandwidth,
                               const QString& direction, const QString& prio, int& classIdx, bool flag,
                               const QString& caption, std::optional<qint16> x, std::optional<qint16> y,
                               bool visible)
{
    // A parent number that names no class makes a main class in every step.
    QoSClass* parent = m_document->ClassByNumberText(parentIdx);
    if (parent && parent->HasFilters()) {
        m_document->prompt().Message(QStringLiteral("Hinzufügen nicht möglich. Diese Klasse hat untergeordnete Filter!"));
        return nullptr;
    }
    const int row = NewClassRow(parent, y);
    if (row >= 4) {
        m_document->prompt().Message(QStringLiteral("Hinzufügen nicht möglich. Keine weitere Ebene möglich."));
        return nullptr;
    }
    const int column = NewClassColumn(parent, x);
    if (column < -32768 || column > 32767)
        throw QoSError::overflow();

    auto* c = static_cast<QoSClass*>(createObject(true, qint16(column), qint16(row)));
    if (classIdx == 0)
        classIdx = c->ClassIdx();

    if (parent && parent->GetObjectPage() != this)
        throw QoSError(QoSError::Kind::Tree,
                       QStringLiteral("Die übergeordnete Klasse %1 steht auf der anderen Seite.").arg(parent->ClassIdx()));
    c->SetQoSParent(parentIdx);
    c->SetQoSDirection(direction);

    const QString line = m_document->Common1()->LineBandwidth(direction);
    if (!minBandwidth.isEmpty())
        c->SetQoSMinBandWidth(minBandwidth);
    else if (!parent)
        c->SetQoSMinBandWidth(m_classCount >= 2 ? QStringLiteral("0") : line);
    else
        c->SetQoSMinBandWidthKBit(1);

    if (!maxBandwidth.isEmpty())
        c->SetQoSMaxBandWidth(maxBandwidth);
    else if (!parent)
        c->SetQoSMaxBandWidth(line);
    else
        c->SetQoSMaxBandWidthKBit(parent->QoSMaxBandWidthKBit());

    if (parent)
        c->SetQoSDirection(parent->QoSDirection());

    c->SetQoSPrio(prio);
    c->SetClassIdx(classIdx);
    c->SetDefaultClass(flag);
    c->SetCaption(caption);
    c->SetMatrixX(qint16(column));
    c->SetMatrixY(qint16(row));
    c->SetVisible(visible);
    return c;
}

QoSFilter* ObjectPage::AddFilter(const QString& classIdx, const QString& ip, const QString& port,
                                 const QString& type, const QString& option, int& filterIdx, const QString& extra,
                                 std::optional<qint16> x, std::optional<qint16> y, bool visible)
{
    double number = 0;
    try {
        number = Numbers::LeadingValue(classIdx);
    } catch (const QoSError&) {
        number = -1;
    }
    if (number == 0) {
        m_document->prompt().Message(QStringLiteral("Hinzufügen nicht möglich. Filter hat keine übergeordnete Klasse"));
        return nullptr;
    }
    QoSClass* c = m_document->ClassByNumberText(classIdx);
    if (!c || c->GetObjectPage() != this) {
        m_document->prompt().Message(
            QStringLiteral("Hinzufügen nicht möglich. Auf dieser Seite gibt es keine Klasse %1.").arg(classIdx));
        return nullptr;
    }
    if (c->HasChildClasses()) {
        m_document->prompt().Message(QStringLiteral("Hinzufügen nicht möglich. Diese Klasse hat untergeordnete Klassen!"));
        return nullptr;
    }
    const int column = NewFilterColumn(c, x);
    const int row = NewFilterRow(c, y);
    if (row > 32767)
        throw QoSError::overflow();

    auto* f = static_cast<QoSFilter*>(createObject(false, qint16(column), qint16(row)));
    if (filterIdx == 0)
        filterIdx = f->FilterIdx();
    // Linked first, so that the field edits below already belong to a filter of the class.
    f->SetQoSClass(classIdx);
    f->SetQoSIP(ip);
    f->SetQoSPort(port);
    f->SetQoSType(type);
    f->SetQoSOption(option);
    f->SetFilterIdx(filterIdx >= -32768 && filterIdx <= 32767 ? qint16(filterIdx) : qint16(0));
    f->SetCaption(extra);
    f->SetMatrixX(qint16(column));
    f->SetMatrixY(qint16(row));
    f->SetVisible(visible);
    return f;
}

void ObjectPage::Remove(QoSObject* object)
{
    if (!object || !m_containedByName.contains(object->Name()))
        return;
    // Whoever removes a box, it leaves its parent's children and its own children's links.
    if (QoSClass* parent = object->ParentQoSObject())
        parent->RemoveChildQoSQbject(object);
    if (auto* c = qobject_cast<QoSClass*>(object))
        for (QoSObject* child : QList<QoSObject*>(c->ChildQoSObjects())) {
            c->RemoveChildQoSQbject(child);
            child->RemoveTopConnector();
            child->SetParentName(QString());
        }
    object->RemoveTopConnector();
    if (m_selectedClass == object)
        m_selectedClass = nullptr;
    if (m_selectedFilter == object)
        m_selectedFilter = nullptr;
    const QString name = object->Name();
    indexRemove(object, object->MatrixX(), object->MatrixY());
    m_contained.removeOne(object);
    m_containedByName.remove(name);
    if (object->IsClass())
        --m_classCount;
    m_document->UnregisterObject(object);
    m_document->SetModified(true);
    emit objectRemoved(name);
    emit selectionChanged();
    delete object;
}

// --- selection --------------------------------------------------------------------------

QoSClass* ObjectPage::SelectedClass() const
{
    return m_selectedClass;
}

QoSFilter* ObjectPage::SelectedFilter() const
{
    return m_selectedFilter;
}

QoSConnector* ObjectPage::SelectedConnector() const
{
    return m_selectedConnector;
}

QoSObject* ObjectPage::SelectedObject() const
{
    if (m_selectedClass)
        return m_selectedClass;
    return m_selectedFilter;
}

void ObjectPage::SetSelectedObject(QoSObject* object)
{
    if (!object) {
        m_selectedClass = nullptr;
        m_selectedFilter = nullptr;
    } else if (auto* c = qobject_cast<QoSClass*>(object)) {
        m_selectedClass = c;
        m_selectedFilter = nullptr;
    } else if (auto* f = qobject_cast<QoSFilter*>(object)) {
        m_selectedFilter = f;
        m_selectedClass = nullptr;
    } else {
        qDebug("Fehler: Typename '%s' nicht bekannt in ObjectPage.SelectedObject", object->metaObject()->className());
        return;
    }
    emit selectionChanged();
}

void ObjectPage::SetSelectedConnector(QoSConnector* connector)
{
    m_selectedConnector = connector;
    emit selectionChanged();
}

// --- commands ----------------------------------------------------------------------------

QoSClass* ObjectPage::NewClassCommand()
{
    int idx = 0;
    return AddClass(QString(), QString(), QString(), QString(), QString(), idx, false, QString());
}

QoSFilter* ObjectPage::NewFilterCommand()
{
    // The empty class number is deliberate: on the page itself no class is chosen.
    int idx = 0;
    return AddFilter(QString(), QString(), QString(), QString(), QString(), idx, QString());
}

bool ObjectPage::PageSizeCommand()
{
    const QString defaultText = QString::number(m_prop.Cols) + QStringLiteral(", ") + QString::number(m_prop.Rows);
    for (;;) {
        const QString answer = m_document->prompt().InputBox(QStringLiteral("Neue Breite, Höhe eingeben:"), defaultText);
        if (answer.isEmpty())
            return false;
        const QStringList parts = answer.split(u',');
        if (parts.size() != 2)
            continue;
        auto dimension = [](const QString& part) -> qint32 {
            try {
                // Blanks anywhere are ignored; beyond 32 bits keeps the current value.
                QString s = part;
                s.remove(u' ');
                return Numbers::TryRoundToInt32(Numbers::LeadingValue(s)).value_or(0);
            } catch (const QoSError&) {
                return 0;
            }
        };
        qint32 w = dimension(parts[0]);
        qint32 h = dimension(parts[1]);
        SetGridDimensions(w, h);
        return true;
    }
}

// --- arrangement -------------------------------------------------------------------------

int ObjectPage::FindFreeColumn(bool grow)
{
    if (!m_emptyColumns.empty())
        return *m_emptyColumns.begin();
    if (m_prop.Cols > ColumnLimit)
        return ColumnLimit; // free, but beyond what a box's column can hold: AddClass refuses it
    if (!grow)
        return 0;
    ResizeGrid(m_prop.Cols + 1, m_prop.Rows);
    return m_prop.Cols - 1;
}

int ObjectPage::MaxChildColumn(const QoSClass* c)
{
    int m = -1;
    if (c)
        for (QoSObject* child : c->ChildQoSObjects())
            m = qMax(m, int(child->MatrixX()));
    return m;
}

void ObjectPage::ShiftColumnsRight(int x)
{
    // Every box in column x or right of it moves one column right, whole columns at a time,
    // so that no two subtrees come to share a column.
    if (m_allColumns.empty() || m_allColumns.rbegin()->first < x)
        return; // nothing stands there: the common case of adding to the rightmost subtree
    QList<QoSObject*> moving;
    for (QoSObject* o : std::as_const(m_contained))
        if (o->MatrixX() >= x)
            moving << o;
    for (QoSObject* o : std::as_const(moving)) {
        if (o->MatrixX() + 1 >= m_prop.Cols)
            ResizeGrid(m_prop.Cols + 1, m_prop.Rows);
        if (o->MatrixX() >= 32767)
            throw QoSError::overflow();
        o->SetMatrixX(qint16(o->MatrixX() + 1));
    }
}

int ObjectPage::NewClassColumn(QoSClass* parent, std::optional<qint16> given)
{
    if (given)
        return *given;
    if (!parent)
        return FindFreeColumn(true);
    const int m = MaxChildColumn(parent);
    if (m == -1)
        return parent->MatrixX();
    const int c = m + 1;
    ShiftColumnsRight(c);
    if (c >= m_prop.Cols)
        ResizeGrid(c + 1, m_prop.Rows);
    return c;
}

int ObjectPage::NewClassRow(const QoSClass* parent, std::optional<qint16> given)
{
    if (given)
        return *given;
    return parent ? parent->MatrixY() + 1 : 0;
}

int ObjectPage::NewFilterColumn(const QoSClass* c, std::optional<qint16> given)
{
    if (given)
        return *given;
    return c ? c->MatrixX() : 0;
}

int ObjectPage::NewFilterRow(const QoSClass* c, std::optional<qint16> given)
{
    int row = given ? int(*given) : 0;
    if (!given && c)
        row = 4 + int(c->ChildQoSObjects().size()); // only filters, the new one not yet among them
    if (row >= m_prop.Rows - 1)
        ResizeGrid(0, row + 1);
    return row;
}
