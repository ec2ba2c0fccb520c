#include "base/qoserror.h"
#include "base/scriptedprompt.h"
#include "file/qosreader.h"
#include "file/qoswriter.h"
#include "model/document.h"
#include "model/objectpage.h"

#include <QByteArray>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

void quietMessages(QtMsgType, const QMessageLogContext&, const QString&) {}

int boxes(const Document& doc)
{
    return doc.Down1()->ObjectCount() + doc.Up1()->ObjectCount();
}

[[noreturn]] void fail(const char* what)
{
    std::fprintf(stderr, "round trip broken: %s\n", what);
    std::abort();
}

} // namespace

// Whatever a file holds, what the editor writes from it must read back whole and be written
// again byte for byte: read, write, read the written text, write again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool initialised = [] {
        qInstallMessageHandler(quietMessages);
        qputenv("SOURCE_DATE_EPOCH", "0");
        return true;
    }();
    Q_UNUSED(initialised);

    ScriptedPrompt prompt;
    Document first(&prompt);
    ImportQoSBytes(first, QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    QByteArray written;
    try {
        written = ExportQoSBytes(first);
    } catch (const QoSError&) {
        return 0; // the writer refusing a document is an expected outcome, not a fault
    }

    ScriptedPrompt again;
    Document second(&again);
    const ImportReport report = ImportQoSBytes(second, written);
    if (!report.complete)
        fail("the written file does not read back whole");
    if (boxes(second) != boxes(first))
        fail("a box was lost");
    if (!again.messages().isEmpty())
        fail("reading the written file was refused");
    QByteArray rewritten;
    try {
        rewritten = ExportQoSBytes(second);
    } catch (const QoSError&) {
        fail("the written file cannot be written again");
    }
    if (rewritten != written)
        fail("the second write differs from the first");
    return 0;
}
