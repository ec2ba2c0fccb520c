#include "model/objectpage.h"

#include "base/numbers.h"
#include "base/qoserror.h"
#include "base/userprompt.h"
#include "model/arrangement.h"
#include "model/cellindex.h"
#include "model/document.h"
#include "model/pagesizequestion.h"
#include "model/pictureorder.h"
#include "model/qosclass.h"
#include "model/qosconnector.h"
#include "model/qosfilter.h"

#include <charconv>

ObjectPage::ObjectPage(Document* document, const QString& name, const QString& direction)
    : QObject(document), m_document(document), m_direction(direction), m_index(std::make_unique<CellIndex>()),
      m_arrangement(std::make_unique<Arrangement>(*this, *m_index))
{
    setObjectName(name);
    m_prop.SetObjectDimensions(1275, 1755);
    m_prop.Rows = 5;
    m_prop.Cols = 6;
    m_index->SetRows(m_prop.Rows, m_contained);
}

ObjectPage::~ObjectPage() = default;

void ObjectPage::SetObjectDimensions(qint32 height, qint32 width)
{
    m_prop.SetObjectDimensions(height, width);
    for (QoSObject* o : std::as_const(m_contained))
        PlaceObject(o);
    emit gridChanged(m_prop.Cols, m_prop.Rows);
}

void ObjectPage::SetGridDimensions(qint32& width, qint32& height)
{
    m_arrangement->Materialize();
    if (width < 1)
        width = m_prop.Cols;
    if (height < 1)
        height = m_prop.Rows;
    width = qMax(width, 3);
    height = qMax(height, 3);
    GrowGrid(width, height);
}

void ObjectPage::GrowGrid(qint32 width, qint32 height)
{
    if (width < 1)
        width = m_prop.Cols;
    if (height < 1)
        height = m_prop.Rows;
    const bool rowsChanged = height != m_prop.Rows;
    m_prop.Cols = width;
    m_prop.Rows = height;
    if (rowsChanged)
        m_index->SetRows(height, m_contained);
    emit gridChanged(width, height);
}

void ObjectPage::growToHold(int x, int y)
{
    if (x >= m_prop.Cols || y >= m_prop.Rows)
        GrowGrid(qMax(m_prop.Cols, x + 1), qMax(m_prop.Rows, y + 1));
}

void ObjectPage::SettleColumns()
{
    m_arrangement->Materialize();
}

void ObjectPage::BeginDeferred()
{
    m_arrangement->BeginDeferred();
}

void ObjectPage::EndDeferred()
{
    m_arrangement->EndDeferred();
    placeAll();
}

bool ObjectPage::IsDeferred() const
{
    return m_arrangement->IsDeferred();
}

QoSObject* ObjectPage::ObjectAt(int x, int y)
{
    m_arrangement->Materialize();
    return m_index->At(x, y);
}

QList<QoSObject*> ObjectPage::ObjectsInWriteOrder()
{
    m_arrangement->Materialize();
    return PictureOrder::Sorted(m_contained);
}

QoSObject* ObjectPage::NextInPictureOrder(const QoSObject* object, bool forward)
{
    m_arrangement->Materialize();
    return PictureOrder::Next(m_contained, object, forward);
}

void ObjectPage::CellChanged(QoSObject* object, int oldX, int oldY)
{
    if (object->GetObjectPage() != this)
        return;
    m_index->Remove(object, oldX, oldY);
    m_index->Insert(object);
}

void ObjectPage::ResetContainedObjects()
{
    m_contained.clear();
    m_index->Clear();
    m_arrangement->Reset();
    m_classCount = 0;
    m_selection.Clear();
    emit selectionChanged();
}

void ObjectPage::PlaceObject(QoSObject* object) const
{
    if (IsDeferred())
        return; // every box is placed once when the import ends
    const double left =
        object->MatrixX() * double(m_prop.ColWidth) + (m_prop.ColWidth - object->Width()) / 2.0;
    const double top =
        object->MatrixY() * double(m_prop.RowHeight) + (m_prop.RowHeight - object->Height()) / 2.0;
    object->Move(left, top);
}

