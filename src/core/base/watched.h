#pragma once

#include <QMetaMethod>

// Counts the connections to an object's signals, so that an object nobody watches (every box
// while a file is read) does not announce each of its settings into the void. A connection
// that went away unnoticed leaves the count too high, which only costs an emission.
#define TARNWICK_WATCHED                                                                                     \
protected:                                                                                                   \
    void connectNotify(const QMetaMethod&) override                                                          \
    {                                                                                                        \
        ++m_watchers;                                                                                        \
    }                                                                                                        \
    void disconnectNotify(const QMetaMethod& signal) override                                                \
    {                                                                                                        \
        if (signal.isValid() && m_watchers > 0)                                                              \
            --m_watchers;                                                                                    \
    }                                                                                                        \
    bool watched() const                                                                                     \
    {                                                                                                        \
        return m_watchers > 0;                                                                               \
    }                                                                                                        \
                                                                                                             \
private:                                                                                                     \
    int m_watchers = 0;
