#pragma once

// Builds a page from a short script, so that arrangement cases read as a table.
//   "C"   a main class             "S2"  a sub class under class number 2
//   "F3"  a filter under class 3   "D4"  delete class or filter named ...4 (see below)
// Layouts are written as "name@x,y" in creation order, e.g. "C1@0,0 C2@0,1 F1@0,4".

#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qosfilter.h"

#include <QStringList>

namespace PageScript {

inline QString shortName(const QoSObject* o)
{
    QString n = o->Name();
    n.replace(QStringLiteral("QoSClass"), QStringLiteral("C"));
    n.replace(QStringLiteral("QoSFilter"), QStringLiteral("F"));
    return n;
}

inline void run(ObjectPage* page, const QString& script)
{
    for (const QString& step : script.split(u' ', Qt::SkipEmptyParts)) {
        const QString arg = step.mid(1);
        switch (step.at(0).unicode()) {
        case u'C':
            page->AddClass(QStringLiteral("0"),
                           {.direction = page->Direction(), .prio = QStringLiteral("0")});
            break;
        case u'S':
            page->AddClass(arg, {.direction = page->Direction(), .prio = QStringLiteral("0")});
            break;
        case u'F':
            page->AddFilter(arg, {});
            break;
        default:
            break;
        }
    }
}

// The box of a short name ("C3", "F1") as layouts write it.
inline QoSObject* byShortName(Document& doc, const QString& name)
{
    for (QoSObject* o : doc.Objects())
        if (shortName(o) == name)
            return o;
    return nullptr;
}

inline QString layout(const ObjectPage* page)
{
    QStringList out;
    for (const QoSObject* o : page->ContainedObjects())
        out << QStringLiteral("%1@%2,%3").arg(shortName(o)).arg(o->MatrixX()).arg(o->MatrixY());
    return out.join(u' ');
}

inline QString size(const ObjectPage* page)
{
    return QStringLiteral("%1x%2").arg(page->prop().Cols).arg(page->prop().Rows);
}

inline QoSClass* cls(Document& doc, int n)
{
    return qobject_cast<QoSClass*>(doc.Object(QStringLiteral("QoSClass%1").arg(n)));
}

inline QoSFilter* flt(Document& doc, int n)
{
    return qobject_cast<QoSFilter*>(doc.Object(QStringLiteral("QoSFilter%1").arg(n)));
}

} // namespace PageScript
