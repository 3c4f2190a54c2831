// The help pane: the home page among several, links and style sheets relative to the page, history
// on the tool bar, a missing collection, the quick guide at start-up, the shipped guide's links.

#include "app/help/helpbrowser.h"
#include "app/help/helpwidget.h"
#include "helpers/fensterhilfe.h"

#include <QHelpContentModel>
#include <QHelpEngine>
#include <QHelpIndexModel>
#include <QHelpLink>
#include <QRegularExpression>
#include <QtTest>
#include <QtWidgets>

namespace {

const QString Probe = QStringLiteral(KARTULO_HILFE_PROBE);

QString leitfadenPfad()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/docs/kartulo.qhc");
}

QString seite(const QUrl &url)
{
    return url.path().section(QLatin1Char('/'), 2);
}

// Follows the link with the given text as a finger would.
void linkTippen(QTextBrowser *browser, const QString &linkText)
{
    const QTextCursor fund = browser->document()->find(linkText);
    QVERIFY2(!fund.isNull(), qPrintable(linkText));
    QTextCursor mitte(fund);
    mitte.setPosition((fund.selectionStart() + fund.selectionEnd()) / 2);
    const QPoint punkt = browser->cursorRect(mitte).center();
    QTest::mouseClick(browser->viewport(), Qt::LeftButton, {}, punkt);
}

// The page a link of the collection leads to is in it, and so is its anchor.
void zielPruefen(QHelpEngine *engine, const QUrl &ziel, const QString &von)
{
    const QByteArray inhalt = engine->fileData(ziel.adjusted(QUrl::RemoveFragment));
    QVERIFY2(!inhalt.isEmpty() && (!ziel.hasFragment() ||
                                   inhalt.contains("name=\"" + ziel.fragment().toUtf8() + '"')),
             qPrintable(von + " -> " + ziel.toString()));
}

} // namespace

class TstHilfe : public QObject
{
    Q_OBJECT

private slots:
    void init() { TestUmgebung::allesLoeschen(); }
    void relativeVerweise();
    void fehlendeSammlung();
    void werkzeugleiste();
    void leitfadenVerweise_data();
    void leitfadenVerweise();
    void stichwortZiele();
};

// The home page is the pane's own "Startseite" among several. A chapter in a folder of its own
// finds its style sheet and links next to it; "../" leads back up.
void TstHilfe::relativeVerweise()
{
    HelpBrowser browser(Probe);
    QCOMPARE(browser.helpEngine()->documentsForKeyword(QStringLiteral("Startseite")).size(), 2);
    QCOMPARE(seite(browser.homeUrl()), QStringLiteral("index.html"));
    browser.toHome();
    QCOMPARE(browser.source(), browser.homeUrl());
    QCOMPARE(browser.toPlainText().trimmed(), QStringLiteral("Startseite"));
    browser.resize(400, 300);
    browser.show();
    QVERIFY(QTest::qWaitForWindowExposed(&browser));
    browser.zeigeSeite(QStringLiteral("Kurzanleitung"));
    QCOMPARE(seite(browser.source()), QStringLiteral("kapitel/eins.html"));
    QCOMPARE(
        browser.loadResource(QTextDocument::StyleSheetResource, QUrl("stil.css")).toByteArray(),
        QByteArray("p { color: green; }\n"));

    linkTippen(&browser, QStringLiteral("weiter"));
    QTRY_COMPARE(seite(browser.source()), QStringLiteral("kapitel/zwei.html"));
    QVERIFY(browser.toPlainText().startsWith(QStringLiteral("Zwei")));
    linkTippen(&browser, QStringLiteral("Startseite"));
    QTRY_COMPARE(seite(browser.source()), QStringLiteral("index.html"));
    QCOMPARE(browser.toPlainText().trimmed(), QStringLiteral("Startseite"));
}

// Without a collection the pane stays empty and says nothing.
void TstHilfe::fehlendeSammlung()
{
    QTemporaryDir ordner;
    HelpBrowser browser(ordner.filePath(QStringLiteral("fehlt/kartulo.qhc")));
    browser.zeigeSeite(QStringLiteral("Kurzanleitung"));
    browser.toHome();
    QTest::qWait(200);
    QTRY_VERIFY(!browser.helpEngine()->contentModel()->isCreatingContents() &&
                !browser.helpEngine()->indexModel()->isCreatingIndex());
    QVERIFY(browser.source().isEmpty());
    QVERIFY(browser.toPlainText().isEmpty());
    QCOMPARE(browser.helpEngine()->contentModel()->rowCount(), 0);
    QCOMPARE(browser.helpEngine()->indexModel()->rowCount(), 0);
    QVERIFY(!QApplication::activeModalWidget());
}

