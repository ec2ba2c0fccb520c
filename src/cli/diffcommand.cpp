#include "diffcommand.h"

#include "clisession.h"

#include "check/documentdiff.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <memory>

namespace {

QJsonObject entryJson(const DiffEntry& e)
{
    QJsonObject o{
        {QStringLiteral("kind"), DiffEntry::KindName(e.kind)},
        {QStringLiteral("object"), DiffEntry::ObjectName(e.object)},
    };
    if (e.object != DiffEntry::Object::Common)
        o.insert(QStringLiteral("path"), QJsonArray::fromStringList(e.path));
    if (!e.oldPath.isEmpty())
        o.insert(QStringLiteral("oldPath"), QJsonArray::fromStringList(e.oldPath));
    if (e.kind == DiffEntry::Kind::Added || e.kind == DiffEntry::Kind::Removed) {
        QJsonObject values;
        for (const DiffChange& c : e.changes)
            values.insert(c.field, e.kind == DiffEntry::Kind::Added ? c.newValue : c.oldValue);
        o.insert(QStringLiteral("values"), values);
    } else {
        QJsonArray changes;
        for (const DiffChange& c : e.changes)
            changes.append(QJsonObject{{QStringLiteral("field"), c.field},
                                       {QStringLiteral("old"), c.oldValue},
                                       {QStringLiteral("new"), c.newValue}});
        o.insert(QStringLiteral("changes"), changes);
    }
    return o;
}

// Sorted keys at every level, the entries in the order the text lists them.
QByteArray diffJson(const DocumentDiff& diff)
{
    QJsonArray common;
    QJsonArray down;
    QJsonArray up;
    for (const DiffEntry& e : diff.Entries())
        (e.page == u"common" ? common : e.page == u"up" ? up : down).append(entryJson(e));
    const QJsonObject root{
        {QStringLiteral("equal"), diff.IsEmpty()},
        {QStringLiteral("common"), common},
        {QStringLiteral("pages"), QJsonObject{{QStringLiteral("down"), down}, {QStringLiteral("up"), up}}},
    };
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}

} // namespace

DiffCommand::DiffCommand(const QStringList& args)
{
    QStringList files;
    for (const QString& a : args) {
        if (a == u"--json")
            m_json = true;
        else
            files.append(a);
    }
    if (files.size() < 2)
        m_usageError = QStringLiteral("Fehler: der Befehl \"diff\" braucht die alte und die neue Datei.");
    else if (files.size() > 2)
        m_usageError = QStringLiteral("Fehler: zu viele Argumente für \"diff\".");
    else {
        m_oldPath = files[0];
        m_newPath = files[1];
    }
}

DiffCommand::Result DiffCommand::Run() const
{
    Result result;
    // The documents live until the process ends, as for the other commands: taking thousands
    // of boxes apart one by one just before exit would cost more than reading them.
    auto oldSession = std::make_unique<CliSession>();
    auto newSession = std::make_unique<CliSession>();
    for (const auto& [session, path] :
         {std::pair{oldSession.get(), m_oldPath}, {newSession.get(), m_newPath}}) {
        if (!session->Open(path)) {
            result.errors.append(QStringLiteral("Fehler: ") + session->error());
            result.code = 2;
            return result;
        }
        // As export tells them, but naming the file: there are two.
        for (QString message : session->Messages())
            result.errors.append(path + QStringLiteral(": ") + message.replace(u'\n', u' '));
        if (!session->report().complete)
            result.errors.append(path + QStringLiteral(": ") + session->report().Message());
    }
    const DocumentDiff diff(oldSession.release()->document(), newSession.release()->document());
    result.code = diff.IsEmpty() ? 0 : 1;
    if (m_json) {
        result.output = diffJson(diff);
    } else {
        for (const QString& line : diff.Lines())
            result.output += line.toUtf8() + '\n';
    }
    return result;
}
