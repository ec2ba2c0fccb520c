#pragma once

#include <QByteArray>

class CliSession;

// The imported document as UTF-8 JSON with sorted keys: the common settings, the message
// boxes the import showed, and each page with its size and its boxes in insertion order.
QByteArray JsonReport(CliSession& session);
