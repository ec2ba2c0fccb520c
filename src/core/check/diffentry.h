#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// One value of a document that differs between an old and a new file, in the units written.
struct DiffChange
{
    QString field; // the name `tarnwick-cli json` gives the value: "max", "port", "QoSLocalBand"
    QString label; // what the user reads: "Max", "Ports", "Bandbreite lokales Netz"
    QString oldValue;
    QString newValue;
};

// One difference between two documents: a common setting, or a class or filter that changed,
// was added, removed, moved under another class or renamed.
struct DiffEntry
{
    enum class Kind { Changed, Added, Removed, Moved, Renamed };
    enum class Object { Common, Class, Filter };

    QString page; // "common", "down" or "up"
    Kind kind = Kind::Changed;
    Object object = Object::Common;
    // The labels from the main class down to the box, in the new file (the old one for a box
    // removed): the caption, "[2]" after it for the second of several siblings of one caption,
    // "Filter 2" for the second filter of a class without a caption.
    QStringList path{};
    // Moved or renamed: the path in the old file.
    QStringList oldPath{};
    // The values that differ; for a box added all its values as new ones, for a box removed
    // all its values as old ones.
    QList<DiffChange> changes{};

    // The entry as one German line: "Down: Haupt › Web: Max 2000kbit → 4000kbit".
    QString Line() const;
    static QString KindName(Kind kind);
    static QString ObjectName(Object object);
};
