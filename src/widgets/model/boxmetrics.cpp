#include "boxmetrics.h"

#include "base/unitconversion.h"
#include "inputs/inputprio.h"

#include <QCheckBox>
#include <QFontMetrics>
#include <QHash>
#include <QLineEdit>
#include <QToolButton>

#include <algorithm>

QSize BoxMetrics::classBox() const
{
    return QSize(2 * titleOffset + titleWidth, rowTop(3) + plugHeight);
}

QSize BoxMetrics::filterBox() const
{
    return QSize(titleWidth + titleOffset + 1, rowTop(2) + rowHeight + 6);
}

QSize BoxMetrics::largestBox() const
{
    return classBox().expandedTo(filterBox());
}

namespace {

BoxMetrics measure(const QFont& font)
{
    BoxMetrics m;
    const QFontMetrics fm(font);
    auto advance = [&fm](const QString& text) { return fm.horizontalAdvance(text); };

    // What a line edit adds around its text: frame and margins.
    QLineEdit edit;
    edit.setFont(font);
    const int editExtra = std::max(8, edit.sizeHint().width() - 17 * fm.horizontalAdvance(u'x'));
    QToolButton button;
    button.setFont(font);
    button.setText(QStringLiteral("✓"));
    QToolButton arrow;
    arrow.setFont(font);
    arrow.setArrowType(Qt::DownArrow);
    InputPrio prio;
    prio.setFont(font);
    QCheckBox lock(QStringLiteral("fest"));
    lock.setFont(font);

    m.titleHeight = fm.height() + 4;
    m.rowHeight = std::max({edit.sizeHint().height(), button.sizeHint().height(), prio.sizeHint().height(),
                            lock.sizeHint().height()});
    m.labelWidth = 4 + std::max({advance(QStringLiteral("Min")), advance(QStringLiteral("Max")),
                                 advance(QStringLiteral("Prio")), advance(QStringLiteral("IP")),
                                 advance(QStringLiteral("Port")), advance(QStringLiteral("Typ"))});
    m.buttonWidth = std::max(button.sizeHint().width(), m.rowHeight);
    m.directionWidth = std::max(advance(QStringLiteral("down")), advance(QStringLiteral("up"))) + 10;

    int unitWidth = 0;
    for (const QString& unit : UnitConversion::Units())
        unitWidth = std::max(unitWidth, advance(unit));
    // Number box, unit and lock box, as the bandwidth field lays them out.
    const int bandwidth = advance(QString(m.bandwidthDigits, u'0')) + editExtra + 4 + unitWidth + 6 + 4 +
                          lock.sizeHint().width();
    const int classRow = m.labelWidth + m.gap + bandwidth + m.gap + m.buttonWidth;
    const int prioRow = m.labelWidth + m.gap + prio.sizeHint().width() + m.gap + m.directionWidth;

    const int mask = advance(QStringLiteral("0000")) + 12; // the mask box's own maximum
    const int ip =
        advance(QStringLiteral("255.255.255.255")) + editExtra + 2 + advance(QStringLiteral("/")) + 2 + mask;
    const int port =
        advance(QStringLiteral("6000-6010")) + editExtra + 4 + advance(QStringLiteral("000")) + 12;
    m.typeWidth = advance(QStringLiteral("server")) + editExtra + arrow.sizeHint().width();
    const int option = advance(QStringLiteral("TOSMD")) + editExtra + arrow.sizeHint().width();
    const int filterRows = m.labelWidth + m.gap + std::max({ip, port, m.typeWidth + m.gap + option});

    m.titleWidth = std::max({classRow, prioRow, filterRows});
    return m;
}

} // namespace

const BoxMetrics& BoxMetrics::For(const QFont& font)
{
    static QHash<QString, BoxMetrics> cache;
    const QString key = font.key();
    auto it = cache.find(key);
    if (it == cache.end())
        it = cache.insert(key, measure(font));
    return *it;
}
