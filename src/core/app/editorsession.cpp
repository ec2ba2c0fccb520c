#include "app/editorsession.h"

#include "app/appproperties.h"
#include "base/atomicfile.h"
#include "base/qoserror.h"
#include "base/userprompt.h"
#include "file/qosreader.h"
#include "file/qoswriter.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/qosfilter.h"
#include "model/validationpass.h"

#include <QDir>
#include <QFileInfo>

namespace {

const QString WriterFailed = QStringLiteral("Bei der Erstellung sind Fehler aufgetreten!");
const QString Saved = QStringLiteral("Datei gespeichert.");
const QString Opened = QStringLiteral("Datei geöffnet.");
const QString NotSaved = QStringLiteral("Datei nicht gespeichert.");

} // namespace

EditorSession::EditorSession(Document& document, QObject* parent) : QObject(parent), m_document(document)
{
    m_document.setSaveAsHandler([this] { return SaveAs(); });
    connect(m_document.Common1(), &QoSCommon::propertyChanged, this, &EditorSession::commonChanged);
    // The status line never contradicts the document: once it changes, it is no longer the file
    // that was just saved or opened.
    connect(&m_document, &Document::modifiedChanged, this, [this](bool modified) {
        if (modified && (m_document.StatusText() == Saved || m_document.StatusText() == Opened))
            m_document.SetStatusText(QString());
    });
}

void EditorSession::commonChanged(const QString& property)
{
    // The default classes are set by the classes and by every export: no edit of the user.
    if (property == u"QoSInternetDefaultDown" || property == u"QoSInternetDefaultUp")
        return;
    // The common settings are part of the file: a changed line speed must not be lost on close.
    m_document.SetModified(true);
    if (property == u"QoSInternetBandDown")
        revalidate(m_document.Down1());
    else if (property == u"QoSInternetBandUp")
        revalidate(m_document.Up1());
}

void EditorSession::revalidate(ObjectPage* page)
{
    // The line speed is the limit of the main classes of its direction; one pass adds their
    // minimums up once for all of them.
    ValidationPass().ValidateMainClasses(*page);
}

// --- files --------------------------------------------------------------------------------

bool EditorSession::New()
{
    if (!m_document.ClearDocument())
        return false;
    setCurrentFile(QString());
    setLastImport(ImportReport());
    m_document.SetStatusText(QStringLiteral("Neue Konfiguration begonnen."));
    return true;
}

bool EditorSession::Open()
{
    // The question first, then the dialog; the document goes only once a file was chosen and
    // read, so that cancelling the dialog or choosing an unreadable file leaves it as it was.
    if (!m_document.AskToSave())
        return false;
    const auto name = m_document.prompt().OpenFileName(OpenTitle(), InitialOpenName(), OpenFilter());
    if (!name) {
        m_document.SetStatusText(QStringLiteral("Datei öffnen abgebrochen."));
        return false;
    }
    QByteArray bytes;
    if (!readFile(*name, bytes))
        return false;
    m_document.Clear();
    return importFile(*name, bytes);
}

bool EditorSession::OpenFile(const QString& path)
{
    // A file that cannot be read is said so before anything is asked or cleared.
    QByteArray bytes;
    if (!readFile(path, bytes) || !m_document.ClearDocument())
        return false;
    return importFile(path, bytes);
}

bool EditorSession::readFile(const QString& path, QByteArray& bytes)
{
    QString error;
    if (ReadQoSFile(path, bytes, error))
        return true;
    if (!QFileInfo::exists(path)) {
        QStringList files = m_recentFiles;
        files.removeAll(path);
        SetRecentFiles(files); // a file that is gone is no longer offered
        error =
            QStringLiteral("Die Datei \"%1\" kann nicht gelesen werden.").arg(QDir::toNativeSeparators(path));
    }
    m_document.prompt().Message(error, UserPrompt::Icon::Warning);
    m_document.SetStatusText(QStringLiteral("Datei nicht geöffnet."));
    return false;
}

