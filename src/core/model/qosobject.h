#pragma once

#include "base/watched.h"

#include <QObject>
#include <QPointer>
#include <QString>

class Document;
class ObjectPage;
class QoSClass;
class QoSConnector;

// What classes and filters share: name, caption, grid cell, box geometry, selection, the
// link to the parent class (kept by name) and the upper connector.
class QoSObject : public QObject
{
    Q_OBJECT
    TARNWICK_WATCHED
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
public:
    // The result of letting a dragged box go.
    struct DropResult
    {
        bool moved = false;  // went to a free cell
        bool linked = false; // hung under the box it was dropped on
        QString message;     // the refusal shown to the user, if any
    };

    QoSObject(Document* document, ObjectPage* page, const QString& name);
    ~QoSObject() override;

    virtual QString TypeName() const = 0;
    bool IsClass() const;
    bool IsFilter() const;

    // The control name, "QoSClass3" or "QoSFilter7": unique for the life of the program.
    QString Name() const { return m_name; }
    Document* document() const { return m_document; }
    ObjectPage* GetObjectPage() const { return m_page; }
    qint64 Sequence() const { return m_sequence; }

    QString Caption() const { return m_caption; }
    void SetCaption(const QString& caption);

    // While an import defers the arrangement, a box may not know its column yet: see
    // ObjectPage::SettleColumns.
    qint16 MatrixX() const
    {
        Q_ASSERT(columnSettled());
        return m_x;
    }
    qint16 MatrixY() const { return m_y; }
    void SetMatrixX(qint16 x);
    void SetMatrixY(qint16 y);

    // Box geometry in twips. The size starts as the page's box size; the view may change it.
    double Left() const { return m_left; }
    double Top() const { return m_top; }
    int Width() const { return m_width; }
    int Height() const { return m_height; }
    void Move(double left, double top);
    void Resize(int width, int height);

    bool Visible() const { return m_visible; }
    void SetVisible(bool visible);

    bool Selected() const { return m_selected; }
    virtual void SetSelected(bool selected);

    // The parent class, found by the stored name among the objects of the page.
    QString ParentName() const { return m_parentName; }
    QoSClass* ParentQoSObject() const;
    virtual void AddParentQoSObject(const QString& name) = 0;
    // The same with the class already found.
    virtual void AddParentQoSObject(QoSClass* parent) = 0;

    QoSConnector* LineTop() const { return m_lineTop; }
    void RemoveTopConnector();
    void PaintLines();
    void UpdateTopConnector();

    // Edit commands of the box's menu and keys. Copy and paste do nothing on purpose;
    // cut is delete (nothing goes to a clipboard).
    virtual void EditDelete() = 0;
    void EditCut() { EditDelete(); }
    void EditCopy() {}
    void EditPaste() {}

    // The drop of a drag: the box was let go with its top-left corner at (left, top). Carries
    // out what DropPlan::For says such a drop does.
    DropResult MoveObject(double left, double top);
    // The drop of a class's plug on this box: hangs the box under that class by the usual rules,
    // which refuse silently. A link that would make the tree deeper than four class levels is
    // refused with a message and changes nothing. True when the box hangs there afterwards.
    bool LinkByPlug(const QString& className);
    // Whether a plug carrying that class name may be dropped on this box at all: never the
    // box's own plug. What the link then makes of it is LinkByPlug's business.
    bool AcceptsPlug(const QString& className) const;

    // Used by the tree operations and the page.
    void SetParentName(const QString& name);
    // The cell of a box that is not yet on its page.
    void InitCell(qint16 x, qint16 y)
    {
        m_x = x;
        m_y = y;
    }
    void CreateTopConnector();
    // Takes the object out of its parent's children and drops its connector.
    void DetachFromParent();
    // Forgets page and links without calling back; the document is being cleared.
    void Abandon();

signals:
    void captionChanged(const QString& caption);
    void cellChanged(int x, int y);
    void geometryChanged();
    void visibleChanged(bool visible);
    void selectedChanged(bool selected);
    void parentChanged(const QString& parentName);
    void linesChanged();
    // Any stored property, by its name.
    void propertyChanged(const QString& name);

public:
    // Whether anybody follows this box's signals.
    bool IsWatched() const { return watched(); }

protected:
    void markChanged(const QString& property);
    // Hangs the object under a parent the caller has accepted: out of the old parent's
    // children, into the new one's, with a new upper connector.
    void LinkUnder(QoSClass* parent, const QString& property);

    Document* m_document;
    ObjectPage* m_page; // pages live as long as the document

private:
    // Whether MatrixX is the box's column: not while the arrangement keeps it in a list.
    bool columnSettled() const;

    QString m_name;
    qint64 m_sequence;
    QString m_caption;
    qint16 m_x = 0;
    qint16 m_y = 0;
    double m_left = 0;
    double m_top = 0;
    int m_width;
    int m_height;
    bool m_visible = true;
    bool m_selected = false;
    QString m_parentName;
    // The class the name stood for when last looked up: names are never given twice, so the
    // name needs no look-up again while that class lives.
    mutable QPointer<QoSClass> m_parentCache;
    QoSConnector* m_lineTop = nullptr;
};
