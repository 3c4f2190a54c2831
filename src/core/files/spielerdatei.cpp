#include "core/files/spielerdatei.h"

#include <algorithm>

namespace {

const QString &verbotene()
{
    static const QString zeichen = QStringLiteral("|@$:");
    return zeichen;
}

} // namespace

QString SpielerDatei::dateiName()
{
    return QStringLiteral("KartuloSpieler.txt");
}

QStringList SpielerDatei::namenAusDatei(const QByteArray &inhalt)
{
    static const QByteArray bom("\xEF\xBB\xBF");
    const QByteArray text = inhalt.startsWith(bom) ? inhalt.mid(bom.size()) : inhalt;

    QStringList namen;
    for (QByteArray zeile : text.split('\n')) {
        // Some exporters pad their lines with NUL bytes; whatever follows one is not a name.
        const int nul = zeile.indexOf('\0');
        if (nul >= 0)
            zeile.truncate(nul);
        // Trimming also takes the CR of a CRLF line end.
        const QString name = bereinigt(QString::fromUtf8(zeile));
        if (!name.isEmpty())
            namen.append(name);
    }
    std::sort(namen.begin(), namen.end());
    return namen;
}

std::optional<SpielerDatensatz> SpielerDatei::ausListenEintrag(const QString &eintrag)
{
    if (eintrag.trimmed().isEmpty())
        return std::nullopt;

    const QStringList teile = eintrag.split(QLatin1Char('|'));
    SpielerDatensatz satz;
    satz.mgldNr = teile.at(0).trimmed().toInt();
    if (teile.size() > 1)
        satz.name = bereinigt(teile.at(1));
    if (teile.size() > 2)
        satz.mitglied = teile.at(2) == QLatin1String("Ja");
    if (teile.size() > 3)
        satz.preisskat = teile.at(3) == QLatin1String("Ja");
    return satz;
}

QString SpielerDatei::verboteneZeichen(const QString &name)
{
    QString gefunden;
    for (const QChar c : name) {
        if (verbotene().contains(c) && !gefunden.contains(c))
            gefunden.append(c);
    }
    return gefunden;
}

QString SpielerDatei::bereinigt(const QString &name)
{
    QString sauber;
    sauber.reserve(name.size());
    for (int i = 0; i < name.size(); ++i) {
        const QChar c = name.at(i);
        // Half a character (a field of 40 cut a pair) makes a statement fail;
        // a control character would break a line of the ranking files.
        const bool halb = c.isHighSurrogate()
                              ? i + 1 == name.size() || !name.at(i + 1).isLowSurrogate()
                              : c.isLowSurrogate() && (i == 0 || !name.at(i - 1).isHighSurrogate());
        if (c.category() == QChar::Other_Control)
            sauber.append(QLatin1Char(' '));
        else if (!halb && !verbotene().contains(c))
            sauber.append(c);
    }
    sauber = sauber.trimmed();
    if (sauber.size() > maxNamensLaenge) {
        int laenge = maxNamensLaenge;
        // Never keep half of a character outside the basic plane.
        if (sauber.at(laenge - 1).isHighSurrogate())
            --laenge;
        // A cut right after a blank would leave it at the end.
        sauber = sauber.left(laenge).trimmed();
    }
    return sauber;
}
