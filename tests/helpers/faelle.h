#pragma once

// Case tables kept as data: tests/data/NAME.tsv holds one case a line, cells
// separated by tabs. The first line names the columns; the first column is the
// row's tag, the others become the _data() columns, typed by a suffix:
// "name" QString, "name:int", "name:bool" (ja/nein), "name:bytes" QByteArray,
// "name:hex" bytes written in hex, "name:liste" QStringList split at ";".
// Lines starting with "#" and blank lines are comments.
//
// In a cell: \t \n \r \0 \\ \; \xHH (a byte; bytes in a row are read as UTF-8
// in text cells), \uHHHH (one UTF-16 unit, lone surrogates too), \N (the whole
// cell is a null text) and \(...\){N} (the group N times over).

#include <QtTest>

namespace Faelle {

// Declares the columns and adds every case of the file as a row.
void laden(const char *datei);

// The whole file, for tests that read data beside their tables.
QByteArray datei(const QString &name);

} // namespace Faelle
