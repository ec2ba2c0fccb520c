#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class QoSFileTable;

// What an import read, and everything about it the user must hear: where and why it stopped
// when it did not reach the end, the boxes the pages refused, and what the file itself lacks.
struct ImportReport
{
    // Boxes the pages refused for one reason, counted together so that a file of two hundred
    // refused classes is told in one sentence.
    struct Refusal
    {
        bool filters = false; // filter entries, else classes
        QString reason;       // "mehr als vier Ebenen"
        qint32 count = 0;
        QList<qint32> first; // the first few numbers of the file, in order
    };

    // False as soon as there is anything to tell: an early stop, a refusal or a warning.
    bool complete = true;
    // The first error ended the import.
    bool stopped = false;
    // Where the import stopped: "Kopfteil", "Klasse 7", "Filtereintrag 12"; empty otherwise.
    QString where;
    // Why, as a German sentence that names the place ("Klasse 7 hat die Richtung 'sideways'.").
    QString reason;
    qint32 classesRead = 0;
    qint32 classesAnnounced = 0;
    qint32 entriesRead = 0;
    qint32 entriesAnnounced = 0;
    QList<Refusal> refusals;
    // What the file lacks, one German sentence each; the document is built all the same.
    QStringList warnings;

    // Counts one refused class or filter entry of the file.
    void AddRefusal(bool filters, const QString& reason, qint32 number);
    // One line for the user, saying all of it: "Die Datei wurde nicht vollständig gelesen:
    // <reason> Gelesen: 6 von 12 Klassen, 0 von 20 Filtereinträgen." for an early stop, followed
    // by the refusals and the warnings; empty when the import was complete.
    QString Message() const;
    // Warns when the file holds no variable of a qos.txt at all, or when classes or filter
    // entries its counts announce have none of their variables in it (a file cut off part-way).
    void WarnAboutMissing(const QoSFileTable& file, qint32 classes, qint32 filters);
};
