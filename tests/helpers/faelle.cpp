#include "helpers/faelle.h"

#include <QFile>
#include <QRegularExpression>

#include <list>

namespace {

// Decodes a cell from i to its end or its group's end. Escaped bytes gather until a
// character follows, so one character's bytes join up; a bytes cell is Latin-1.
QString zelle(const QString &roh, bool bytes, int &i, bool inGruppe = false)
{
    QString text;
    QByteArray offen;
    const auto fertig = [&] {
        text += bytes ? QString::fromLatin1(offen.constData(), offen.size())
                      : QString::fromUtf8(offen.constData(), offen.size());
        offen.clear();
    };
    const auto zahl = [&](int stellen) {
        i += stellen;
        return roh.mid(i - stellen, stellen).toUShort(nullptr, 16);
    };
    static const QHash<QChar, char> einfach{{'t', '\t'}, {'n', '\n'}, {'r', '\r'}, {'0', '\0'}};
    while (i < roh.size()) {
        const QChar c = roh.at(i++);
        const QChar e = c == QLatin1Char('\\') && i < roh.size() ? roh.at(i++) : QChar();
        if (e.isNull()) {
            const int laenge = c.isHighSurrogate() && i < roh.size() ? 2 : 1;
            offen += roh.mid(i - 1, laenge).toUtf8();
            i += laenge - 1;
        } else if (einfach.contains(e)) {
            offen += einfach.value(e);
        } else if (e == QLatin1Char('x')) {
            offen += char(zahl(2));
        } else if (e == QLatin1Char('u') && bytes) {
            offen += QString(QChar(zahl(4))).toUtf8();
        } else if (e == QLatin1Char('u')) {
            fertig();
            text += QChar(zahl(4));
        } else if (e == QLatin1Char('(')) {
            fertig();
            const QString gruppe = zelle(roh, bytes, i, true);
            const int ende = roh.indexOf(QLatin1Char('}'), i);
            text += gruppe.repeated(roh.mid(i + 1, ende - i - 1).toInt());
            i = ende + 1;
        } else if (e == QLatin1Char(')') && inGruppe) {
            break;
        } else {
            offen += e.toLatin1();
        }
    }
    fertig();
    return text;
}

const QHash<QString, int> typIds{{"int", QMetaType::Int},
                                 {"bool", QMetaType::Bool},
                                 {"hex", QMetaType::QByteArray},
                                 {"bytes", QMetaType::QByteArray},
                                 {"liste", QMetaType::QStringList}};

// An empty cell is an empty text, never a null one: that takes \N.
QVariant wert(const QString &typ, const QString &roh)
{
    // A typo in a number or a flag would quietly turn a case into another one.
    const bool flagge = roh == QLatin1String("ja") || roh == QLatin1String("nein");
    if ((typ == "int" && QString::number(roh.toInt()) != roh) || (typ == "bool" && !flagge))
        qFatal("Kein %s in der Fall-Tabelle: \"%s\"", qPrintable(typ), qPrintable(roh));
    if (typ == QLatin1String("int") || typ == QLatin1String("bool"))
        return typ == QLatin1String("int") ? QVariant(roh.toInt()) : QVariant(roh == "ja");
    if (typ == QLatin1String("hex"))
        return QByteArray::fromHex(roh.toLatin1());
    if (typ == QLatin1String("liste")) {
        QStringList teile;
        for (const QString &teil : roh.split(QRegularExpression(QStringLiteral("(?<!\\\\);")))) {
            int j = 0;
            teile << zelle(teil, false, j);
        }
        return roh.isEmpty() ? QStringList() : teile;
    }
    int i = 0;
    const QString text = roh == QLatin1String("\\N") ? QString() : zelle(roh, typ == "bytes", i);
    if (typ == QLatin1String("bytes"))
        return text.isNull() ? QByteArray() : text.isEmpty() ? QByteArray("") : text.toLatin1();
    return text.isNull() && roh.isEmpty() ? QLatin1String("") : text;
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
    // The table keeps only the pointer to a column's name.
    static std::list<QByteArray> namen;
    QStringList typen;
    for (const QString &zeile : QString::fromUtf8(datei(QLatin1String(name))).split('\n')) {
        if (zeile.trimmed().isEmpty() || zeile.startsWith(QLatin1Char('#')))
            continue;
        const QStringList zellen = zeile.split(QLatin1Char('\t'));
        if (typen.isEmpty()) {
            for (const QString &spalte : zellen) {
                typen << spalte.section(QLatin1Char(':'), 1);
                if (typen.size() > 1)
                    QTest::addColumnInternal(
                        typIds.value(typen.last(), QMetaType::QString),
                        namen.emplace_back(spalte.section(':', 0, 0).toLatin1()).constData());
            }
            continue;
        }
        if (zellen.size() != typen.size())
            qFatal("%s: %d statt %d Zellen in \"%s\"", name, int(zellen.size()), int(typen.size()),
                   qPrintable(zeile));
        QTestData &reihe = QTest::newRow(qPrintable(wert(QString(), zellen.at(0)).toString()));
        for (int s = 1; s < zellen.size(); ++s) {
            const QVariant v = wert(typen.at(s), zellen.at(s));
            reihe.append(v.userType(), v.constData());
        }
    }
}

} // namespace Faelle
