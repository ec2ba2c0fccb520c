#include "model/classcalculator.h"

#include "base/numbers.h"
#include "base/qoserror.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"

namespace {

QString kbitText(qint32 kbit)
{
    return QString::number(kbit) + QStringLiteral("kbit");
}

} // namespace

QString ClassCalculator::KbitText(qint32 kbit)
{
    return QString::number(kbit) + QStringLiteral(" kbit");
}

QString ClassCalculator::ParentMaxText() const
{
    if (!m_class)
        return QString();
    const std::optional<qint32> kbit = m_parentMax.TryKbit();
    if (!kbit)
        return QStringLiteral("Überlauf (%1)").arg(m_parentMax.Bandwidth());
    const QString figure = KbitText(*kbit);
    const QString written = m_parentMax.Bandwidth();
    return written == kbitText(*kbit) ? figure : QStringLiteral("%1 (%2)").arg(figure, written);
}

QString ClassCalculator::UsesMinText() const
{
    return m_class ? KbitText(m_usesMin) : QString();
}

QString ClassCalculator::AvailableMinText() const
{
    return m_class ? KbitText(m_availableMin) : QString();
}

QString ClassCalculator::FreeMinText() const
{
    return m_class ? KbitText(m_freeMin) : QString();
}

QString ClassCalculator::NewMinAfterText() const
{
    if (!m_class)
        return QString();
    return m_newMinAfter ? KbitText(*m_newMinAfter) : QStringLiteral("Überlauf");
}

bool ClassCalculator::NewMinAfterOverbooked() const
{
    return m_class && (!m_newMinAfter || *m_newMinAfter < 0);
}

QString ClassCalculator::ClassName() const
{
    if (!m_class)
        return QString();
    return m_class->Caption().isEmpty() ? QStringLiteral("(ohne Titel)") : m_class->Caption();
}

QString ClassCalculator::HeadingText() const
{
    if (!m_class)
        return QStringLiteral("Keine Klasse ausgewählt");
    return m_error.isEmpty() ? QStringLiteral("Klasse: %1").arg(ClassName())
                             : QStringLiteral("Klasse: %1\n%2").arg(ClassName(), m_error);
}

ClassCalculator::ClassCalculator(QObject* parent) : QObject(parent)
{
    m_parentMax.SetShowLock(false);
    m_newMin.SetShowLock(false);
    connect(&m_newMin, &BandwidthField::Change, this, [this] {
        if (m_busy || !m_class)
            return;
        m_newMinEdited = true;
        recomputeAfter();
        emit changed();
    });
    clearFigures();
}

void ClassCalculator::SetAutoApply(bool on)
{
    if (on == m_autoApply)
        return;
    m_autoApply = on;
    emit changed();
}

void ClassCalculator::SetPage(ObjectPage* page)
{
    if (m_page)
        disconnect(m_page, nullptr, this, nullptr);
    m_page = page;
    if (page) {
        connect(page, &ObjectPage::selectionChanged, this, [this] {
            if (m_page && m_page->SelectedClass() != m_class)
                SetQoSClass(m_page->SelectedClass());
        });
        // A new child, a sibling's minimum, a class gone: every figure may change.
        connect(page, &ObjectPage::objectAdded, this, &ClassCalculator::follow);
        connect(page, &ObjectPage::objectRemoved, this, &ClassCalculator::refresh);
        for (QoSObject* o : page->ContainedObjects())
            follow(o);
    }
    SetQoSClass(page ? page->SelectedClass() : nullptr);
}

void ClassCalculator::follow(QoSObject* object)
{
    connect(object, &QoSObject::propertyChanged, this, &ClassCalculator::refresh, Qt::UniqueConnection);
}

void ClassCalculator::refresh()
{
    // Without a class the figures are empty already; a file being read changes thousands of
    // properties, and none of them needs a refresh then.
    if (!m_busy && m_class)
        show();
}

void ClassCalculator::applyIfAuto()
{
    // Only a minimum that differs is written: clicking through the tree with auto apply on
    // must not mark an unchanged document modified.
    if (m_autoApply && m_class && m_newMinEdited)
        Apply();
}

void ClassCalculator::SetQoSClass(QoSClass* c)
{
    applyIfAuto();
    m_class = c;
    m_newMinEdited = false;
    watch(c);
    show();
}

void ClassCalculator::watch(QoSClass* c)
{
    for (const auto& w : std::as_const(m_watches))
        disconnect(w);
    m_watches.clear();
    if (!c)
        return;
    // The figures follow edits made elsewhere: in the class box, its parent's box, or a line speed.
    auto refresh = [this] {
        if (!m_busy)
            show();
    };
    m_watches << connect(c, &QObject::destroyed, this, [this] {
        m_class = nullptr;
        watch(nullptr);
        show();
    });
    m_watches << connect(c, &QoSObject::propertyChanged, this, refresh);
    m_watches << connect(c->MinField(), &BandwidthField::lockedChanged, this, &ClassCalculator::changed);
    m_watches << connect(c, &QoSObject::parentChanged, this, [this] {
        watch(m_class); // another parent to listen to
        if (!m_busy)
            show();
    });
    if (QoSClass* p = c->ParentQoSObject())
        m_watches << connect(p, &QoSObject::propertyChanged, this, refresh);
    else
        m_watches << connect(c->document()->Common1(), &QoSCommon::propertyChanged, this, refresh);
}