bool EditorSession::importFile(const QString& path, const QByteArray& bytes)
{
    setCurrentFile(QString());
    const QFileInfo info(path);
    const ImportReport report = ImportQoSBytes(m_document, bytes);
    setLastImport(report);
    m_document.SetModified(false);
    setCurrentFile(info.absoluteFilePath());
    addRecentFile(path);
    // Nobody may save half a configuration over a whole one without knowing.
    if (!report.complete) {
        m_document.prompt().Message(report.Message(), UserPrompt::Icon::Warning);
        m_document.SetStatusText(QStringLiteral("Datei unvollständig gelesen."));
    } else {
        m_document.SetStatusText(Opened);
    }
    return report.complete;
}

void EditorSession::setLastImport(const ImportReport& report)
{
    m_lastImport = report;
    emit lastImportChanged(m_lastImport);
}

bool EditorSession::SaveAs()
{
    const auto name = m_document.prompt().SaveFileName(SaveTitle(), InitialSaveName(), SaveFilter());
    if (!name) {
        m_document.SetStatusText(QStringLiteral("Datei speichern unter abgebrochen."));
        return false;
    }
    QByteArray bytes;
    try {
        bytes = ExportQoSBytes(m_document);
    } catch (const QoSError& e) {
        // The reason names the box or the setting, so that the user can put it right.
        m_document.prompt().Message(WriterFailed + QStringLiteral("\n\n") + e.message(),
                                    UserPrompt::Icon::Critical);
        m_document.SetStatusText(NotSaved);
        return false;
    }
    QString reason;
    if (!WriteFileAtomically(*name, bytes, &reason)) {
        m_document.prompt().Message(QStringLiteral("Die Datei \"%1\" wurde nicht gespeichert. %2")
                                        .arg(QDir::toNativeSeparators(*name), reason),
                                    UserPrompt::Icon::Critical);
        m_document.SetStatusText(NotSaved);
        return false;
    }
    m_document.SetModified(false);
    setCurrentFile(QFileInfo(*name).absoluteFilePath());
    addRecentFile(*name);
    m_document.SetStatusText(Saved);
    return true;
}

bool EditorSession::Generate(const std::function<void(const QString&)>& toClipboard)
{
    // Writing renumbers the boxes but changes nothing a user wrote.
    const bool modified = m_document.IsModified();
    QString text;
    QString reason;
    try {
        text = ExportQoSText(m_document);
    } catch (const QoSError& e) {
        text.clear();
        reason = e.message();
    }
    m_document.SetModified(modified);
    if (text.isEmpty()) {
        m_document.prompt().Message(reason.isEmpty() ? WriterFailed
                                                     : WriterFailed + QStringLiteral("\n\n") + reason,
                                    UserPrompt::Icon::Critical);
        return false;
    }
    toClipboard(text);
    m_document.prompt().Message(
        QStringLiteral("Konfiguration generiert und in die Zwischenablage eingefügt."),
        UserPrompt::Icon::Information);
    return true;
}

bool EditorSession::QueryClose()
{
    // A save that is cancelled or fails keeps the window open, so that nothing is lost.
    return m_document.AskToSave();
}

QString EditorSession::InitialSaveName() const
{
    if (!m_currentFile.isEmpty())
        return m_currentFile;
    if (!m_recentFiles.isEmpty())
        return QFileInfo(m_recentFiles.first()).absoluteDir().filePath(QStringLiteral("qos.txt"));
    return QStringLiteral("qos.txt");
}

QString EditorSession::InitialOpenName() const
{
    const QString last =
        m_currentFile.isEmpty() && !m_recentFiles.isEmpty() ? m_recentFiles.first() : m_currentFile;
    if (last.isEmpty())
        return QStringLiteral("*qos.txt");
    return QFileInfo(last).absoluteDir().filePath(QStringLiteral("*qos.txt"));
}

