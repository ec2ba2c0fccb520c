#pragma once

#include "model/qosobject.h"

#include "inputs/bandwidthfield.h"
#include "inputs/priofield.h"

#include <QList>
#include <QStringList>
#include <optional>

class ValidationPass;

// One traffic class of one direction: a node of the class tree. Its children are either
// sub classes or filters, never both.
class QoSClass final : public QoSObject
{
    Q_OBJECT
    Q_PROPERTY(QString QoSParent READ QoSParent WRITE SetQoSParent)
    Q_PROPERTY(QString QoSMinBandWidth READ QoSMinBandWidth WRITE SetQoSMinBandWidth)
    Q_PROPERTY(QString QoSMaxBandWidth READ QoSMaxBandWidth WRITE SetQoSMaxBandWidth)
    Q_PROPERTY(QString QoSDirection READ QoSDirection WRITE SetQoSDirection)
    Q_PROPERTY(QString QoSPrio READ QoSPrio WRITE SetQoSPrio)
    Q_PROPERTY(bool DefaultClass READ DefaultClass WRITE SetDefaultClass)
public:
    QoSClass(Document* document, ObjectPage* page, const QString& name);

    QString TypeName() const override { return QStringLiteral("QoSClass"); }

    int ClassIdx() const { return m_classIdx; }
    void SetClassIdx(int idx);

    // The parent's class number as text, "0" for a main class or a parent that is gone.
    QString QoSParent() const;
    // Links the class under the class of that number; 0, negative, no number or a number
    // that no class has leave it as it is.
    void SetQoSParent(const QString& number);

    QString QoSMinBandWidth() const;
    void SetQoSMinBandWidth(const QString& bandwidth);
    QString QoSMaxBandWidth() const;
    void SetQoSMaxBandWidth(const QString& bandwidth);
    // In kbit, through the bandwidth fields' own rules; throw an overflow QoSError beyond 32 bits.
    qint32 QoSMinBandWidthKBit() const;
    void SetQoSMinBandWidthKBit(qint32 kbit);
    qint32 QoSMaxBandWidthKBit() const;
    void SetQoSMaxBandWidthKBit(qint32 kbit);
    BandwidthField* MinField() const { return m_min; }
    BandwidthField* MaxField() const { return m_max; }

    QString QoSDirection() const { return m_direction; }
    void SetQoSDirection(const QString& direction);
    QString QoSPrio() const { return m_prio->Value(); }
    // Marks the class changed even when the priority stays as it was.
    void SetQoSPrio(const QString& prio);
    PrioField* PrioInput() const { return m_prio; }

    bool DefaultClass() const { return m_defaultClass; }
    // Setting it clears the mark of every other class of the page and hands the class's
    // number to the common settings; clearing it leaves the common settings alone.
    void SetDefaultClass(bool value);

    // Children in the order they were added.
    const QList<QoSObject*>& ChildQoSObjects() const { return m_children; }
    QStringList ChildNames() const;
    void AddChild(QoSObject* child);
    void RemoveChildQoSQbject(QoSObject* child);
    void AddParentQoSObject(const QString& name) override;
    void AddParentQoSObject(::QoSClass* parent) override;

    QoSClass* TopClass();
    // The class level by parent links: 0 for a main class, 1 for its sub classes and so on.
    int Level() const;
    // How many class levels hang below the class: 0 without child classes. The branch of
    // `without`, when it lies below, is left out.
    int SubtreeDepth(const QoSClass* without = nullptr) const;
    bool HasChildClasses() const;
    bool HasFilters() const;
    bool IsInDownTree(const QoSObject* object) const;

    // The parent's maximum in kbit, or for a main class the bare leading number of the
    // line bandwidth of its direction (no unit conversion: "2Mbit" gives 2).
    qint32 Limit() const;
    // The same, with nothing where Limit throws (beyond 32 bits).
    std::optional<qint32> TryLimit() const;
    // The minimums of the class and its siblings, in kbit; throws on 32-bit overflow.
    qint32 SiblingMinimumSum() const;
    // Colours the bandwidth fields through their IsValid. Throws an overflow QoSError when a
    // sum or a conversion does not fit; flags not yet set by then stay as they were. Runs that
    // belong together (every main class of the document) share one pass.
    void Validate(bool recursive);
    void Validate(bool recursive, ValidationPass& pass);
    // The colours of Validate for a limit and sibling sum the caller already knows, so that a
    // whole sibling group is checked with one sum. Throws an overflow QoSError like Validate.
    void ValidateAgainst(qint32 limit, qint32 siblingSum);
    // The box's check button: Validate(true). An error on the way (a sum or a conversion beyond
    // 32 bits) stops the check where it stands, and the user is told why through the
    // document's prompt. Returns whether the check ran to its end.
    bool CheckCommand();

    void SetSelected(bool selected) override;
    void EditDelete() override;

    // Lays out the children below the class; the arrangement is done when a box is added.

private:
    void unlinkChildConnectors();

    int m_classIdx = 0;
    // The fields live inside the class; the pointers are what views and rules hold.
    BandwidthField m_minField;
    BandwidthField m_maxField;
    PrioField m_prioField;
    BandwidthField* m_min = &m_minField;
    BandwidthField* m_max = &m_maxField;
    PrioField* m_prio = &m_prioField;
    QString m_direction = QStringLiteral("down");
    bool m_defaultClass = false;
    // Children in order, with counts of each kind so that the tree rules need no walk.
    // Every removal of a box takes it out of its parent's list, so no pointer here dangles.
    QList<QoSObject*> m_children;
    int m_childClasses = 0;
    int m_childFilters = 0;
};