void ClassCalculator::clearFigures()
{
    m_busy = true;
    m_parentMax.SetBandwidth(QStringLiteral("0kbit"));
    m_newMin.SetBandwidth(QStringLiteral("0kbit"));
    m_busy = false;
    m_usesMin = m_availableMin = m_freeMin = 0;
    m_newMinAfter = 0;
    m_canUp = m_canDown = m_canLeft = m_canRight = false;
}

void ClassCalculator::show()
{
    QoSClass* c = m_class;
    m_error.clear();
    if (!c) {
        clearFigures();
        emit changed();
        return;
    }
    m_busy = true;
    try {
        if (QoSClass* p = c->ParentQoSObject()) {
            // Set as a kbit text: the parent's figure is already converted.
            m_parentMax.SetBandwidth(kbitText(p->QoSMaxBandWidthKBit()));
            const QList<QoSObject*>& siblings = p->ChildQoSObjects();
            const bool several = siblings.size() >= 2;
            m_canLeft = several && siblings.first() != c;
            m_canRight = several && siblings.last() != c;
            m_canUp = true;
        } else {
            // The line speed as written: its kbit value is the properly converted one.
            m_parentMax.SetBandwidth(c->document()->Common1()->LineBandwidth(c->QoSDirection()));
            m_canUp = m_canLeft = m_canRight = false;
        }
        m_canDown = !c->ChildQoSObjects().isEmpty();
        m_usesMin = c->SiblingMinimumSum();
        const qint32 parentKbit = m_parentMax.kbit();
        m_availableMin = parentKbit;
        const qint32 ownMin = c->QoSMinBandWidthKBit();
        m_freeMin = Numbers::TruncateToInt32(double(parentKbit) - double(m_usesMin) + double(ownMin));
        if (!m_newMinEdited)
            m_newMin.SetBandwidth(kbitText(ownMin));
        recomputeAfter();
    } catch (const QoSError& e) {
        m_error = e.message();
        m_usesMin = m_availableMin = m_freeMin = 0;
        m_newMinAfter.reset();
    }
    m_busy = false;
    emit changed();
}

void ClassCalculator::recomputeAfter()
{
    const std::optional<qint32> newMin = m_newMin.TryKbit();
    m_newMinAfter = newMin ? Numbers::TrySub(m_freeMin, *newMin) : std::nullopt;
}

void ClassCalculator::CopyAvailableMin()
{
    if (!m_class || m_availableMin < 1)
        return;
    m_newMin.SetBandwidth(kbitText(m_availableMin));
}

void ClassCalculator::CopyFreeMin()
{
    if (!m_class || m_freeMin < 1)
        return;
    m_newMin.SetBandwidth(kbitText(m_freeMin));
}

bool ClassCalculator::CanApply() const
{
    return m_class && m_class->MinField()->TakesEdits();
}

bool ClassCalculator::Apply()
{
    QoSClass* c = m_class;
    if (!c)
        return false;
    if (!CanApply()) {
        m_error = QStringLiteral("Das Minimum der Klasse ist festgehalten und wird nicht geändert.");
        emit changed();
        return false;
    }
    qint32 newMin = 0;
    try {
        newMin = m_newMin.kbit();
    } catch (const QoSError& e) {
        m_error = e.message();
        emit changed();
        return false;
    }
    m_busy = true;
    // An old minimum beyond 32 bits differs from any new one.
    if (c->MinField()->TryKbit() != newMin)
        c->SetQoSMinBandWidthKBit(newMin);
    try {
        // Validating the parent checks the class and all its siblings again.
        if (QoSClass* p = c->ParentQoSObject())
            p->Validate(true);
        else
            c->Validate(true);
    } catch (const QoSError&) {
        // The sums beyond 32 bits show in the figures below.
    }
    m_busy = false;
    m_newMinEdited = false;
    show();
    return true;
}

void ClassCalculator::select(QoSClass* target)
{
    if (target)
        target->SetSelected(true);
}

void ClassCalculator::MoveUp()
{
    applyIfAuto();
    if (m_class && m_canUp)
        select(m_class->ParentQoSObject());
}

void ClassCalculator::MoveDown()
{
    applyIfAuto();
    if (!m_class || !m_canDown)
        return;
    for (QoSObject* child : m_class->ChildQoSObjects())
        if (auto* sub = qobject_cast<QoSClass*>(child)) {
            select(sub);
            return;
        }
}

void ClassCalculator::MoveLeft()
{
    applyIfAuto();
    if (!m_class || !m_canLeft)
        return;
    const QList<QoSObject*>& siblings = m_class->ParentQoSObject()->ChildQoSObjects();
    const qsizetype at = siblings.indexOf(m_class);
    if (at > 0)
        select(qobject_cast<QoSClass*>(siblings.at(at - 1)));
}

void ClassCalculator::MoveRight()
{
    applyIfAuto();
    if (!m_class || !m_canRight)
        return;
    const QList<QoSObject*>& siblings = m_class->ParentQoSObject()->ChildQoSObjects();
    const qsizetype at = siblings.indexOf(m_class);
    if (at >= 0 && at + 1 < siblings.size())
        select(qobject_cast<QoSClass*>(siblings.at(at + 1)));
}
