#include "model/pagesizequestion.h"

#include "base/numbers.h"
#include "base/userprompt.h"
#include "model/document.h"
#include "model/objectpage.h"

#include <QStringList>

namespace {

qint32 dimension(const QString& part)
{
    // Blanks anywhere are ignored; beyond 32 bits keeps the current value.
    QString s = part;
    s.remove(u' ');
    const std::optional<double> v = Numbers::TryLeadingValue(s);
    return v ? Numbers::TryRoundToInt32(*v).value_or(0) : 0;
}

} // namespace

bool PageSizeQuestion::Ask(ObjectPage& page)
{
    const ObjectPageProperties& prop = page.prop();
    Document& document = *page.document();
    const QString defaultText =
        QString::number(prop.Cols) + QStringLiteral(", ") + QString::number(prop.Rows);
    for (;;) {
        const QString answer =
            document.prompt().InputBox(QStringLiteral("Neue Breite, Höhe eingeben:"), defaultText);
        if (answer.isEmpty())
            return false;
        const QStringList parts = answer.split(u',');
        if (parts.size() != 2)
            continue;
        qint32 w = dimension(parts[0]);
        qint32 h = dimension(parts[1]);
        const int oldCols = prop.Cols;
        const int oldRows = prop.Rows;
        page.SetGridDimensions(w, h);
        // The size is part of the document: it is written to the file.
        if (prop.Cols != oldCols || prop.Rows != oldRows)
            document.SetModified(true);
        return true;
    }
}
