#include "helpers/faelle.h"

#include <QFile>

#include <list>

namespace {

enum class Art
{
    Text,
    Zahl,
    Wahrheit,
    Bytes,
    Hex,
    Liste
};

// One cell decoded: text units as they come, with bytes gathered until text
// follows, so escaped bytes of one character join up again.
struct Zelle
{
    QString text;
    QByteArray offen;
    bool alsBytes;

    void zeichen(QChar c)
    {
        fertig();
        text += c;
    }
    void byte(char b) { offen += b; }
    void fertig()
    {
        // In a bytes cell every unit is one Latin-1 byte, so text and bytes stay apart.
        text += alsBytes ? QString::fromLatin1(offen.constData(), offen.size())
                         : QString::fromUtf8(offen.constData(), offen.size());
        offen.clear();
    }
};

// Reads from i to the end of the cell (or of a group), advancing i.
QString entschluesseln(const QString &roh, bool alsBytes, int &i, bool inGruppe)
{
    Zelle z{{}, {}, alsBytes};
    while (i < roh.size()) {
        const QChar c = roh.at(i++);
        if (c != QLatin1Char('\\') || i == roh.size()) {
            if (c.unicode() < 0x80) {
                z.byte(char(c.unicode()));
            } else if (!alsBytes) {
                z.zeichen(c);
            } else {
                const int laenge = c.isHighSurrogate() && i < roh.size() ? 2 : 1;
                z.offen += roh.mid(i - 1, laenge).toUtf8();
                i += laenge - 1;
            }
            continue;
        }
        const QChar e = roh.at(i++);
        switch (e.toLatin1()) {
        case 't':
            z.byte('\t');
            break;
        case 'n':
            z.byte('\n');
            break;
        case 'r':
            z.byte('\r');
            break;
        case '0':
            z.byte('\0');
            break;
        case 'x':
            z.byte(char(roh.mid(i, 2).toInt(nullptr, 16)));
            i += 2;
            break;
        case 'u':
            if (alsBytes) {
                z.offen += QString(QChar(roh.mid(i, 4).toUShort(nullptr, 16))).toUtf8();
            } else {
                z.zeichen(QChar(roh.mid(i, 4).toUShort(nullptr, 16)));
            }
            i += 4;
            break;
        case '(': {
            const QString gruppe = entschluesseln(roh, alsBytes, i, true);
            const int ende = roh.indexOf(QLatin1Char('}'), i);
            const int mal = roh.mid(i + 1, ende - i - 1).toInt();
            i = ende + 1;
            z.fertig();
            z.text += gruppe.repeated(mal);
            break;
        }
        case ')':
            if (inGruppe) {
                z.fertig();
                return z.text;
            }
            z.byte(')');
            break;
        default:
            z.byte(e.toLatin1());
        }
    }
    z.fertig();
    return z.text;
}

// An empty cell is an empty text, never a null one: that takes \\N.
QString zelle(const QString &roh, bool alsBytes = false)
{
    int i = 0;
    const QString text = entschluesseln(roh, alsBytes, i, false);
    return text.isNull() ? QLatin1String("") : text;
}

int zahl(const QString &roh)
{
    bool ok = false;
    const int wert = roh.toInt(&ok);
    if (!ok)
        qFatal("Keine Zahl in der Fall-Tabelle: \"%s\"", qPrintable(roh));
    return wert;
}

QStringList liste(const QString &roh)
{
    QStringList teile;
    if (roh.isEmpty())
        return teile;
    QString teil;
    for (int i = 0; i < roh.size(); ++i) {
        if (roh.at(i) == QLatin1Char('\\') && i + 1 < roh.size() &&
            roh.at(i + 1) == QLatin1Char(';')) {
            teil += QLatin1Char(';');
            ++i;
        } else if (roh.at(i) == QLatin1Char(';')) {
            teile << zelle(teil);
            teil.clear();
        } else {
            teil += roh.at(i);
        }
    }
    return teile << zelle(teil);
}

} // namespace

namespace Faelle {

QByteArray datei(const QString &name)
{
    QFile f(QStringLiteral(KARTULO_TESTDATEN "/") + name);
    if (!f.open(QIODevice::ReadOnly))
        qFatal("Testdaten nicht lesbar: %s", qPrintable(f.fileName()));
    return f.readAll();
}

void laden(const char *name)
{
    const QStringList zeilen = QString::fromUtf8(datei(QLatin1String(name))).split('\n');
    QVector<Art> arten;
    QStringList kopf;
    for (const QString &zeile : zeilen) {
        if (zeile.trimmed().isEmpty() || zeile.startsWith(QLatin1Char('#')))
            continue;
        const QStringList zellen = zeile.split(QLatin1Char('\t'));
        if (kopf.isEmpty()) {
            kopf = zellen;
            for (const QString &spalte : zellen.mid(1)) {
                const QString typ = spalte.section(QLatin1Char(':'), 1);
                // The table keeps only the pointer to a column's name.
                static std::list<QByteArray> namen;
                const char *name =
                    namen.emplace_back(spalte.section(QLatin1Char(':'), 0, 0).toLatin1())
                        .constData();
                const Art art = typ == QLatin1String("int")     ? Art::Zahl
                                : typ == QLatin1String("bool")  ? Art::Wahrheit
                                : typ == QLatin1String("bytes") ? Art::Bytes
                                : typ == QLatin1String("hex")   ? Art::Hex
                                : typ == QLatin1String("liste") ? Art::Liste
                                                                : Art::Text;
                arten << art;
                switch (art) {
                case Art::Text:
                    QTest::addColumn<QString>(name);
                    break;
                case Art::Zahl:
                    QTest::addColumn<int>(name);
                    break;
                case Art::Wahrheit:
                    QTest::addColumn<bool>(name);
                    break;
                case Art::Bytes:
                case Art::Hex:
                    QTest::addColumn<QByteArray>(name);
                    break;
                case Art::Liste:
                    QTest::addColumn<QStringList>(name);
                    break;
                }
            }
            continue;
        }
        if (zellen.size() != kopf.size())
            qFatal("%s: %d statt %d Zellen in \"%s\"", name, int(zellen.size()), int(kopf.size()),
                   qPrintable(zeile));
        QTestData &reihe = QTest::newRow(qPrintable(zelle(zellen.at(0))));
        for (int s = 1; s < zellen.size(); ++s) {
            const QString &roh = zellen.at(s);
            switch (arten.at(s - 1)) {
            case Art::Text:
                reihe << (roh == QLatin1String("\\N") ? QString() : zelle(roh));
                break;
            case Art::Zahl:
                reihe << zahl(roh);
                break;
            case Art::Wahrheit:
                reihe << (roh == QLatin1String("ja"));
                break;
            case Art::Bytes: {
                const QByteArray bytes = zelle(roh, true).toLatin1();
                reihe << (roh == QLatin1String("\\N") ? QByteArray()
                          : bytes.isNull()            ? QByteArray("")
                                                      : bytes);
                break;
            }
            case Art::Hex:
                reihe << QByteArray::fromHex(roh.toLatin1());
                break;
            case Art::Liste:
                reihe << liste(roh);
                break;
            }
        }
    }
}

} // namespace Faelle
