#pragma once

#include <QDialog>

// The about window: version, what the program does, a short version history and where
// to find the project.
class AboutBox final : public QDialog
{
    Q_OBJECT
public:
    explicit AboutBox(QWidget* parent = nullptr);

    static QString Version();
    static QString HomePage() { return QStringLiteral("https://tarnwick.example.org"); }
};
