#include "document/document.h"
#include "document/qoserror.h"
#include "document/qosreader.h"
#include "document/qoswriter.h"
#include "document/scriptedprompt.h"

#include <QByteArray>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void quietMessages(QtMsgType, const QMessageLogContext&, const QString&) {}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool initialised = [] {
        qInstallMessageHandler(quietMessages);
        qputenv("SOURCE_DATE_EPOCH", "0");
        return true;
    }();
    Q_UNUSED(initialised);

    ScriptedPrompt prompt;
    Document doc(&prompt);
    ImportQoSBytes(doc, QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    try {
        // The first export may still write an old number for a class that the walk reaches
        // after one of its children; from then on the numbering is settled, so two further
        // exports of the unchanged document must be equal.
        ExportQoSBytes(doc);
        const QByteArray settled = ExportQoSBytes(doc);
        if (ExportQoSBytes(doc) != settled)
            std::abort();
    } catch (const QoSError&) {
        // The writer refusing a document is an expected outcome, not a fault.
    }
    return 0;
}