void ObjectPage::placeAll()
{
    // Every box first, then every connector once, from both of its boxes' final places.
    m_placing = true;
    for (QoSObject* o : std::as_const(m_contained))
        PlaceObject(o);
    m_placing = false;
    for (QoSObject* o : std::as_const(m_contained))
        o->UpdateTopConnector();
    emit placed();
}

// --- creation --------------------------------------------------------------------------

namespace {

// "QoSClass" and the counter, in one allocation.
QString controlName(QStringView prefix, int counter)
{
    char digits[16];
    const auto r = std::to_chars(digits, digits + sizeof digits, counter);
    const qsizetype n = r.ptr - digits;
    QString name(prefix.size() + n, Qt::Uninitialized);
    QChar* out = name.data();
    for (const QChar c : prefix)
        *out++ = c;
    for (qsizetype i = 0; i < n; ++i)
        *out++ = QLatin1Char(digits[i]);
    return name;
}

} // namespace

QoSObject* ObjectPage::createObject(bool isClass, int x, int node, qint16 y)
{
    const int counter = isClass ? m_document->NextClassCounter() : m_document->NextFilterCounter();
    const QString name = controlName(isClass ? u"QoSClass" : u"QoSFilter", counter);
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
    // The box is born in the cell it is meant for: the cell index is written once.
    object->InitCell(qint16(node >= 0 ? 0 : x), y);
    m_document->RegisterObject(object);
    m_document->SetModified(true);
    m_contained << object;
    if (isClass)
        ++m_classCount;
    if (node >= 0)
        m_arrangement->AddListed(object, node);
    else
        m_index->Insert(object);
    PlaceObject(object);
    emit objectAdded(object);
    return object;
}

void ObjectPage::refuse(Refusal refusal, const QString& text)
{
    m_lastRefusal = refusal;
    m_lastRefusalText = text;
    // While a file is read, the reader counts the refusals and tells them once at the end:
    // a message box per refused box would make a broken file a matter of hundreds of clicks.
    if (!m_document->IsImporting())
        m_document->prompt().Message(text, UserPrompt::Icon::Warning);
}

QoSClass* ObjectPage::AddClass(const QString& parentIdx, const ClassValues& values)
{
    // A parent number that names no class makes a main class in every step.
    return AddClass(m_document->ClassByNumberText(parentIdx), values);
}

QoSClass* ObjectPage::AddClass(QoSClass* parent, const ClassValues& values)
{
    // A parent on the other page cannot take the class. The class is still made, whole and
    // in its own cell, as a main class of this page in its own direction; the caller hears
    // of it at the end.
    std::optional<QoSError> error;
    if (parent && parent->GetObjectPage() != this) {
        error = QoSError(QoSError::Kind::Tree,
                         QStringLiteral("Die übergeordnete Klasse %1 steht auf der anderen Seite.")
                             .arg(parent->ClassIdx()));
        parent = nullptr;
    }
    if (parent && parent->HasFilters()) {
        refuse(Refusal::ParentHasFilters,
               QStringLiteral("Hinzufügen nicht möglich. Diese Klasse hat untergeordnete Filter!"));
        return nullptr;
    }
    const int row = Arrangement::NewClassRow(parent, values.y);
    if (row >= ClassRows) {
        refuse(Refusal::NoFurtherLevel,
               QStringLiteral("Hinzufügen nicht möglich. Keine weitere Ebene möglich."));
        return nullptr;
    }
    const Arrangement::Column column = m_arrangement->NewClassColumn(parent, values.x);
    if (column.node < 0 && (column.x < -32768 || column.x > 32767))
        throw QoSError::overflow();
    // No box stands outside its page: a cell given beyond it, or a row below a small page.
    growToHold(column.node < 0 ? column.x : 0, row);

    auto* c = static_cast<QoSClass*>(createObject(true, column.x, column.node, qint16(row)));
    const std::optional<QoSError> given = values.GiveTo(*c, parent);
    if (!error)
        error = given;
    if (error)
        throw *error;
    return c;
}

