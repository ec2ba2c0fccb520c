#include "model/document.h"

#include "base/numbers.h"
#include "base/qoserror.h"
#include "base/scriptedprompt.h"
#include "model/history.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/qosconnector.h"
#include "model/qosobject.h"

#include <cmath>

Document::Document(UserPrompt* prompt, QObject* parent)
    : QObject(parent), m_common(new QoSCommon(this)),
      m_down(new ObjectPage(this, QStringLiteral("Down1"), QStringLiteral("down"))),
      m_up(new ObjectPage(this, QStringLiteral("Up1"), QStringLiteral("up"))), m_history(new History(this)),
      m_prompt(prompt)
{
    m_common->setObjectName(QStringLiteral("Common1"));
}

Document::~Document()
{
    // Boxes and connectors are children of the document; drop the indexes before Qt deletes
    // them so that nothing looks them up half-destroyed.
    m_down->ResetContainedObjects();
    m_up->ResetContainedObjects();
    const auto controls = m_controls;
    m_controls.clear();
    m_registry.clear();
    m_objects.clear();
    m_classesByIdx.clear();
    for (QObject* c : controls) {
        if (auto* o = qobject_cast<QoSObject*>(c))
            o->Abandon();
    }
    qDeleteAll(controls);
}

ObjectPage* Document::PageForDirection(const QString& direction) const
{
    const QString name = direction + u'1';
    if (name.compare(m_down->Name(), Qt::CaseInsensitive) == 0)
        return m_down;
    if (name.compare(m_up->Name(), Qt::CaseInsensitive) == 0)
        return m_up;
    return nullptr;
}

UserPrompt& Document::prompt() const
{
    if (m_prompt)
        return *m_prompt;
    // Nobody to ask: messages go nowhere, questions take their scripted defaults.
    auto* self = const_cast<Document*>(this);
    if (!self->m_silentPrompt)
        self->m_silentPrompt = std::make_unique<ScriptedPrompt>();
    return *self->m_silentPrompt;
}

void Document::SetModified(bool modified)
{
    const bool changed = modified != m_modified;
    m_modified = modified;
    if (changed)
        emit modifiedChanged(modified);
}

void Document::SetStatusText(const QString& text)
{
    m_statusText = text;
    if (m_statusLine)
        m_statusLine->SetStatusText(text);
    emit statusTextChanged(text);
}

void Document::ClearStatusText(const QString& ifShowing)
{
    if (m_statusText == ifShowing)
        SetStatusText(QString());
}

QoSClass* Document::ClassByIdx(int n) const
{
    QoSClass* first = nullptr;
    const auto range = m_classesByIdx.equal_range(n);
    for (auto it = range.first; it != range.second; ++it)
        if (!first || (*it)->Sequence() < first->Sequence())
            first = *it;
    return first;
}

std::optional<qint32> Document::ClassNumber(const QString& text)
{
    // A number beyond any double names no class, like one beyond any class number.
    const double v = Numbers::TryLeadingValue(text).value_or(0);
    if (!(v > 0) || v > 2147483647.0)
        return std::nullopt;
    return qint32(std::trunc(v));
}

QoSClass* Document::ClassByNumberText(const QString& text) const
{
    const std::optional<qint32> n = ClassNumber(text);
    return n ? ClassByIdx(*n) : nullptr;
}

int Document::NextClassCounter()
{
    // Reading a file gives its classes the file's numbers; where the file had classes the
    // pages refused, the counter would otherwise reach numbers those classes hold, and a new
    // sub class would be hung under the older class of the same number.
    do
        ++m_classCounter;
    while (m_classesByIdx.contains(m_classCounter));
    return m_classCounter;
}

void Document::ReserveObjects(qsizetype n)
{
    m_registry.reserve(m_registry.size() + n);
    m_objects.reserve(m_objects.size() + n);
    m_controls.reserve(m_controls.size() + 2 * n); // a connector for nearly every box
}

