#pragma once

#include <QList>
#include <QRect>
#include <QString>
#include <QStringList>

class Document;

// The main window's part of the settings, in device-independent pixels.
struct WindowSettings
{
    enum State { Normal = 0, Minimized = 1, Maximized = 2 };

    QRect normalGeometry; // the normal-state rectangle, also for a maximised window
    int windowState = Normal;
    bool calculator = true; // the "Calc" button pressed: the class calculator is shown
    bool problems = false;  // the list of the document's problems is shown
};

// The user's working preferences between runs, in config.ini: the grid size of the two
// pages, the last common settings (the defaults of every new document), the main window's
// place, size and state, whether the class calculator and the problem list are shown, and
// the recently used files. Sections and keys keep their order; keys match without regard to case.
//
// Nothing in the file can stop the editor from starting: a missing file or key gives the
// key's default, a number that is empty or no number gives the default too, and a window
// that would lie off every screen is brought back onto one. Keys this version does not
// know survive a save.
class AppProperties
{
public:
    // Geometry is kept in twips, as the pages are.
    static constexpr int MaxRecentFiles = 6;

    explicit AppProperties(Document& document, const QString& path = DefaultPath());

    // config.ini in the user's configuration folder of this program.
    static QString DefaultPath();
    QString Path() const { return m_path; }

    // Reads the file and applies the grid sizes and the common settings; returns the
    // window's part. screens: the available geometry of each screen, the primary first;
    // the default window is two thirds of the primary screen.
    WindowSettings Load(const QList<QRect>& screens);
    // The recently used files as the last Load found them, newest first, without duplicates.
    QStringList RecentFiles() const { return m_recentFiles; }

    // Writes every value back (atomically). False, with a German reason, when the file
    // cannot be written.
    bool Save(const WindowSettings& window, const QStringList& recentFiles, QString* error = nullptr);

    // A rectangle of which too little lies on any screen to grab its title is moved onto
    // the primary screen and shrunk to fit it; an empty or absurd one becomes the default.
    static QRect PlaceOnScreens(const QRect& rect, const QList<QRect>& screens);
    static QRect DefaultGeometry(const QList<QRect>& screens);

private:
    Document& m_document;
    QString m_path;
    QStringList m_recentFiles;
};
