#include "app/appproperties.h"

#include "app/firststart.h"
#include "base/atomicfile.h"
#include "base/numbers.h"
#include "base/qoserror.h"
#include "base/twips.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qoscommon.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

// The text is handled as UTF-8 by Qt; the parser only has to keep bytes as they are.
#define SI_NO_CONVERSION
#include <SimpleIni.h>

#include <cmath>
#include <optional>

namespace {

// The profile functions read into a buffer of 16384 characters: a longer value is cut.
constexpr qsizetype MaxValueLength = 16383;
// Less of a window than this on a screen cannot be grabbed and moved back by the user.
constexpr int MinVisible = 48;

const char* const CommonKeys[] = {"QoSInternetBandDown", "QoSInternetBandUp", "QoSInternetDev",
                                  "QoSLocalBand",        "QoSLocalNetDev",    "QoSVersion"};

class Ini
{
public:
    Ini() { m_ini.SetSpaces(false); }

    void load(const QString& path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return; // no file: every key has its default
        const QByteArray bytes = file.readAll();
        m_ini.LoadData(bytes.constData(), size_t(bytes.size()));
    }

    std::optional<QString> value(const char* section, const char* key) const
    {
        const char* v = m_ini.GetValue(section, key, nullptr);
        if (!v)
            return std::nullopt;
        return QString::fromUtf8(v).left(MaxValueLength);
    }

    QString text(const char* section, const char* key, const QString& fallback) const
    {
        return value(section, key).value_or(fallback);
    }

    // A value that is empty or no number gives the default, as an absent key does.
    qint32 integer(const char* section, const char* key, qint32 fallback) const
    {
        const auto v = value(section, key);
        if (!v)
            return fallback;
        const auto n = Numbers::ParseNumber(*v);
        if (!n)
            return fallback;
        return Numbers::TryRoundToInt32(*n).value_or(fallback);
    }

    // Geometry is kept in single precision, as it always was.
    std::optional<float> single(const char* section, const char* key) const
    {
        const auto v = value(section, key);
        if (!v)
            return std::nullopt;
        const auto n = Numbers::ParseNumber(*v);
        if (!n || !std::isfinite(float(*n)))
            return std::nullopt;
        return float(*n);
    }

    void set(const char* section, const char* key, const QString& value)
    {
        m_ini.SetValue(section, key, value.toUtf8().constData());
    }

    void removeSection(const char* section) { m_ini.Delete(section, nullptr); }

    QByteArray bytes() const
    {
        std::string out;
        m_ini.Save(out);
        return QByteArray::fromStdString(out);
    }

private:
    CSimpleIniA m_ini; // keys without regard to case, sections in the order read or made
};

int toPixels(float twips)
{
    const double px = std::round(double(twips) / Twips::PerPixel);
    return int(qBound(-1.0e6, px, 1.0e6));
}

QString twipsText(int pixels)
{
    return QString::number(qint64(pixels) * Twips::PerPixel);
}

} // namespace

AppProperties::AppProperties(Document& document, const QString& path) : m_document(document), m_path(path) {}

QString AppProperties::DefaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) +
           QStringLiteral("/config.ini");
}

QRect AppProperties::DefaultGeometry(const QList<QRect>& screens)
{
    const QRect screen = screens.isEmpty() ? QRect(0, 0, 1024, 768) : screens.first();
    return QRect(screen.topLeft(), QSize(int(screen.width() / 1.5), int(screen.height() / 1.5)));
}

QRect AppProperties::PlaceOnScreens(const QRect& rect, const QList<QRect>& screens)
{
    if (screens.isEmpty())
        return rect.isValid() ? rect : DefaultGeometry(screens);
    const QRect primary = screens.first();
    if (rect.width() < MinVisible || rect.height() < MinVisible)
        return DefaultGeometry(screens);
    QRect bounds;
    for (const QRect& screen : screens)
        bounds = bounds.united(screen);
    // The title bar is what a user grabs: some of the window's top must lie on a screen.
    const QRect top(rect.left(), rect.top(), rect.width(), MinVisible);
    const bool fits = rect.width() <= bounds.width() && rect.height() <= bounds.height();
    for (const QRect& screen : screens) {
        const QRect seen = screen.intersected(top);
        if (fits && seen.width() >= MinVisible && seen.height() >= MinVisible / 2 &&
            rect.top() >= screen.top())
            return rect;
    }
    QRect placed(rect.topLeft(), rect.size().boundedTo(primary.size()));
    placed.moveLeft(qBound(primary.left(), placed.left(), primary.right() - placed.width() + 1));
    placed.moveTop(qBound(primary.top(), placed.top(), primary.bottom() - placed.height() + 1));
    return placed;
}

