#pragma once

// The settings store of the program: the money and point values of the
// account, the club name, the backup interval, the standings style and the
// stop time of a series, read from (and created in) the native store at start.
// A change is written at once and announced, so the fields and the sheet that
// show a value follow it wherever it was changed.

#include "core/standings/kostenrechnung.h"

#include <QObject>
#include <QSettings>
#include <QString>

class Einstellungen : public QObject
{
    Q_OBJECT

public:
    // The eleven values of the account, each stored under a key of its own.
    enum class Kosten
    {
        Platz1,
        Platz2,
        Platz3,
        Platz4,
        Kartengeld,
        VerlSpiel1Bis5,
        VerlSpielAb6,
        Preisskat,
        GewSpieleMinusVerlSpiele,
        VerlSpieleDerGegenSpieler3,
        VerlSpieleDerGegenSpieler4
    };

    static QString organisationsName() { return QStringLiteral("Ormindo"); }
    static QString anwendungsName() { return QStringLiteral("Kartulo"); }
    static QString organisationsDomain() { return QStringLiteral("ormindo.de"); }

    // "<documents>/Kartulo"; empty when the documents location is unknown.
    static QString datenVerzeichnis();

    explicit Einstellungen(QObject *parent = nullptr);

    // The start-up read: a missing key is written with its default. Writes the
    // data directory to "databasepath" first.
    void laden(const QString &datenVerzeichnis);

    const KostenWerte &kosten() const { return m_kosten; }
    // One value as typed into its field: money takes a decimal comma, points
    // are whole numbers; text that does not parse stores 0.
    void kostenSetzen(Kosten wert, const QString &text);
    // All values at once, as a protocol file brings them.
    void kostenSetzen(const KostenWerte &kosten);

    QString vereinsname() const { return m_vereinsname; }
    void vereinsnameSetzen(const QString &name);

    // The organiser's key that every message of the link is signed with;
    // empty, the default, for a link without signatures.
    QString turnierschluessel() const;
    void turnierschluesselSetzen(const QString &schluessel);

    // Standings in a tournament as Seeger-Fabian points; true when the key is missing.
    bool mitFabianpunkten() const;
    // Whether a list in that mode shows Seeger-Fabian points: tournaments only, when so set.
    bool fabianFuer(int modus) const;
    // The account's factors of the Seeger-Fabian score.
    FabianFaktoren fabianFaktoren() const;
    void mitFabianpunktenSetzen(bool fabian);
    // Interval of the backup copy; 5 minutes when the key is missing.
    int sicherheitskopieIntervallMs() const;
    void sicherheitskopieIntervallSetzen(int minuten);

    // The stop time of the running series as "hh:mm", or "openend".
    QString spielstopzeit() const;
    void spielstopzeitSetzen(const QString &text);

signals:
    void kostenGeaendert(Kosten wert);
    void alleKostenGeaendert();
    void vereinsnameGeaendert(const QString &name);
    void turnierschluesselGeaendert(const QString &schluessel);
    void mitFabianpunktenGeaendert(bool fabian);
    void sicherheitskopieIntervallGeaendert(int ms);

private:
    double lesenOderAnlegen(const QString &key, double standard);
    int lesenOderAnlegen(const QString &key, int standard);

    QSettings m_store;
    KostenWerte m_kosten;
    QString m_vereinsname = QStringLiteral("MeinVerein");
};
