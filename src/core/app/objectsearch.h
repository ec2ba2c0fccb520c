#pragma once

#include <QList>
#include <QString>
#include <QStringView>
#include <QtGlobal>
#include <compare>
#include <optional>

class Document;
class QoSObject;

// Finding boxes by what the user remembers of them: a caption, an address, a port.
//
// A box matches when the text (blanks around it dropped) is part of its caption, in any case;
// for a filter also when it is part of the address or of the port text, or when the text is a
// port number that one of the filter's port items stands for, ranges included ("6005" finds
// "6000-6010").
//
// The matches are read down page first, then up, each page in its picture's order: row by row
// from the top, each row left to right. That is the order the keyboard walks a page and the
// file is written in, so "next" goes where the user's eye and Tab would go, and a tree's main
// class comes before its sub classes and filters.
//
// Nothing is cached: every step reads the pages as they are now, so a box deleted since the
// last search is never returned and a box moved since is found at its new place.
class ObjectSearch
{
public:
    // Where a step landed. `index` counts from 1 among `count` matches.
    struct Hit
    {
        QoSObject* object = nullptr;
        qsizetype index = 0;
        qsizetype count = 0;
        // The step went past the last match to the first, or before the first to the last.
        bool wrapped = false;
    };

    explicit ObjectSearch(Document& document);

    static bool Matches(const QoSObject& box, QStringView text);
    // Every match in the order above; none for a text of blanks only.
    QList<QoSObject*> FindAll(const QString& text) const;

    // The text of the last search, which "find next" repeats.
    QString Text() const { return m_text; }
    void SetText(const QString& text) { m_text = text; }

    // The match after `from` (before it when not forward), wrapping round at either end. Without
    // `from` the step starts at the box last found (see Found); when that box has been deleted
    // since, at the place where it stood. Without either, it gives the first match (forward) or
    // the last. A `from` that is no match itself is a place like any other.
    Hit Next(const QoSObject* from, bool forward) const;
    // The box the window showed for the last step, the start of the next one without a `from`.
    void Found(const QoSObject* box);

    // What the status line says about a step with the text.
    static QString Message(const Hit& hit, const QString& text, bool forward);

private:
    // Page, row, column, and the box's age for boxes that share a cell.
    struct Place
    {
        int page = 0;
        int y = 0;
        int x = 0;
        qint64 sequence = 0;
        auto operator<=>(const Place&) const = default;
    };
    // The place of a box still in the document; none for one that is gone or on no page.
    std::optional<Place> placeOf(const QoSObject* box) const;

    Document& m_document;
    QString m_text;
    QString m_foundName;
    Place m_foundPlace;
};
