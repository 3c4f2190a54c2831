#pragma once

// velmora-cli --venue-setup: a Mosquitto broker's files for a tournament in a
// venue whose WLAN keeps its clients apart, and a slip of access data for
// each table and the manager to cut apart and hand out.

#include <QCommandLineOption>
#include <QList>

// The set-up's options, for velmora-cli's help too.
QList<QCommandLineOption> einrichtungsOptionen();

// Whether the command line asks for the set-up rather than joining the LAN.
bool einrichtungVerlangt(int argc, char **argv);

// Writes the files and says so on standard output; 2 for arguments it
// refuses, 1 when a file cannot be written.
int einrichtungAusfuehren(int argc, char **argv);