WindowSettings AppProperties::Load(const QList<QRect>& screens)
{
    Ini ini;
    ini.load(m_path);

    for (auto [section, page] : {std::pair{"Down", m_document.Down1()}, std::pair{"Up", m_document.Up1()}}) {
        qint32 cols = ini.integer(section, "Cols", FirstStart::Cols);
        qint32 rows = ini.integer(section, "Rows", FirstStart::Rows);
        page->SetGridDimensions(cols, rows);
    }

    QoSCommon& common = *m_document.Common1();
    const QString defaults[] = {FirstStart::InternetBandDown(), FirstStart::InternetBandUp(),
                                FirstStart::InternetDev(),      FirstStart::LocalBand(),
                                FirstStart::LocalNetDev(),      FirstStart::Version()};
    void (QoSCommon::*const setters[])(const QString&) = {
        &QoSCommon::SetQoSInternetBandDown, &QoSCommon::SetQoSInternetBandUp, &QoSCommon::SetQoSInternetDev,
        &QoSCommon::SetQoSLocalBand,        &QoSCommon::SetQoSLocalNetDev,    &QoSCommon::SetQoSVersion};
    for (int i = 0; i < 6; ++i) {
        try {
            (common.*setters[i])(ini.text("Common", CommonKeys[i], defaults[i]));
        } catch (const QoSError&) {
            (common.*setters[i])(defaults[i]); // a bandwidth beyond any line speed
        }
    }
    common.SetQoSInternetDefaultDown(FirstStart::DefaultClass());
    common.SetQoSInternetDefaultUp(FirstStart::DefaultClass());

    WindowSettings window;
    const QRect fallback = DefaultGeometry(screens);
    const auto left = ini.single("MainWindow", "Left");
    const auto top = ini.single("MainWindow", "Top");
    const auto width = ini.single("MainWindow", "Width");
    const auto height = ini.single("MainWindow", "Height");
    const QRect stored(left ? toPixels(*left) : 0, top ? toPixels(*top) : 0,
                       width ? toPixels(*width) : fallback.width(),
                       height ? toPixels(*height) : fallback.height());
    window.normalGeometry = PlaceOnScreens(stored, screens);
    const qint32 state = ini.integer("MainWindow", "WindowState", WindowSettings::Normal);
    window.windowState = state >= WindowSettings::Normal && state <= WindowSettings::Maximized
                             ? state
                             : int(WindowSettings::Normal);
    window.calculator = ini.integer("MainWindow", "Calculator", 1) != 0;
    window.problems = ini.integer("MainWindow", "Problems", 0) != 0;

    m_recentFiles.clear();
    for (int i = 1; i <= MaxRecentFiles; ++i) {
        const QString key = QStringLiteral("File%1").arg(i);
        const QString file = ini.text("RecentFiles", key.toUtf8().constData(), QString());
        if (!file.isEmpty() && !m_recentFiles.contains(file))
            m_recentFiles << file;
    }
    return window;
}

bool AppProperties::Save(const WindowSettings& window, const QStringList& recentFiles, QString* error)
{
    Ini ini;
    ini.load(m_path); // what this version does not know is written back unchanged

    for (auto [section, page] : {std::pair{"Down", m_document.Down1()}, std::pair{"Up", m_document.Up1()}}) {
        ini.set(section, "Cols", QString::number(page->prop().Cols));
        ini.set(section, "Rows", QString::number(page->prop().Rows));
    }
    const QoSCommon& common = *m_document.Common1();
    const QString values[] = {common.QoSInternetBandDown(), common.QoSInternetBandUp(),
                              common.QoSInternetDev(),      common.QoSLocalBand(),
                              common.QoSLocalNetDev(),      common.QoSVersion()};
    for (int i = 0; i < 6; ++i)
        ini.set("Common", CommonKeys[i], values[i]);

    const QRect& g = window.normalGeometry;
    ini.set("MainWindow", "WindowState", QString::number(window.windowState));
    ini.set("MainWindow", "Left", twipsText(g.left()));
    ini.set("MainWindow", "Top", twipsText(g.top()));
    ini.set("MainWindow", "Width", twipsText(g.width()));
    ini.set("MainWindow", "Height", twipsText(g.height()));
    ini.set("MainWindow", "Calculator", window.calculator ? QStringLiteral("1") : QStringLiteral("0"));
    ini.set("MainWindow", "Problems", window.problems ? QStringLiteral("1") : QStringLiteral("0"));

    ini.removeSection("RecentFiles");
    const QStringList recent = recentFiles.mid(0, MaxRecentFiles);
    for (qsizetype i = 0; i < recent.size(); ++i)
        ini.set("RecentFiles", QStringLiteral("File%1").arg(i + 1).toUtf8().constData(), recent.at(i));

    QDir().mkpath(QFileInfo(m_path).absolutePath());
    QString reason;
    if (!WriteFileAtomically(m_path, ini.bytes(), &reason)) {
        if (error)
            *error = QStringLiteral("Die Einstellungen konnten nicht in \"%1\" gespeichert werden: %2")
                         .arg(QDir::toNativeSeparators(m_path), reason);
        return false;
    }
    m_recentFiles = recent;
    return true;
}
