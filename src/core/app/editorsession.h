#pragma once

#include "file/importreport.h"

#include <QObject>
#include <QStringList>
#include <functional>

class Document;
class ObjectPage;
class QoSClass;
class QoSFilter;

// What the main window's commands decide, without the window: New, Open, Save As,
// Generate and closing with their questions and status texts, the recently used files,
// and the page tools acting on the page shown and its selection. The window only shows
// the results; every question goes through the document's UserPrompt.
//
// A document has no file name of its own (every save asks for one), but the session
// remembers the file last opened or saved: it names the window and starts the save dialog.
class EditorSession : public QObject
{
    Q_OBJECT
public:
    explicit EditorSession(Document& document, QObject* parent = nullptr);

    Document& document() const { return m_document; }

    // itmFileNew: clears the document after the save question. False when the command stopped
    // (cancelled, or "Ja" and the save did not happen).
    bool New();
    // itmFileOpen: the save question, then the file dialog; the document is cleared only once a
    // file was chosen, and then the file is read.
    bool Open();
    // Clears the document and reads the file without asking for a name: a file given at
    // start or chosen from the recent files.
    bool OpenFile(const QString& path);
    // itmFileSaveAs: asks for a name and writes the document there. False when cancelled
    // or when writing failed; then the old file and the modified mark stay.
    bool SaveAs();
    // Command2: the document's text onto the clipboard, through the given function.
    bool Generate(const std::function<void(const QString&)>& toClipboard);
    // Whether the window may close: asks the save question for a modified document. A
    // save that is cancelled or fails keeps the window open, so that nothing is lost.
    bool QueryClose();

    QString CurrentFile() const { return m_currentFile; }
    // What the import of the file last opened had to tell; an empty report after "Neu".
    const ImportReport& LastImport() const { return m_lastImport; }
    QStringList RecentFiles() const { return m_recentFiles; }
    void SetRecentFiles(const QStringList& files);

    // The page tools, on the object page shown; none (the common page) does nothing.
    QoSClass* NewMainClass(ObjectPage* page);
    QoSClass* NewSubClass(ObjectPage* page);
    QoSFilter* NewFilter(ObjectPage* page);
    bool DeleteObject(ObjectPage* page);
    bool MakeDefaultClass(ObjectPage* page);

    // Whether a tool can act on the object page shown and its selection; the window enables
    // its buttons by these, and the commands above refuse by the same rules.
    bool CanNewMainClass(const ObjectPage* page) const;
    bool CanNewSubClass(const ObjectPage* page) const;
    bool CanNewFilter(const ObjectPage* page) const;
    bool CanDeleteObject(const ObjectPage* page) const;
    bool CanMakeDefaultClass(const ObjectPage* page) const;
    // The page size, the class calculator and the kind of the new-object button belong to an
    // object page: on the common page they have nothing to act on.
    bool CanChangePageSize(const ObjectPage* page) const;
    bool CanShowCalculator(const ObjectPage* page) const;
    bool CanChooseNewObject(const ObjectPage* page) const;
    // The toolbar's Save offers itself only while there is something to save; Save As from the
    // menu is always there.
    bool CanSave() const;

    static QString OpenTitle() { return QStringLiteral("Datei öffnen"); }
    static QString SaveTitle() { return QStringLiteral("Datei speichern unter..."); }
    // Hand-written router files are often named otherwise, hence the second entry.
    static QString OpenFilter() { return QStringLiteral("*qos.txt|*qos.txt|Alle Dateien (*)|*"); }
    static QString SaveFilter() { return QStringLiteral("qos.txt|qos.txt|Alle Dateien (*)|*"); }
    // The name the save dialog starts with: the file last opened or saved, else "qos.txt"
    // in the folder of the newest recent file.
    QString InitialSaveName() const;
    QString InitialOpenName() const;

signals:
    void currentFileChanged(const QString& path);
    void recentFilesChanged(const QStringList& files);
    void lastImportChanged(const ImportReport& report);

private:
    bool readFile(const QString& path, QByteArray& bytes);
    bool importFile(const QString& path, const QByteArray& bytes);
    void setCurrentFile(const QString& path);
    void setLastImport(const ImportReport& report);
    void addRecentFile(const QString& path);
    void commonChanged(const QString& property);
    void revalidate(ObjectPage* page);

    Document& m_document;
    QString m_currentFile;
    QStringList m_recentFiles;
    ImportReport m_lastImport;
};
