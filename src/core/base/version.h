#pragma once

#include <QString>

// The program's version as every part shows it (the about box, --version of the editor and of
// tarnwick-cli): one number for the whole project, set where it is built.
inline QString TarnwickVersion()
{
    return QStringLiteral("%1.%2.%3")
        .arg(TARNWICK_VERSION_MAJOR)
        .arg(TARNWICK_VERSION_MINOR)
        .arg(TARNWICK_VERSION_PATCH);
}