// The window's pane shows the quick guide at a first start; home, forward and back in that order
// on a vertical bar, the arrows following the history.
void TstHilfe::werkzeugleiste()
{
    MainWindow fenster;
    auto *hilfe = fenster.findChild<HelpWidget *>();
    auto *leiste = Fenster::kind<QToolBar>(hilfe, "DocuToolBar");
    QCOMPARE(leiste->orientation(), Qt::Vertical);
    QCOMPARE(leiste->iconSize(), QSize(24, 24));
    const QList<QAction *> aktionen = leiste->actions();
    QCOMPARE(aktionen.size(), 3);
    QAction *home = aktionen.at(0), *vor = aktionen.at(1), *zurueck = aktionen.at(2);
    QCOMPARE(home->text() + vor->text() + zurueck->text(),
             QStringLiteral("HomeVorwaertsRueckwaerts"));
    auto *reiter = hilfe->findChild<QTabWidget *>();
    QCOMPARE(reiter->tabText(0) + reiter->tabText(1), QStringLiteral("KapitelStichworte"));
    QCOMPARE(reiter->minimumWidth(), 100);

    QCOMPARE(seite(hilfe->browser()->source()), QStringLiteral("kurzanleitung.html"));
    QCOMPARE(hilfe->browser()->documentTitle(), QStringLiteral("Kurzanleitung"));
    QVERIFY(!vor->isEnabled() && !zurueck->isEnabled());
    home->trigger();
    QCOMPARE(seite(hilfe->browser()->source()), QStringLiteral("index.html"));
    QVERIFY(!vor->isEnabled() && zurueck->isEnabled());
    zurueck->trigger();
    QCOMPARE(seite(hilfe->browser()->source()), QStringLiteral("kurzanleitung.html"));
    QVERIFY(vor->isEnabled() && !zurueck->isEnabled());
    vor->trigger();
    QCOMPARE(seite(hilfe->browser()->source()), QStringLiteral("index.html"));
    QVERIFY(!vor->isEnabled() && zurueck->isEnabled());
}

// Every link and picture of every page of the shipped guide is in the
// collection, down to the anchor.
void TstHilfe::leitfadenVerweise_data()
{
    QTest::addColumn<QUrl>("url");
    HelpBrowser browser(leitfadenPfad());
    QHelpEngine *engine = browser.helpEngine();
    const QString ns = engine->registeredDocumentations().value(0);
    const QList<QUrl> dateien = engine->files(ns, QString(), QStringLiteral("html"));
    QVERIFY(dateien.size() > 20);
    for (const QUrl &url : dateien)
        QTest::newRow(qPrintable(seite(url))) << url;
}

void TstHilfe::leitfadenVerweise()
{
    QFETCH(QUrl, url);
    HelpBrowser browser(leitfadenPfad());
    QHelpEngine *engine = browser.helpEngine();
    const QString text = QString::fromUtf8(engine->fileData(url));
    QVERIFY(text.contains(QStringLiteral("<title>")));
    static const QRegularExpression verweis(QStringLiteral("(?:href|src)=\"([^\"]+)\""));
    auto treffer = verweis.globalMatch(text);
    while (treffer.hasNext()) {
        const QUrl ziel = url.resolved(QUrl(treffer.next().captured(1)));
        if (ziel.scheme() == QLatin1String("qthelp"))
            zielPruefen(engine, ziel, seite(url));
    }
}

// Every keyword of the index leads to a page and an anchor that exist.
void TstHilfe::stichwortZiele()
{
    HelpBrowser browser(leitfadenPfad());
    QHelpEngine *engine = browser.helpEngine();
    // The index is read on a thread of its own once the engine has started.
    QTRY_VERIFY(engine->indexModel()->rowCount() > 100 &&
                !engine->indexModel()->isCreatingIndex() &&
                !engine->contentModel()->isCreatingContents());
    for (const QString &stichwort : engine->indexModel()->stringList()) {
        const QList<QHelpLink> ziele = engine->documentsForKeyword(stichwort);
        QVERIFY2(!ziele.isEmpty(), qPrintable(stichwort));
        for (const QHelpLink &ziel : ziele)
            zielPruefen(engine, ziel.url, stichwort);
    }
}

KARTULO_TEST_MAIN(TstHilfe)
#include "tst_hilfe.moc"
