#pragma once

#include "inputs/bandwidthfield.h"
#include "model/objectpage.h"

#include <QObject>
#include <QPointer>
#include <optional>

class QoSClass;

// Helps share out minimum bandwidth among sibling classes: for the class shown it tells
// what the parent offers, what the class and its siblings already guarantee, what this
// class could take, and what would be left after a new minimum. It applies that minimum
// and moves the selection through the tree.
//
// All figures are whole kbit. The parent's maximum and the new minimum are bandwidth
// fields, so that a line speed written in Mbit is converted properly and the user may
// type the new minimum in any unit.
class ClassCalculator : public QObject
{
    Q_OBJECT
public:
    explicit ClassCalculator(QObject* parent = nullptr);

    // The class shown; none leaves every figure empty and every command disabled.
    QoSClass* CurrentClass() const { return m_class; }
    // Shows a class. With auto apply on, the pending new minimum goes to the class shown
    // so far first.
    void SetQoSClass(QoSClass* c);
    // Follows the selected class of a page (none: the common page is shown).
    void SetPage(ObjectPage* page);
    ObjectPage* Page() const { return m_page; }

    // txtParentMax: the parent's maximum, or for a main class the line speed of its direction.
    BandwidthField* ParentMax() { return &m_parentMax; }
    qint32 UsesMin() const { return m_usesMin; }           // txtUsesMin
    qint32 AvailableMin() const { return m_availableMin; } // txtAvailableMin
    qint32 FreeMin() const { return m_freeMin; }           // txtFreeMin
    BandwidthField* NewMin() { return &m_newMin; }         // txtNewMin
    // txtNewMinAfter; nothing when the subtraction does not fit into 32 bits.
    std::optional<qint32> NewMinAfter() const { return m_newMinAfter; }
    // A figure as the panel shows it: "768 kbit".
    static QString KbitText(qint32 kbit);
    // The figures as the panel shows them, each empty while no class is shown.
    // txtParentMax: its kbit figure, followed by the line speed as written when that reads
    // otherwise ("10240 kbit (10Mbit)"); "Überlauf" beyond 32 bits.
    QString ParentMaxText() const;
    QString UsesMinText() const;
    QString AvailableMinText() const;
    QString FreeMinText() const;
    // txtNewMinAfter: its figure, or "Überlauf" when the subtraction does not fit.
    QString NewMinAfterText() const;
    // Whether what is left after the new minimum is a warning: below zero the siblings would
    // be promised more than the parent has, and an overflow promises no figure at all.
    bool NewMinAfterOverbooked() const;
    // The class shown, named by its caption as its title bar shows it.
    QString ClassName() const;
    // The panel's heading: the class shown and why its figures could not be computed, or that
    // no class is selected.
    QString HeadingText() const;
    // Why the figures could not be computed (a sum beyond 32 bits); empty normally.
    QString ErrorText() const { return m_error; }

    bool AutoApply() const { return m_autoApply; } // chlAutoApply
    void SetAutoApply(bool on);

    // A minimum the user locked keeps its value: the calculator does not write it.
    bool CanApply() const;
    bool CanMoveUp() const { return m_canUp; }
    bool CanMoveDown() const { return m_canDown; }
    bool CanMoveLeft() const { return m_canLeft; }
    bool CanMoveRight() const { return m_canRight; }

    // lblAvailMin and lblFreeMin: copy their figure into the new minimum when it is at least 1.
    void CopyAvailableMin();
    void CopyFreeMin();

    // cmdApply: the new minimum becomes the class's minimum, the class and its siblings are
    // validated again and every figure is refreshed. Fails (with the reason in ErrorText)
    // when the new minimum does not fit into 32 bits.
    bool Apply();
    void MoveUp();
    void MoveDown();
    void MoveLeft();
    void MoveRight();

signals:
    // Any figure, the class shown or the enabled commands changed.
    void changed();

private:
    void show();
    void follow(QoSObject* object);
    void refresh();
    void clearFigures();
    void recomputeAfter();
    void watch(QoSClass* c);
    void select(QoSClass* target);
    void applyIfAuto();

    QPointer<QoSClass> m_class;
    QPointer<ObjectPage> m_page;
    BandwidthField m_parentMax;
    BandwidthField m_newMin;
    qint32 m_usesMin = 0;
    qint32 m_availableMin = 0;
    qint32 m_freeMin = 0;
    std::optional<qint32> m_newMinAfter;
    QString m_error;
    bool m_autoApply = false;
    bool m_canUp = false;
    bool m_canDown = false;
    bool m_canLeft = false;
    bool m_canRight = false;
    // Set while the calculator itself writes, so that its own changes do not refresh it midway.
    bool m_busy = false;
    // The user typed a new minimum that a refresh from outside must not overwrite.
    bool m_newMinEdited = false;
    QList<QMetaObject::Connection> m_watches;
};
