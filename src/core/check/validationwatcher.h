#pragma once

#include <QHash>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>

class Document;
class ObjectPage;
class QoSClass;
class QoSObject;

// Keeps the bandwidth colours of one page's classes true while the user works: after a
// change of a class's bandwidth, of a link (added, cut, dropped, plugged, a class deleted) or
// of a line speed, the classes whose verdict the change can alter are checked again with the
// rules of the check button.
//
// A class's verdict depends only on its sibling group (the children of its parent, or the
// main classes of its direction) and on its limit. So a change marks groups: a minimum its
// own group, a maximum its own group and the group of its children, a link the group left
// and the group joined, a line speed the main classes. Each marked group is checked with one
// sum. The checks wait for the event loop: a file read in one go costs one pass, not one
// per class, and a check made after every step of a long import (when the interface repaints
// between steps) costs only the group the step touched. Flush runs them at once.
class ValidationWatcher : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("model/qosclass.h")
public:
    explicit ValidationWatcher(ObjectPage* page, QObject* parent = nullptr);

    // Checks every marked group now.
    void Flush();
    bool Pending() const { return m_scheduled; }

signals:
    // A sibling group was checked again (also when a figure beyond 32 bits stopped the check):
    // what a red field of its classes has to say may have changed with its colour unchanged.
    void groupChecked(const QList<QoSClass*>& group);

private:
    struct Place
    {
        QString parent;    // the parent's name, "" for a main class
        QString direction; // the direction the class had
        qint64 sequence = 0;
    };

    void watch(QoSObject* object);
    void propertyChanged(QoSClass* c, const QString& property);
    void parentChanged(QoSClass* c, const QString& parentName);
    void removed(const QString& name);
    void markPlace(const Place& place);
    // Keeps the class in the main classes of its direction exactly while it has no parent.
    void placeMainClass(QoSClass* c, const Place& old, const Place& now);
    void markAll();
    void schedule();
    void checkMainClasses(const QString& direction);
    void checkChildren(QoSClass* parent);

    ObjectPage* m_page;
    Document* m_document;
    // Where each watched class stood when last seen, so that leaving a group marks it too.
    QHash<QString, Place> m_places;
    // The main classes of each direction in creation order: the order their sum is taken in.
    QHash<QString, QMap<qint64, QPointer<QoSClass>>> m_mainClasses;
    QSet<QString> m_dirtyParents;    // classes whose child classes are to be checked
    QSet<QString> m_dirtyDirections; // directions whose main classes are to be checked
    bool m_scheduled = false;
};
