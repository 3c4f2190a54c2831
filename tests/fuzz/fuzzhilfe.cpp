#include "fuzzhilfe.h"

#include <QString>
#include <QtGlobal>

#include <cstdio>
#include <cstdlib>

// The parsers warn about bad input, which is nearly every input here, and the fuzzer would
// spend its time writing them; only a fatal message, which ends the run, still goes out.
extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    // Qt's date parsing calls mktime(), and without TZ glibc copies the zone's name on each
    // call; the fuzzer takes every such run for a possible leak and checks it, ten times slower.
    qputenv("TZ", "UTC");
    qInstallMessageHandler([](QtMsgType typ, const QMessageLogContext &, const QString &text) {
        if (typ == QtFatalMsg)
            std::fprintf(stderr, "%s\n", qPrintable(text));
    });
    return 0;
}

namespace FuzzHilfe {

void pruefen(bool gehalten, const char *versprechen)
{
    if (gehalten)
        return;
    std::fprintf(stderr, "Nicht gehalten: %s\n", versprechen);
    std::abort();
}

} // namespace FuzzHilfe