QoSFilter* ObjectPage::AddFilter(const QString& classIdx, const FilterValues& values)
{
    const double number = Numbers::TryLeadingValue(classIdx).value_or(-1);
    if (number == 0) {
        refuse(Refusal::NoClass,
               QStringLiteral("Hinzufügen nicht möglich. Filter hat keine übergeordnete Klasse"));
        return nullptr;
    }
    QoSClass* c = m_document->ClassByNumberText(classIdx);
    if (!c) {
        refuse(Refusal::ClassNotOnPage,
               QStringLiteral("Hinzufügen nicht möglich. Auf dieser Seite gibt es keine Klasse %1.")
                   .arg(classIdx));
        return nullptr;
    }
    return AddFilter(c, values);
}

QoSFilter* ObjectPage::AddFilter(QoSClass* c, const FilterValues& values)
{
    if (!c) {
        refuse(Refusal::NoClass,
               QStringLiteral("Hinzufügen nicht möglich. Filter hat keine übergeordnete Klasse"));
        return nullptr;
    }
    if (c->GetObjectPage() != this) {
        refuse(Refusal::ClassNotOnPage,
               QStringLiteral("Hinzufügen nicht möglich. Auf dieser Seite gibt es keine Klasse %1.")
                   .arg(c->ClassIdx()));
        return nullptr;
    }
    if (c->HasChildClasses()) {
        refuse(Refusal::ClassHasSubClasses,
               QStringLiteral("Hinzufügen nicht möglich. Diese Klasse hat untergeordnete Klassen!"));
        return nullptr;
    }
    const Arrangement::Column column = m_arrangement->NewFilterColumn(c, values.x);
    const int row = m_arrangement->NewFilterRow(c, values.y);
    if (row > 32767)
        throw QoSError::overflow();
    growToHold(column.node < 0 ? column.x : 0, row);

    auto* f = static_cast<QoSFilter*>(createObject(false, column.x, column.node, qint16(row)));
    if (const std::optional<QoSError> error = values.GiveTo(*f, *c))
        throw *error;
    return f;
}

void ObjectPage::Remove(QoSObject* object)
{
    if (!object || object->GetObjectPage() != this || !m_contained.contains(object))
        return;
    m_arrangement->Materialize();
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
    m_selection.Forget(object);
    const QString name = object->Name();
    m_index->Remove(object, object->MatrixX(), object->MatrixY());
    m_contained.removeOne(object);
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
    return m_selection.Class();
}

QoSFilter* ObjectPage::SelectedFilter() const
{
    return m_selection.Filter();
}

QoSConnector* ObjectPage::SelectedConnector() const
{
    return m_selection.Connector();
}

QoSObject* ObjectPage::SelectedObject() const
{
    return m_selection.Object();
}

void ObjectPage::SetSelectedObject(QoSObject* object)
{
    if (!m_selection.SetObject(object)) {
        qDebug("Fehler: Typename '%s' nicht bekannt in ObjectPage.SelectedObject",
               object->metaObject()->className());
        return;
    }
    emit selectionChanged();
}

void ObjectPage::SetSelectedConnector(QoSConnector* connector)
{
    m_selection.SetConnector(connector);
    emit selectionChanged();
}

// --- commands ----------------------------------------------------------------------------

QoSClass* ObjectPage::NewClassCommand()
{
    // The page's own direction: a class without one could not be read back from a file.
    return AddClass(QString(), ClassValues{.direction = m_direction});
}

QoSFilter* ObjectPage::NewFilterCommand()
{
    // The empty class number is deliberate: on the page itself no class is chosen.
    return AddFilter(QString(), FilterValues{});
}

bool ObjectPage::PageSizeCommand()
{
    return PageSizeQuestion::Ask(*this);
}