void EditorSession::setCurrentFile(const QString& path)
{
    if (path == m_currentFile)
        return;
    m_currentFile = path;
    emit currentFileChanged(path);
}

void EditorSession::SetRecentFiles(const QStringList& files)
{
    QStringList unique;
    for (const QString& f : files)
        if (!f.isEmpty() && !unique.contains(f) && unique.size() < AppProperties::MaxRecentFiles)
            unique << f;
    if (unique == m_recentFiles)
        return;
    m_recentFiles = unique;
    emit recentFilesChanged(m_recentFiles);
}

void EditorSession::addRecentFile(const QString& path)
{
    QStringList files = m_recentFiles;
    const QString absolute = QFileInfo(path).absoluteFilePath();
    files.removeAll(absolute);
    files.prepend(absolute);
    SetRecentFiles(files);
}

// --- page tools ---------------------------------------------------------------------------

namespace {

// A page command never takes the window down: an error of the rules is shown and the
// document stays as the command left it.
template <typename Fn> auto guarded(Document& doc, Fn fn) -> decltype(fn())
{
    try {
        return fn();
    } catch (const QoSError& e) {
        doc.prompt().Message(e.message(), UserPrompt::Icon::Critical);
        return {};
    }
}

} // namespace

bool EditorSession::CanNewMainClass(const ObjectPage* page) const
{
    return page != nullptr;
}

bool EditorSession::CanNewSubClass(const ObjectPage* page) const
{
    return page && page->SelectedClass();
}

bool EditorSession::CanNewFilter(const ObjectPage* page) const
{
    return page && page->SelectedClass();
}

bool EditorSession::CanDeleteObject(const ObjectPage* page) const
{
    // A selected connector is no box: the connector cuts itself, from its own menu or key.
    return page && page->SelectedObject();
}

bool EditorSession::CanMakeDefaultClass(const ObjectPage* page) const
{
    return page && page->SelectedClass();
}

bool EditorSession::CanChangePageSize(const ObjectPage* page) const
{
    return page != nullptr;
}

bool EditorSession::CanShowCalculator(const ObjectPage* page) const
{
    return page != nullptr;
}

bool EditorSession::CanChooseNewObject(const ObjectPage* page) const
{
    return page != nullptr;
}

bool EditorSession::CanSave() const
{
    return m_document.IsModified();
}

QoSClass* EditorSession::NewMainClass(ObjectPage* page)
{
    if (!CanNewMainClass(page))
        return nullptr;
    return guarded(m_document, [&]() -> QoSClass* {
        const QString line = m_document.Common1()->LineBandwidth(page->Direction());
        QoSClass* c = page->AddClass(QStringLiteral("0"), {.minBandwidth = line,
                                                           .maxBandwidth = line,
                                                           .direction = page->Direction(),
                                                           .prio = QStringLiteral("0")});
        if (c)
            c->SetSelected(true);
        return c;
    });
}

QoSClass* EditorSession::NewSubClass(ObjectPage* page)
{
    if (!CanNewSubClass(page))
        return nullptr;
    QoSClass* parent = page->SelectedClass();
    return guarded(m_document, [&]() -> QoSClass* {
        // The selected class itself, not its number: numbers are the file's business.
        return page->AddClass(parent, {.direction = page->Direction(), .prio = QStringLiteral("0")});
    });
}

QoSFilter* EditorSession::NewFilter(ObjectPage* page)
{
    if (!CanNewFilter(page))
        return nullptr;
    QoSClass* parent = page->SelectedClass();
    return guarded(m_document, [&]() -> QoSFilter* { return page->AddFilter(parent, {}); });
}

bool EditorSession::DeleteObject(ObjectPage* page)
{
    if (!CanDeleteObject(page))
        return false;
    page->SelectedObject()->EditCut();
    return true;
}

bool EditorSession::MakeDefaultClass(ObjectPage* page)
{
    if (!CanMakeDefaultClass(page))
        return false;
    page->SelectedClass()->SetDefaultClass(true);
    return true;
}
