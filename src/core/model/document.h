#pragma once

// The core of the editor, headless, in layers that only look down (no friend class across them):
//   base/    numbers and units, twips, the code page, errors, the user-question interface
//   inputs/  the rules of each input field (bandwidth, address, port list, priority, type, option)
//   model/   this document: common settings, classes and filters with their fields, what a new
//            box is made of, pages with arrangement and selection, connectors, history, the
//            sibling sum and validation, the class calculator
//   file/    the qos.txt table, the reader (import and its report) and the writer in pieces
//   check/   validation following every change, the document check;  app/  config.ini, the
//            first-start defaults, and what the window's commands decide and when they may run
// The widgets (src/widgets) show and edit these objects and decide nothing of their own.

#include "base/userprompt.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>
#include <optional>

class QoSCommon;
class ObjectPage;
class QoSObject;
class QoSClass;
class QoSConnector;
class History;
class UserPrompt;
class StatusWindow;

// The one document: the common settings and the down and up pages, the registry of every
// class and filter by control name, the modified mark and the life-long name counters.
//
// How the pieces fit: an ObjectPage owns the placement of its boxes (QoSClass, QoSFilter)
// on a grid; the tree links live in the objects themselves, by name; every change that a
// view must follow is announced by a signal of the object that changed. The user is asked
// through UserPrompt only, so that no rule depends on a dialog.
class Document : public QObject, public StatusLine
{
    Q_OBJECT
public:
    explicit Document(UserPrompt* prompt = nullptr, QObject* parent = nullptr);
    ~Document() override;

    QoSCommon* Common1() const { return m_common; }
    ObjectPage* Down1() const { return m_down; }
    ObjectPage* Up1() const { return m_up; }
    // The page named by a direction followed by "1", compared without case; none otherwise.
    ObjectPage* PageForDirection(const QString& direction) const;

    UserPrompt& prompt() const;
    void setPrompt(UserPrompt* prompt) { m_prompt = prompt; }
    StatusLine* statusLine() const { return m_statusLine; }
    void setStatusLine(StatusLine* line) { m_statusLine = line; }
    StatusWindow* statusWindow() const { return m_statusWindow; }
    void setStatusWindow(StatusWindow* window) { m_statusWindow = window; }
    // Run by the save question when the user answers Yes; true when the file was written.
    void setSaveAsHandler(std::function<bool()> handler) { m_saveAs = std::move(handler); }

    History* history() const { return m_history; }

    // Modified mark.
    bool IsModified() const { return m_modified; }
    void SetModified(bool modified);

    // Panel 1 of the status bar. The document is the status line its views write to, so that it
    // always knows what the line says.
    void SetStatusText(const QString& text) override;
    void ClearStatusText(const QString& ifShowing) override;
    QString StatusText() const { return m_statusText; }

    // Registry of classes and filters, in creation order.
    QoSObject* Object(const QString& name) const { return m_registry.value(name); }
    const QList<QoSObject*>& Objects() const { return m_objects; }
    // The first class of the registry whose ClassIdx is n.
    QoSClass* ClassByIdx(int n) const;
    // The class of a parent-number text: its number value, when above 0, truncated.
    QoSClass* ClassByNumberText(const QString& text) const;
    // That number, or nothing when the text names no class number.
    static std::optional<qint32> ClassNumber(const QString& text);

    // While a file is read: the pages place their boxes once at the end, the fields the reader
    // sets are not recorded in the history (they are no edits of the user), and the pages show
    // no refusal; the reader counts them and tells them once.
    class ImportScope
    {
    public:
        explicit ImportScope(Document& doc);
        ~ImportScope();
        ImportScope(const ImportScope&) = delete;
        ImportScope& operator=(const ImportScope&) = delete;

    private:
        Document& m_doc;
    };
    bool IsImporting() const { return m_importing > 0; }

    // Asks "Soll noch gespeichert werden?" for a modified document. True when the command that
    // asked may go on: the answer was No, or Yes and the save wrote the file. Cancel, or a save
    // that did not happen (its dialog cancelled, the file not writable), keep the document as it
    // is and stop the command, so that no work is thrown away.
    bool AskToSave();
    // Removes every box, without a question.
    void Clear();
    // Both: the save question, then clearing. False when the command stops; nothing is cleared then.
    bool ClearDocument();

    // The counters behind the control names; they last as long as the document object. The
    // class counter also gives new classes their number, and never one a class already has.
    int NextClassCounter();
    int NextFilterCounter() { return ++m_filterCounter; }
    int ClassCounter() const { return m_classCounter; }
    int FilterCounter() const { return m_filterCounter; }

    // Room for this many more boxes, so that a large import does not grow the registry step by step.
    void ReserveObjects(qsizetype n);

    // Used by pages and objects; not for views.
    void RegisterObject(QoSObject* object);
    void UnregisterObject(QoSObject* object);
    void RegisterConnector(QoSConnector* connector);
    void UnregisterConnector(QoSConnector* connector);
    void ClassIdxChanged(QoSClass* c, int oldIdx);
    qint64 NextSequence() { return ++m_sequence; }

signals:
    void modifiedChanged(bool modified);
    void statusTextChanged(const QString& text);
    void objectAdded(QoSObject* object);
    void objectRemoved(const QString& name);
    void connectorAdded(QoSConnector* connector);
    void connectorRemoved(const QString& name);
    void cleared();

private:
    QoSCommon* m_common;
    ObjectPage* m_down;
    ObjectPage* m_up;
    History* m_history;
    UserPrompt* m_prompt = nullptr;
    std::unique_ptr<UserPrompt> m_silentPrompt;
    StatusLine* m_statusLine = nullptr;
    StatusWindow* m_statusWindow = nullptr;
    std::function<bool()> m_saveAs;

    bool m_modified = false;
    int m_importing = 0;
    QString m_statusText;
    QHash<QString, QoSObject*> m_registry;
    QList<QoSObject*> m_objects;
    QMultiHash<int, QoSClass*> m_classesByIdx;
    // Every class, filter and connector in creation order: the order of clearing.
    QList<QObject*> m_controls;
    int m_classCounter = 0;
    int m_filterCounter = 0;
    qint64 m_sequence = 0;
};
