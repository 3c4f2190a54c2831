#pragma once

// The persistent settings of the program: the cost and point values of the
// account, the backup interval and the club name, read from (and created in)
// the settings store at start-up.

#include <QString>

class QSettings;

struct KostenWerte
{
    double platz1 = 0.0;
    double platz2 = 1.5;
    double platz3 = 2.5;
    double platz4 = 3.0;
    double kartengeld = 1.0;
    double verlSpiel1Bis5 = 1.0;
    double verlSpielAb6 = 2.0;
    double preisskat = 10.0;
    int gewSpieleMinusVerlSpiele = 50;
    int verlSpieleDerGegenSpieler3 = 40;
    int verlSpieleDerGegenSpieler4 = 30;
};

class Einstellungen
{
public:
    static QString organisationsName() { return QStringLiteral("Ormindo"); }
    static QString anwendungsName() { return QStringLiteral("Kartulo"); }
    static QString organisationsDomain() { return QStringLiteral("ormindo.de"); }

    // "<documents>/Kartulo"; empty when the documents location is unknown.
    static QString datenVerzeichnis();

    explicit Einstellungen(QSettings &store);

    // The start-up read: a missing key is written with its default. Writes the
    // data directory to "databasepath" first.
    void laden(const QString &datenVerzeichnis);

    const KostenWerte &kosten() const { return m_kosten; }
    QString vereinsname() const { return m_vereinsname; }
    bool mitFabianpunkten() const;
    // Interval of the backup copy; 5 minutes when the key is missing.
    int sicherheitskopieIntervallMs() const;

private:
    double lesenOderAnlegen(const QString &key, double standard);
    int lesenOderAnlegen(const QString &key, int standard);

    QSettings &m_store;
    KostenWerte m_kosten;
    QString m_vereinsname = QStringLiteral("MeinVerein");
};
