#pragma once

#include <QByteArray>
#include <QString>

// A hand-written qos.txt without layout data: one main class, about √n groups below it and
// the remaining classes as hosts below the groups, each host with two filters. The classes
// are listed level by level and the hosts round-robin over the groups, as a person typing
// the file by group would not, but as a generated or merged file often is: every further
// host of a group lands left of boxes that already stand, so the page must make room.
inline QByteArray NestedQoSFile(int classes)
{
    int groups = 1;
    while ((groups + 1) * (groups + 1) <= classes)
        ++groups;
    const int hosts = qMax(0, classes - 1 - groups);
    QByteArray out;
    out.reserve(classes * 400);
    out += "OPT_QOS='yes'\n"
           "QOS_INTERNET_DEV='ppp0'\n"
           "QOS_INTERNET_BAND_DOWN='100000kbit'\n"
           "QOS_INTERNET_BAND_UP='10000kbit'\n";
    out += "QOS_CLASS_N='" + QByteArray::number(1 + groups + hosts) + "'\n";
    auto cls = [&out](int n, int parent, const char* min, const char* max, const char* prio) {
        const QByteArray p = "QOS_CLASS_" + QByteArray::number(n);
        out += p + "_PARENT='" + QByteArray::number(parent) + "'\n";
        out += p + "_MINBANDWIDTH='" + min + "'\n";
        out += p + "_MAXBANDWIDTH='" + max + "'\n";
        out += p + "_DIRECTION='down'\n";
        out += p + "_PRIO='" + prio + "'\n";
    };
    cls(1, 0, "100000kbit", "100000kbit", "1");
    for (int g = 0; g < groups; ++g)
        cls(2 + g, 1, "100kbit", "50000kbit", "2");
    for (int h = 0; h < hosts; ++h)
        cls(2 + groups + h, 2 + h % groups, "10kbit", "10000kbit", "3");
    out += "QOS_FILTER_N='" + QByteArray::number(2 * hosts) + "'\n";
    for (int h = 0; h < hosts; ++h) {
        const QByteArray c = QByteArray::number(2 + groups + h);
        const QByteArray ip =
            "10." + QByteArray::number(h / 250 % 250) + "." + QByteArray::number(h % 250) + ".1";
        for (int k = 0; k < 2; ++k) {
            const QByteArray p = "QOS_FILTER_" + QByteArray::number(2 * h + k + 1);
            out += p + "_CLASS='" + c + "'\n";
            out += p + "_IP='" + ip + "'\n";
            out += p + "_PORT='" + (k == 0 ? "80" : "443") + "'\n";
            out += p + "_TYPE='client'\n";
            out += p + "_OPTION=''\n";
        }
    }
    return out;
}