void Document::RegisterObject(QoSObject* object)
{
    m_registry.insert(object->Name(), object);
    m_objects.append(object);
    m_controls.append(object);
    if (auto* c = qobject_cast<QoSClass*>(object))
        m_classesByIdx.insert(c->ClassIdx(), c);
    emit objectAdded(object);
}

void Document::UnregisterObject(QoSObject* object)
{
    const QString name = object->Name();
    m_registry.remove(name);
    m_objects.removeOne(object);
    m_controls.removeOne(object);
    if (auto* c = qobject_cast<QoSClass*>(object))
        m_classesByIdx.remove(c->ClassIdx(), c);
    emit objectRemoved(name);
}

void Document::RegisterConnector(QoSConnector* connector)
{
    m_controls.append(connector);
    emit connectorAdded(connector);
}

void Document::UnregisterConnector(QoSConnector* connector)
{
    m_controls.removeOne(connector);
    emit connectorRemoved(connector->Name());
}

void Document::ClassIdxChanged(QoSClass* c, int oldIdx)
{
    if (!m_registry.contains(c->Name()))
        return;
    m_classesByIdx.remove(oldIdx, c);
    m_classesByIdx.insert(c->ClassIdx(), c);
}

Document::ImportScope::ImportScope(Document& doc) : m_doc(doc)
{
    if (m_doc.m_importing++ == 0) {
        m_doc.m_down->BeginDeferred();
        m_doc.m_up->BeginDeferred();
    }
}

Document::ImportScope::~ImportScope()
{
    if (--m_doc.m_importing == 0) {
        m_doc.m_down->EndDeferred();
        m_doc.m_up->EndDeferred();
    }
}

bool Document::AskToSave()
{
    // Changes of the common page alone are work too: a modified document is asked about even
    // when its pages hold no boxes.
    if (!m_modified)
        return true;
    switch (prompt().AskYesNoCancel(QStringLiteral("Soll noch gespeichert werden?"))) {
    case UserPrompt::Answer::Cancel:
        return false;
    case UserPrompt::Answer::Yes:
        return m_saveAs && m_saveAs();
    case UserPrompt::Answer::No:
        break;
    }
    return true;
}

bool Document::ClearDocument()
{
    if (!AskToSave())
        return false;
    Clear();
    return true;
}

void Document::Clear()
{
    if (m_controls.isEmpty()) {
        SetModified(false);
        return;
    }
    if (m_statusWindow)
        m_statusWindow->Show(QStringLiteral("Räume auf..."), QStringLiteral("Räume auf"));
    m_down->ResetContainedObjects();
    m_up->ResetContainedObjects();
    // Removal in creation order, classes, filters and connectors mixed.
    while (!m_controls.isEmpty()) {
        QObject* control = m_controls.takeFirst();
        if (m_statusWindow) {
            m_statusWindow->SetCaption(QStringLiteral("Räume auf..."));
            const auto* box = qobject_cast<QoSObject*>(control);
            const auto* line = qobject_cast<QoSConnector*>(control);
            const QString name = box ? box->Name() : line ? line->Name() : control->objectName();
            m_statusWindow->SetMessage(QStringLiteral("Räume auf\r\nEntferne Objekt ") + name);
        }
        if (auto* o = qobject_cast<QoSObject*>(control)) {
            m_registry.remove(o->Name());
            m_objects.removeOne(o);
            if (auto* c = qobject_cast<QoSClass*>(o))
                m_classesByIdx.remove(c->ClassIdx(), c);
            o->Abandon();
            emit objectRemoved(o->Name());
        } else if (auto* k = qobject_cast<QoSConnector*>(control)) {
            emit connectorRemoved(k->Name());
        }
        delete control;
    }
    m_registry.clear();
    m_objects.clear();
    m_classesByIdx.clear();
    if (m_statusWindow)
        m_statusWindow->Close();
    emit cleared();
}
