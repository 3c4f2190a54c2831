// The link's frame reader on a byte stream cut into pieces as TCP may deliver it, each
// frame's payload then read as the connection reads it. The first input byte picks the
// cuts: 0 hands the rest over whole, any other value seeds a run of piece lengths 1 to 64.

#include "fuzzhilfe.h"

#include "velmora/protokoll.h"

using FuzzHilfe::pruefen;
using namespace Velmora;

namespace {

void nutzlastLesen(const Rahmen &rahmen)
{
    switch (rahmen.art) {
    case Art::Hallo:
        if (const std::optional<Kennung> kennung = kennungLesen(rahmen.nutzlast)) {
            pruefen(kennung->port != 0 && !kennung->programm.isEmpty() &&
                        !kennung->programm.contains(QLatin1Char('@')),
                    "eine gelesene Kennung hat Port und Namen ohne @");
        }
        break;
    case Art::Nachricht:
        utf8Lesen(rahmen.nutzlast);
        break;
    case Art::Ping:
    case Art::Pong:
        pruefen(rahmen.nutzlast.isEmpty(), "Ping und Pong sind leer");
        break;
    case Art::Nachbarn:
        if (const std::optional<QVector<Nachbar>> nachbarn = nachbarnLesen(rahmen.nutzlast))
            pruefen(nachbarnKodieren(*nachbarn) == rahmen.nutzlast,
                    "eine Nachbarliste kodiert sich zu ihren Bytes");
        break;
    case Art::Gesiegelt:
        if (const std::optional<Gesiegelt> post = gesiegeltLesen(rahmen.nutzlast))
            pruefen(gesiegeltKodieren(post->zaehler, post->siegel, post->utf8) == rahmen.nutzlast,
                    "eine gesiegelte Nachricht kodiert sich zu ihren Bytes");
        break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *daten, size_t groesse)
{
    if (groesse == 0)
        return 0;
    const QByteArray strom(reinterpret_cast<const char *>(daten) + 1,
                           static_cast<int>(groesse) - 1);
    unsigned schnitt = daten[0];
    Rahmenleser leser;
    int gelesen = 0;
    for (int pos = 0; pos < strom.size() && !leser.kaputt();) {
        int stueck = strom.size() - pos;
        if (daten[0] != 0) {
            schnitt = (schnitt * 33 + 7) % 256;
            stueck = qMin(stueck, 1 + int(schnitt % 64));
        }
        leser.anhaengen(strom.mid(pos, stueck));
        pos += stueck;
        Rahmen rahmen;
        while (leser.naechster(rahmen)) {
            pruefen((gelesen == 0) == (rahmen.art == Art::Hallo),
                    "der erste Rahmen ist ein Hallo und nur er");
            pruefen(rahmen.nutzlast.size() <= zaehlerGroesse + siegelGroesse + hoechsteNachricht,
                    "kein Text ueber 8 MiB");
            nutzlastLesen(rahmen);
            ++gelesen;
        }
    }
    if (leser.kaputt()) {
        Rahmen rahmen;
        pruefen(!leser.naechster(rahmen) && leser.gepuffert() == 0,
                "ein kaputter Strom bleibt leer");
    }
    return 0;
}
