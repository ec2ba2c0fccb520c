#include "diffentry.h"

namespace {

QString shown(const QString& value)
{
    if (value.isEmpty())
        return QStringLiteral("(leer)");
    // The description may run over several lines, and the entry is one.
    QString text = value;
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return text.replace(u'\n', QStringLiteral(" ⏎ "));
}

QString pathText(const QStringList& path)
{
    return path.join(QStringLiteral(" › "));
}

QString changesText(const QList<DiffChange>& changes)
{
    QStringList parts;
    for (const DiffChange& c : changes)
        parts.append(c.label + u' ' + shown(c.oldValue) + QStringLiteral(" → ") + shown(c.newValue));
    return parts.join(QStringLiteral(", "));
}

// The values of a box added or removed; empty fields say nothing and are left out.
QString valuesText(const QList<DiffChange>& changes, bool added)
{
    QStringList parts;
    for (const DiffChange& c : changes) {
        const QString& value = added ? c.newValue : c.oldValue;
        if (!value.isEmpty())
            parts.append(c.label + u' ' + shown(value));
    }
    return parts.isEmpty() ? QString() : QStringLiteral(" (") + parts.join(QStringLiteral(", ")) + u')';
}

} // namespace

QString DiffEntry::KindName(Kind kind)
{
    switch (kind) {
    case Kind::Changed:
        return QStringLiteral("changed");
    case Kind::Added:
        return QStringLiteral("added");
    case Kind::Removed:
        return QStringLiteral("removed");
    case Kind::Moved:
        return QStringLiteral("moved");
    case Kind::Renamed:
        return QStringLiteral("renamed");
    }
    return {};
}

QString DiffEntry::ObjectName(Object object)
{
    switch (object) {
    case Object::Common:
        return QStringLiteral("common");
    case Object::Class:
        return QStringLiteral("class");
    case Object::Filter:
        return QStringLiteral("filter");
    }
    return {};
}

QString DiffEntry::Line() const
{
    if (object == Object::Common)
        return QStringLiteral("Allgemein: ") + changesText(changes);
    QString text = (page == u"up" ? QStringLiteral("Up: ") : QStringLiteral("Down: ")) + pathText(path) +
                   QStringLiteral(": ");
    const QString changed = changesText(changes);
    switch (kind) {
    case Kind::Changed:
        return text + changed;
    case Kind::Added:
        return text + QStringLiteral("neu") + valuesText(changes, true);
    case Kind::Removed:
        return text + QStringLiteral("entfernt") + valuesText(changes, false);
    case Kind::Moved:
        text += QStringLiteral("verschoben von ") + pathText(oldPath);
        break;
    case Kind::Renamed:
        text += QStringLiteral("umbenannt von ") + oldPath.last();
        break;
    }
    return changed.isEmpty() ? text : text + QStringLiteral(", ") + changed;
}
